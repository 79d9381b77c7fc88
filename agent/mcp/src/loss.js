/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */

/**
 * The argument that names the data a tool destroys: a whole disk, a drive, or the disk that contains a drive. The other
 * targets of these tools are only read.
 * @type {Record<string, { disk?: string, drive?: string, diskOfDrive?: string }>}
 */
const lostBy = {
    CreateBootableUsbByDisk: { disk: 'diskIndex' },
    CreateBootableUsbByDriveLetter: { diskOfDrive: 'driveLetter' },
    CloneOSDataFromCurrent: { disk: 'targetDiskIndex' },
    CloneOSDataFromDisk: { disk: 'targetDiskIndex' },
    CloneOSDataFromPartition: { disk: 'targetDiskIndex' },
    CloneDiskToDisk: { disk: 'destDiskIndex' },
    ClonePartitionToPartition: { drive: 'destDriveLetter' },
    ClonePartitionToDisk: { disk: 'destDiskIndex' },
    DeleteAllPartitions: { disk: 'diskIndex' },
    InitializeDiskToGpt: { disk: 'diskIndex' },
    InitializeDiskToMbr: { disk: 'diskIndex' },
    WipeDisk: { disk: 'diskIndex' },
    AutoCreatePartitions: { disk: 'diskIndex' },
    LowLevelFormat: { disk: 'diskIndex' },
    FormatPartition: { drive: 'driveLetter' },
    DeletePartition: { drive: 'driveLetter' },
    WipePartition: { drive: 'driveLetter' },
};

/**
 * The disks and drives of a call, separated into those whose content is lost and those that are only read.
 * @typedef {object} Targets
 * @property {PlainRecord[]} lostDisks
 * @property {PlainRecord[]} lostDrives
 * @property {PlainRecord[]} otherDisks
 * @property {PlainRecord[]} otherDrives
 * @property {boolean} known false for a tool that is not in the table: all its targets are in lostDisks and lostDrives
 */

/** @param {Tool} tool @param {Facts} facts @returns {Targets} */
export function targetsOf(tool, facts) {
    const loss = lostBy[tool.name];
    const disks = new Map(facts.namedDisks.map(({ arg, disk }) => [arg, disk]));
    const drives = new Map(facts.namedDrives.map(({ arg, partition }) => [arg, partition]));
    if (!loss)
        return {
            lostDisks: present([...disks.values()]),
            lostDrives: present([...drives.values()]),
            otherDisks: [],
            otherDrives: [],
            known: false,
        };
    const { disk = '', drive = '', diskOfDrive = '' } = loss;
    const lostDisk = disks.get(disk) ?? diskOf(drives.get(diskOfDrive), facts);
    const lostDrive = drives.get(drive);
    return {
        lostDisks: present([lostDisk]),
        lostDrives: present([lostDrive]),
        otherDisks: present([...disks.values()]).filter((d) => d !== lostDisk),
        otherDrives: present([...drives.values()]).filter((p) => p !== lostDrive && diskOf(p, facts) !== lostDisk),
        known: true,
    };
}

/** The disk that contains a partition. @param {PlainRecord | undefined} partition @param {Facts} facts */
export const diskOf = (partition, facts) =>
    partition && facts.disks.find((disk) => disk.diskIndex === partition.diskIndex);

/** @param {Array<PlainRecord | undefined>} records @returns {PlainRecord[]} */
const present = (records) => records.filter((record) => record !== undefined);
