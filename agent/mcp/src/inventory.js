import { unallocatedIndices } from './lean.js';
import { quoted } from './quote.js';
import { displayed, sizeWords } from './size.js';
import { fromWire } from './wire.js';

/** @import { CallScope, PlainRecord, Table, Tool } from './types.js' */
/** @import { Host } from './host.js' */

/**
 * The inventory, and its records of the disks and drives that a call names.
 * @typedef {object} Facts
 * @property {PlainRecord[]} disks all disks
 * @property {PlainRecord[]} partitions all partitions and unallocated regions
 * @property {Array<{ arg: string, index: number, disk: PlainRecord | undefined }>} namedDisks
 * @property {Array<{ arg: string, letter: string, partition: PlainRecord | undefined }>} namedDrives
 */

/**
 * All disks.
 * @param {Pick<Host, 'ask'>} host
 * @param {Table} table
 * @param {CallScope} scope
 * @returns {Promise<PlainRecord[]>}
 */
export const readDisks = async (host, table, scope) =>
    fromWire(await host.ask('ListAllDisks', [], scope), { list: { record: 'DiskInfo' } }, table);

/**
 * The partitions and unallocated regions of a disk, or of all disks.
 * @param {Pick<Host, 'ask'>} host
 * @param {Table} table
 * @param {CallScope} scope
 * @param {number} [diskIndex]
 * @returns {Promise<PlainRecord[]>}
 */
export async function readPartitions(host, table, scope, diskIndex) {
    const found =
        diskIndex === undefined
            ? await host.ask('GetAllPartitionInfo', [], scope)
            : await host.ask('ListPartitionsOnDisk', [diskIndex], scope);
    return fromWire(found, { list: { record: 'PartitionInfo' } }, table);
}

/**
 * Reads the inventory and finds the records that the arguments name.
 * @param {Pick<Host, 'ask'>} host
 * @param {Table} table
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {CallScope} scope
 * @returns {Promise<Facts>}
 */
export async function factsAbout(host, table, tool, args, scope) {
    const disks = await readDisks(host, table, scope);
    const partitions = await readPartitions(host, table, scope);
    return {
        disks,
        partitions,
        namedDisks: tool.args.filter((arg) => arg.role === 'disk').map(({ name }) => {
            const index = Number(args[name]);
            return {
                arg: name,
                index,
                disk: disks.find((d) => d.diskIndex === index),
            };
        }),
        namedDrives: tool.args
            .filter((arg) => arg.role === 'drive')
            .map(({ name }) => {
                const letter = String(args[name]).slice(0, 1).toUpperCase();
                return { arg: name, letter, partition: partitionOf(partitions, letter) };
            }),
    };
}

/** @param {PlainRecord[]} partitions @param {string} letter one upper-case letter */
export const partitionOf = (partitions, letter) =>
    partitions.find((p) => p.driveLetter.slice(0, 1).toUpperCase() === letter);

const diskFlags = {
    isUninitialized: 'uninitialized',
    isDynamic: 'dynamic',
    isOffline: 'offline',
    isReadOnly: 'read-only',
    isWriteProtected: 'write-protected',
    isBadDisk: 'bad',
    isRemovable: 'removable',
    isUsb: 'USB',
    isSsd: 'SSD',
    isVirtualDisk: 'virtual',
    isStorageSpace: 'storage space',
    existsBitLocker: 'has BitLocker',
    isLowSpace: 'low on space',
    not4kAligned: 'not 4K aligned',
};
const partitionFlags = {
    isCurrentBootPartition: 'contains the running Windows',
    isCurrentSystemPartition: 'boot partition of this machine',
    gptEfi: 'EFI system partition',
    gptReserved: 'GPT reserved',
    gptRecovery: 'recovery partition',
    isActive: 'active',
    isHidden: 'hidden',
    isLogical: 'logical',
    isDynamic: 'dynamic',
    isReadOnly: 'read-only',
    isBadPartition: 'bad',
    isRawPartition: 'unreadable file system',
    isUnformatted: 'unformatted',
    isBitlockerEncrypted: 'BitLocker',
    isLowSpace: 'low on space',
};

/** @param {Record<string, string>} names @param {PlainRecord} record */
const flags = (names, record) =>
    Object.keys(names)
        .filter((name) => record[name] === true)
        .map((name) => names[name]);

/**
 * One line about a disk.
 * @param {PlainRecord} d
 * @param {PlainRecord[]} partitions all of the inventory, or of the disk
 */
export function diskLine(d, partitions) {
    const kind = d.isUninitialized ? [] : [d.isGpt ? 'GPT' : 'MBR'];
    const parts = [
        d.diskLabel && quoted(d.diskLabel),
        `${displayed(d.displayTotalCapacity)} (${d.totalCapacity} bytes)`,
        ...kind,
        `${d.partitionCount} ${d.partitionCount === 1 ? 'entry' : 'entries'}`,
        `${displayed(d.displayAvailableSpace)} unused (${sizeWords(unallocatedOn(d, partitions))} unallocated)`,
        d.serialNumber && `serial ${quoted(d.serialNumber)}`,
        ...flags(diskFlags, d),
    ];
    return `Disk ${d.diskIndex}: ${parts.filter(Boolean).join(', ')}`;
}

/** @param {PlainRecord} disk @param {PlainRecord[]} partitions */
const unallocatedOn = (disk, partitions) =>
    partitions
        .filter((p) => p.isUnallocated && p.diskIndex === disk.diskIndex)
        .reduce((sum, p) => sum + BigInt(p.rawCapacity), 0n);

/**
 * One line about a partition or an unallocated region. Sizes that a call needs have all digits.
 * @param {PlainRecord} p
 * @param {{ withDisk?: boolean, unallocatedIndex?: number }} [options] the position of a region, for CreatePartition
 */
export function partitionLine(p, { withDisk = true, unallocatedIndex } = {}) {
    const size = `${displayed(p.displayRawCapacity)} (${p.rawCapacity} bytes)`;
    const place = [`start ${p.startingOffset}`, ...(withDisk ? [`disk ${p.diskIndex}`] : [])];
    if (p.isUnallocated) {
        const index = unallocatedIndex === undefined ? [] : [`unallocatedIndex ${unallocatedIndex}`];
        return `Unallocated: ${[size, ...place, ...index].join(', ')}`;
    }
    const letter = /^[A-Za-z]/.test(p.driveLetter)
        ? `${p.driveLetter.slice(0, 1).toUpperCase()}:`
        : 'No letter:';
    const parts = [
        quoted(p.label),
        p.fileSystemType && quoted(p.fileSystemType),
        size,
        `${displayed(p.displayUsedSize)} used`,
        `${displayed(p.displayFreeSize)} free`,
        ...place,
        ...flags(partitionFlags, p),
    ];
    return `${letter} ${parts.filter(Boolean).join(', ')}`;
}

/** One line per partition; an unallocated region includes its unallocatedIndex for CreatePartition. @param {PlainRecord[]} partitions */
export function partitionLines(partitions) {
    const indices = unallocatedIndices(partitions);
    return partitions.map((p, i) => partitionLine(p, { unallocatedIndex: indices[i] }));
}
