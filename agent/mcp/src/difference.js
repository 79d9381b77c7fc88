import { letterOf, matchDisks, matchPartitions, matchRegions } from './match.js';
import { quoted, unquoted } from './quote.js';

/** @import { PlainRecord } from './types.js' */
/** @import { Pair } from './match.js' */

/** @typedef {{ disks: PlainRecord[], partitions: PlainRecord[] }} Snapshot the inventory at one time */

/**
 * One difference between two snapshots. `record` is the later record, or the earlier one if it is gone.
 * @typedef {object} Change
 * @property {'disk' | 'partition' | 'region'} item
 * @property {'new' | 'gone' | 'changed'} change
 * @property {PlainRecord} record
 * @property {PlainRecord} [was] the earlier record; undefined for 'new'
 * @property {Field[]} fields for 'changed', at least one
 * @property {string} words one line
 * @property {number} [unallocatedIndex] of a region, for CreatePartition
 */
/** @typedef {{ name: string, was: any, now: any, words: string }} Field */

/**
 * The differences, ordered by kind: partitions, free regions, disks.
 * @param {Snapshot} before
 * @param {Snapshot} after
 * @param {(letter: string) => boolean} [watched] the drives on which any change of the used space counts
 * @returns {Change[]}
 */
export function differences(before, after, watched = () => false) {
    const disks = matchDisks(before.disks, after.disks);
    const partitions = matchPartitions(before.partitions, after.partitions, disks);
    return [
        ...partitions.flatMap((pair) => partitionChange(pair, watched)),
        ...matchRegions(before.partitions, after.partitions, disks).flatMap((pair) =>
            regionChange(pair, pair[1] ? after.partitions : before.partitions),
        ),
        ...disks.flatMap(diskChange),
    ];
}

/** @param {Pair} pair @param {(letter: string) => boolean} watched @returns {Change[]} */
function partitionChange([was, now], watched) {
    const item = /** @type {const} */ ('partition');
    if (!now) return [{ item, change: 'gone', record: was, was, fields: [], words: `Gone: ${partitionWords(was)}.` }];
    if (!was) return [{ item, change: 'new', record: now, fields: [], words: `New: ${partitionWords(now)}.` }];
    const fields = [
        ...changedFields(partitionFields, was, now),
        ...(usedSpaceChanged(was, now, watched(letterOf(was))) ? [usedField(was, now)] : []),
    ];
    const words = `${partitionName(was)} ${fields.map((f) => f.words).join('; ')}.`;
    return fields.length > 0 ? [{ item, change: 'changed', record: now, was, fields, words }] : [];
}

/** @param {Pair} pair @param {PlainRecord[]} entries those of the snapshot with the region @returns {Change[]} */
function regionChange([was, now], entries) {
    const item = /** @type {const} */ ('region');
    const record = now ?? was;
    const size = record.displayRawCapacity;
    const place = `disk ${record.diskIndex}, ${placeOf(record, entries)}`;
    if (!now)
        return [{ item, change: 'gone', record, was, fields: [], words: `Gone: free region of ${size} (${place}).` }];
    const unallocatedIndex = entries
        .filter((p) => p.isUnallocated && p.diskIndex === now.diskIndex)
        .indexOf(now);
    const index = `unallocatedIndex ${unallocatedIndex}`;
    if (!was) {
        const words = `New: free region of ${size} (${place}), ${index}.`;
        return [{ item, change: 'new', record, fields: [], words, unallocatedIndex }];
    }
    const fields = changedFields(regionFields, was, now);
    const words = `Free region (${place}): ${fields.map((f) => f.words).join('; ')}; ${index}.`;
    return fields.length > 0 ? [{ item, change: 'changed', record, was, fields, words, unallocatedIndex }] : [];
}

/** @param {Pair} pair @returns {Change[]} */
function diskChange([was, now]) {
    const item = /** @type {const} */ ('disk');
    if (!now) return [{ item, change: 'gone', record: was, was, fields: [], words: `Gone: ${diskWords(was)}.` }];
    if (!was) return [{ item, change: 'new', record: now, fields: [], words: `New: ${diskWords(now)}.` }];
    const fields = changedFields(diskFields, was, now);
    const words = `Disk ${now.diskIndex}: ${fields.map((f) => f.words).join('; ')}.`;
    return fields.length > 0 ? [{ item, change: 'changed', record: now, was, fields, words }] : [];
}

/**
 * A field to compare: its value, and the words for a change.
 * @typedef {{ name: string, value?: (record: PlainRecord) => any, words: (was: PlainRecord, now: PlainRecord) => string }} Row
 */

/** @param {string} name @param {string} title @param {(value: any) => string} show @returns {Row} */
const valueRow = (name, title, show) => ({
    name,
    words: (was, now) => `${title} ${show(now[name])} (was ${show(was[name])})`,
});
/** @param {string} name @param {string} adjective @returns {Row} */
const flagRow = (name, adjective) => ({
    name,
    words: (was, now) => (now[name] ? `now ${adjective}` : `no longer ${adjective}`),
});
/** @param {Record<string, string>} adjectives */
const flagRows = (adjectives) => Object.entries(adjectives).map(([name, word]) => flagRow(name, word));

/** @type {Row} */
const sizeRow = {
    name: 'rawCapacity',
    words: (was, now) => `size ${now.displayRawCapacity} (was ${was.displayRawCapacity})`,
};
/** @type {Row} In bytes, like every other text about a place on a disk. */
const startRow = {
    name: 'startSector',
    words: (was, now) => `starts at byte ${now.startingOffset} (was ${was.startingOffset})`,
};
const diskRow = valueRow('diskIndex', 'disk', String);

/** @type {Row[]} The fields that the others follow from; the used space is compared separately. */
const partitionFields = [
    {
        name: 'rawCapacity',
        words: (was, now) => `${sizeRow.words(was, now)}, ${now.displayFreeSize} free (was ${was.displayFreeSize})`,
    },
    {
        name: 'driveLetter',
        value: letterOf,
        words: (was, now) =>
            letterOf(now)
                ? `letter ${letterOf(now)}: (was ${letterOf(was) ? `${letterOf(was)}:` : 'missing'})`
                : 'no letter now',
    },
    valueRow('label', 'label', quoted),
    valueRow('fileSystemType', 'file system', (name) => unquoted(name) || 'missing'),
    valueRow('clusterSize', 'cluster size in bytes', String),
    startRow,
    diskRow,
    valueRow('bitlockerState', 'BitLocker state', quoted),
    ...flagRows({
        isHidden: 'hidden',
        isActive: 'active',
        isLogical: 'logical',
        isReadOnly: 'read-only',
        isUnformatted: 'unformatted',
        isRawPartition: 'unreadable',
        isBadPartition: 'bad',
    }),
];
const regionFields = [sizeRow, startRow, diskRow];
/** @type {Row[]} */
const diskFields = [
    {
        name: 'partitionTable',
        value: tableOf,
        words: (was, now) => `partition table ${tableOf(now)} (was ${tableOf(was)})`,
    },
    valueRow('diskIndex', 'number', String),
    {
        name: 'totalCapacity',
        words: (was, now) => `capacity ${now.displayTotalCapacity} (was ${was.displayTotalCapacity})`,
    },
    ...flagRows({
        isDynamic: 'dynamic',
        isOffline: 'offline',
        isReadOnly: 'read-only',
        isWriteProtected: 'write-protected',
        isBadDisk: 'bad',
    }),
];

/** @param {Row[]} rows @param {PlainRecord} was @param {PlainRecord} now @returns {Field[]} */
const changedFields = (rows, was, now) =>
    rows
        .map((row) => ({ row, value: row.value ?? ((/** @type {PlainRecord} */ record) => record[row.name]) }))
        .filter(({ value }) => value(was) !== value(now))
        .map(({ row, value }) => ({
            name: row.name,
            was: value(was),
            now: value(now),
            words: row.words(was, now),
        }));

/**
 * Programs write to drives at any time, so a small change of the used space is not the effect of an order.
 * @param {PlainRecord} was
 * @param {PlainRecord} now
 * @param {boolean} any
 */
function usedSpaceChanged(was, now, any) {
    const moved = Math.abs(Number(now.usedSize) - Number(was.usedSize));
    return any ? moved > 0 : moved > Number(now.rawCapacity) / 100;
}

/** @param {PlainRecord} was @param {PlainRecord} now @returns {Field} */
const usedField = (was, now) => ({
    name: 'usedSize',
    was: was.usedSize,
    now: now.usedSize,
    words: `used space ${now.displayUsedSize} (was ${was.displayUsedSize}), ${now.displayFreeSize} free`,
});

/** @param {PlainRecord} disk */
function tableOf(disk) {
    if (disk.isUninitialized) return 'missing';
    return disk.isGpt ? 'GPT' : 'MBR';
}

/** @param {PlainRecord} p */
const partitionName = (p) =>
    letterOf(p)
        ? `${letterOf(p)}:`
        : `Partition ${quoted(p.label)} without a letter (disk ${p.diskIndex}, starts at byte ${p.startingOffset}):`;

/** @param {PlainRecord} p */
const partitionWords = (p) =>
    [
        letterOf(p) ? `${letterOf(p)}: ${quoted(p.label)}` : `partition ${quoted(p.label)} without a letter`,
        unquoted(p.fileSystemType),
        p.displayRawCapacity,
        `${p.displayFreeSize} free`,
        `disk ${p.diskIndex}`,
    ]
        .filter(Boolean)
        .join(', ');

/** @param {PlainRecord} d */
const diskWords = (d) => `disk ${d.diskIndex} (${unquoted(d.diskLabel)}, ${d.displayTotalCapacity})`;

/** The place of a region on its disk in words. @param {PlainRecord} region @param {PlainRecord[]} entries */
function placeOf(region, entries) {
    const previous = entries
        .filter((p) => p.diskIndex === region.diskIndex && !p.isUnallocated)
        .filter((p) => BigInt(p.startSector) < BigInt(region.startSector))
        .at(-1);
    if (!previous) return 'before its first partition';
    return letterOf(previous) ? `after ${letterOf(previous)}:` : `after the partition ${quoted(previous.label)}`;
}
