import { TASK_NOT_VALID, TASK_QUEUED } from './constants.js';
import { diskLine, partitionLine, partitionLines } from './inventory.js';
import { likelyCauses } from './likely.js';
import { structured } from './wire.js';

/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */
/** @import { HostError } from './errors.js' */
/** @import { CallToolResult } from '@modelcontextprotocol/server' */

/** @param {string} text @param {object} [content] @returns {CallToolResult} */
const result = (text, content) => ({
    content: [{ type: 'text', text }],
    ...(content && { structuredContent: /** @type {any} */ (content) }),
});

/** @param {string} text @param {object} [content] @returns {CallToolResult} */
export const failure = (text, content) => ({ ...result(text, content), isError: true });

/** @param {HostError} error */
export const failed = (error) => failure(error.message, error.detail);

/**
 * What a reading tool found: the records as structured content, and a line for each.
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {any} found
 */
export function readAnswer(tool, args, found) {
    return result(summary(tool, args, found), structured(tool, found));
}

/** @param {Tool} tool @param {PlainRecord} args @param {any} found @returns {string} */
function summary(tool, args, found) {
    switch (tool.name) {
        case 'ListAllDisks':
            return found.length > 0
                ? found.map(diskLine).join('\n')
                : 'The inventory holds no disk. The application may still be starting.';
        case 'GetPartitionInfo':
            return found.driveLetter === ''
                ? `No partition has the drive letter ${String(args.driveLetter).slice(0, 1).toUpperCase()}. The record is empty.`
                : partitionLine(found);
        default:
            if (found.length > 0) return partitionLines(found).join('\n');
            return args.diskIndex === undefined
                ? 'The inventory holds no partition.'
                : `The inventory holds no partition on disk ${args.diskIndex}; ListAllDisks tells which disks there are.`;
    }
}

/**
 * "Task Queued", in words that keep a model from believing that the work is done.
 * @param {Tool} tool
 * @param {PlainRecord} args
 */
export function queuedAnswer(tool, args) {
    const told = `"${TASK_QUEUED}": the application took the order ${tool.name}. `;
    if (tool.class === 'opens')
        return result(
            `${told}It opens a page on the user's screen; the rest is done there by the user. Nothing has been changed, and no finding comes back here.`,
            { answer: TASK_QUEUED, queued: true },
        );
    const look = lookAgain(tool, args);
    return result(
        `${told}This does NOT mean that the work is done, or that it will succeed: the application works on its own, may ask the user, and sends` +
            ` no message when it ends. To see what came of it, ${look} again after a while. Do not tell the user that it is done before the inventory shows it.`,
        { answer: TASK_QUEUED, queued: true },
    );
}

/** @param {Tool} tool @param {PlainRecord} args */
function lookAgain(tool, args) {
    const looks = Object.entries(args).flatMap(([name, value]) => {
        if (/driveLetter\d?$/i.test(name))
            return [`GetPartitionInfo (driveLetter "${String(value).slice(0, 1).toUpperCase()}")`];
        return /diskIndex$/i.test(name) ? [`ListPartitionsOnDisk (diskIndex ${value})`] : [];
    });
    return `call ${looks.length > 0 ? looks.join(' and ') : 'ListPartitionsOnDisk or GetPartitionInfo'}`;
}

/**
 * Any answer that is not "Task Queued": what was answered, what the inventory knows, and what may be the cause.
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {string} answer
 * @param {Facts | undefined} facts undefined when the inventory could not be read
 */
export function refusedAnswer(tool, args, answer, facts) {
    const lines = [said(tool, answer)];
    if (facts) lines.push(...targetLines(facts));
    if (facts && answer === TASK_NOT_VALID) {
        const causes = likelyCauses(tool, args, facts);
        lines.push(`The service gives no reason. Likely, not certain: ${causes.join('; or ')}.`);
    }
    return failure(lines.join('\n'), { answer, queued: false });
}

/** @param {Tool} tool @param {string} answer */
function said(tool, answer) {
    if (answer === TASK_NOT_VALID)
        return `"${TASK_NOT_VALID}": ${tool.name} was refused, nothing was handed to the application and nothing has changed.`;
    if (answer === '')
        return `${tool.name} got an empty answer: the application has no page for it. Nothing was handed over.`;
    return `"${answer}": ${tool.name} was refused, nothing was handed to the application and nothing has changed.`;
}

/** @param {Facts} facts */
export function targetLines(facts) {
    const letters = facts.partitions
        .map((p) => p.driveLetter.slice(0, 1).toUpperCase())
        .filter((letter) => /[A-Z]/.test(letter))
        .sort();
    return [
        ...facts.namedDisks
            .filter(({ index }) => index >= 0)
            .flatMap(({ arg, index, disk }) => {
                if (!disk)
                    return [
                        `${arg}: the inventory has no disk ${index}; it has ${facts.disks.map((d) => d.diskIndex).join(', ') || 'none'}.`,
                    ];
                return [
                    `${arg}: ${diskLine(disk)}`,
                    ...partitionLines(facts.partitions.filter((p) => p.diskIndex === index)).map(
                        (line) => `  ${line}`,
                    ),
                ];
            }),
        ...facts.namedDrives
            .filter(({ letter }) => letter)
            .map(({ arg, letter, partition }) =>
                partition
                    ? `${arg}: ${partitionLine(partition)}`
                    : `${arg}: the inventory has no drive ${letter}:; it has ${letters.join(', ') || 'none'}.`,
            ),
    ];
}
