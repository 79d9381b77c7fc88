import { diskOf } from './loss.js';
import { quoted } from './quote.js';

/** @import { PlainRecord } from './types.js' */
/** @import { Facts } from './inventory.js' */

/**
 * The properties that identify the disks and drives of a call. A consent is valid only while all of them are equal.
 * @typedef {Record<string, Record<string, string>>} Identity
 */

/** The target is not the one that the user agreed to; the tool was not called. */
export class TargetChanged extends Error {
    /** @param {string[]} changes */
    constructor(changes) {
        super(changes.join('\n'));
        this.changes = changes;
    }
}

/** @param {Facts} facts @returns {Identity} */
export function identityOf(facts) {
    /** @type {Identity} */
    const identity = {};
    for (const { index, disk } of facts.namedDisks)
        if (disk) identity[`disk ${index}`] = { ...diskIdentity(disk, facts), partitions: layout(disk, facts) };
    for (const { letter, partition } of facts.namedDrives)
        if (partition) identity[`drive ${letter}`] = driveIdentity(partition, facts);
    return identity;
}

/** @param {PlainRecord} disk @param {Facts} facts @returns {Record<string, string>} */
function diskIdentity(disk, facts) {
    const { serialNumber } = disk;
    // Some USB adapters report the same serial number for every disk.
    const unique =
        serialNumber !== '' && facts.disks.filter((d) => d.serialNumber === serialNumber).length === 1;
    return {
        ...(unique ? { 'serial number': serialNumber } : { 'disk number': String(disk.diskIndex) }),
        'disk size': disk.totalCapacity,
    };
}

/** @param {PlainRecord} partition @param {Facts} facts */
function driveIdentity(partition, facts) {
    const disk = diskOf(partition, facts);
    return { ...(disk && diskIdentity(disk, facts)), ...partitionIdentity(partition) };
}

/** @param {PlainRecord} p */
const partitionIdentity = (p) => ({
    'partition GUID': p.partitionGuid,
    'start sector': p.startSector,
    size: p.rawCapacity,
    letter: p.driveLetter,
    label: p.label,
    'file system': p.fileSystemType,
});

/** The properties that are not texts of a disk. @type {Record<string, (value: string) => string>} */
const plainTexts = {
    'disk number': (value) => value,
    'disk size': (value) => `${value} bytes`,
    'start sector': (value) => value,
    size: (value) => `${value} bytes`,
};

/** @param {string} property @param {string | undefined} value */
const shown = (property, value) =>
    value === undefined ? 'unknown' : (plainTexts[property]?.(value) ?? quoted(value));

/** All partitions of a disk in one comparable text. @param {PlainRecord} disk @param {Facts} facts */
const layout = (disk, facts) =>
    JSON.stringify(
        facts.partitions
            .filter((p) => p.diskIndex === disk.diskIndex && !p.isUnallocated)
            .map(partitionIdentity),
    );

/** The differences in words. @param {Identity} before @param {Identity} after */
export function changesBetween(before, after) {
    const names = [...new Set([...Object.keys(before), ...Object.keys(after)])];
    return names.flatMap((name) => {
        const [old, now] = [before[name], after[name]];
        if (!old || !now) return [`${name} ${now ? 'has appeared' : 'no longer exists'}`];
        const properties = [...new Set([...Object.keys(old), ...Object.keys(now)])];
        return properties
            .filter((property) => old[property] !== now[property])
            .map((property) =>
                property === 'partitions'
                    ? `${name}: partitions are different`
                    : `${name}: ${property} was ${shown(property, old[property])}, is now ${shown(property, now[property])}`,
            );
    });
}
