import { diskLine, partitionLine } from './inventory.js';
import { leanDisk, leanPartition, unallocatedIndices } from './lean.js';
import { letterOf } from './match.js';
import { listName } from './schema.js';

/** @import { PlainRecord, Tool } from './types.js' */
/** @import { CallToolResult } from '@modelcontextprotocol/server' */

/** Characters of one answer, text and structure together: about 20,000 tokens. */
export const maxAnswer = 60000;

/**
 * An entry of an answer: a line of the text and a record of the structure.
 * @typedef {{ line: string, record: PlainRecord, diskIndex: number }} Entry
 */

/**
 * The answer of a tool that reads: a line and a record for each disk or partition.
 * @param {Tool} tool
 * @param {PlainRecord} args including allFields
 * @param {any} found the records of the service
 * @param {PlainRecord[]} [partitions] all of the inventory, for the unallocated space of the disks, and to recognise the
 *     record of a drive that is gone
 * @returns {CallToolResult}
 */
export function readAnswer(tool, args, found, partitions = []) {
    if (typeof tool.result === 'object' && 'list' in tool.result) {
        const name = listName(tool.result);
        const { shown, omitted } = limited(entries(name, found, args.allFields === true, partitions));
        return answer([...lines(name, shown, args), ...note(shown, omitted, args)].join('\n'), {
            [name]: shown.map(({ record }) => record),
            ...(omitted > 0 && { omitted }),
        });
    }
    if (found.driveLetter === '')
        return answer(
            `No partition has the drive letter ${String(args.driveLetter).slice(0, 1).toUpperCase()}. The record is empty.`,
            args.allFields === true ? found : { driveLetter: '' },
        );
    const record = args.allFields === true ? found : leanPartition(found);
    const letter = letterOf(found);
    if (partitions.some((p) => letterOf(p) === letter)) return answer(partitionLine(found), record);
    return answer(
        `${letter}: is no longer in the inventory; this is its last record.\n${partitionLine(found)}`,
        { ...record, isGone: true },
    );
}

/** @param {string} text @param {PlainRecord} content @returns {CallToolResult} */
const answer = (text, content) => ({
    content: [{ type: 'text', text }],
    structuredContent: /** @type {any} */ (content),
});

/** @param {string} name @param {PlainRecord[]} found @param {boolean} allFields @param {PlainRecord[]} partitions @returns {Entry[]} */
function entries(name, found, allFields, partitions) {
    if (name === 'disks')
        return found.map((d) => ({
            line: diskLine(d, partitions),
            record: allFields ? d : leanDisk(d),
            diskIndex: d.diskIndex,
        }));
    const indices = unallocatedIndices(found);
    return found.map((p, i) => ({
        line: partitionLine(p, { withDisk: false, unallocatedIndex: indices[i] }),
        record: allFields ? p : leanPartition(p, indices[i]),
        diskIndex: p.diskIndex,
    }));
}

/** The first entries, up to the limit, but at least one. @param {Entry[]} all */
function limited(all) {
    let size = 0;
    const end = all.findIndex(({ line, record }, i) => {
        size += line.length + JSON.stringify(record).length;
        return size > maxAnswer && i > 0;
    });
    return end < 0 ? { shown: all, omitted: 0 } : { shown: all.slice(0, end), omitted: all.length - end };
}

/** @param {string} name @param {Entry[]} shown @param {PlainRecord} args */
function lines(name, shown, args) {
    if (shown.length === 0) return [emptyText(name, args)];
    if (name === 'disks') return shown.map(({ line }) => line);
    return shown.flatMap(({ line, diskIndex }, i) => [
        ...(shown[i - 1]?.diskIndex === diskIndex ? [] : [`Disk ${diskIndex}:`]),
        `  ${line}`,
    ]);
}

/** @param {string} name @param {PlainRecord} args */
function emptyText(name, args) {
    if (name === 'disks') return 'The inventory contains no disks. The application may still be starting.';
    return args.diskIndex === undefined
        ? 'The inventory contains no partitions.'
        : `The inventory contains no partitions on disk ${args.diskIndex}. ListAllDisks lists the disks.`;
}

/** @param {Entry[]} shown @param {number} omitted @param {PlainRecord} args */
function note(shown, omitted, args) {
    if (omitted === 0) return [];
    const next = args.allFields === true ? 'Call again without allFields' : 'Call ListPartitionsOnDisk for one disk';
    return [
        `Omitted: the last ${omitted} of ${shown.length + omitted} records, because an answer has at most ${maxAnswer} characters. The last one shown is on disk ${shown.at(-1)?.diskIndex}. ${next}.`,
    ];
}
