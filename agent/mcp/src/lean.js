/** @import { PlainRecord } from './types.js' */

// A lean record contains the fields that a model needs for its next call. It omits texts that repeat a size, empty
// strings, false flags, and facts that the disk's record states as well.
const diskFields = ['diskIndex', 'diskLabel', 'totalCapacity', 'availableSpace', 'partitionCount'];
const diskFieldsIfSet = [
    'serialNumber',
    'isUninitialized',
    'isGpt',
    'isMbr',
    'isStorageSpace',
    'isDynamic',
    'isReadOnly',
    'isOffline',
    'isBadDisk',
    'isWriteProtected',
    'isRemovable',
    'isVhd',
    'isVmd',
    'isVirtualDisk',
    'isUsb',
    'isSsd',
    'existsBitLocker',
    'isLowSpace',
    'not4kAligned',
];
const regionFields = ['diskIndex', 'isUnallocated', 'rawCapacity', 'startingOffset'];
const partitionFields = ['diskIndex', 'rawCapacity', 'usedSize', 'freeSize', 'startingOffset'];
const partitionFieldsIfSet = [
    'driveLetter',
    'label',
    'fileSystemType',
    'isUnformatted',
    'isRawPartition',
    'isBitlockerEncrypted',
    'isReadOnly',
    'isHidden',
    'isActive',
    'isCurrentSystemPartition',
    'isCurrentBootPartition',
    'isBootPartitionContainer',
    'isLogical',
    'isDynamic',
    'isBadPartition',
    'requiresSectorBySector',
    'isOfflineBootPartition',
    'isLowSpace',
    'gptReserved',
    'gptEfi',
    'gptRecovery',
    'bitlockerState',
];
const dynamicFields = ['dynamicVolumeSize', 'dynamicVolumeType'];

/** The fields that the lean records of an interface record can contain. @type {Record<string, string[]>} */
export const leanFields = {
    DiskInfo: [...diskFields, ...diskFieldsIfSet],
    PartitionInfo: [...regionFields, ...partitionFields.slice(1), ...partitionFieldsIfSet, ...dynamicFields].filter(
        (name, i, all) => all.indexOf(name) === i,
    ),
};

const maxCharacters = 256;

/** A longer string only costs tokens. @param {any} value */
const shortened = (value) =>
    typeof value === 'string' && value.length > maxCharacters
        ? `${value.slice(0, maxCharacters)}… (the first ${maxCharacters} of ${value.length} characters)`
        : value;

/** @param {PlainRecord} record @param {string[]} fields */
const pick = (record, fields) => Object.fromEntries(fields.map((name) => [name, shortened(record[name])]));

/** @param {PlainRecord} record @param {string[]} fields */
const ifSet = (record, fields) =>
    pick(
        record,
        fields.filter((name) => record[name] !== false && record[name] !== ''),
    );

/** @param {PlainRecord} disk a DiskInfo @returns {PlainRecord} */
export function leanDisk(disk) {
    const flags = ifSet(disk, diskFieldsIfSet);
    // The interface counts a disk without a partition table as MBR.
    if (disk.isUninitialized) delete flags.isMbr;
    return { ...pick(disk, diskFields), ...flags };
}

/**
 * @param {PlainRecord} partition a PartitionInfo
 * @param {number} [unallocatedIndex] the position of a region among those of its disk, for CreatePartition
 * @returns {PlainRecord}
 */
export function leanPartition(partition, unallocatedIndex) {
    if (partition.isUnallocated)
        return { ...pick(partition, regionFields), ...(unallocatedIndex !== undefined && { unallocatedIndex }) };
    const rare = ifSet(partition, partitionFieldsIfSet);
    if (partition.driveLetter === '*') delete rare.driveLetter;
    if (partition.bitlockerState === 'unencrypted') delete rare.bitlockerState;
    return {
        ...pick(partition, partitionFields),
        ...rare,
        ...(partition.isDynamic && pick(partition, dynamicFields)),
    };
}

/**
 * The position of each unallocated region among those of its disk; undefined for a partition.
 * @param {PlainRecord[]} partitions
 */
export function unallocatedIndices(partitions) {
    /** @type {Map<number, number>} */
    const regions = new Map();
    return partitions.map((p) => {
        if (!p.isUnallocated) return undefined;
        const position = regions.get(p.diskIndex) ?? 0;
        regions.set(p.diskIndex, position + 1);
        return position;
    });
}
