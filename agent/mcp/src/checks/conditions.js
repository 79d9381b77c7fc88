// Conditions that several tools share. Each includes the conditions that it depends on.
import { quoted } from '../quote.js';
import { cause, firstOf, letterOf, possibleCause, sizeText } from './call.js';
import { defaultCluster, fileSystemNamed } from './fileSystems.js';
import { sectorOf } from './layout.js';

/** @import { PlainRecord } from '../types.js' */
/** @import { Call, Cause, Check } from './call.js' */
/** @import { FileSystem } from './fileSystems.js' */

/** @param {PlainRecord[]} disks */
const numbers = (disks) =>
    disks.length > 0
        ? `The disks are ${disks.map((d) => d.diskIndex).join(', ')}.`
        : 'The inventory is empty: the application may still be starting.';

/** @param {PlainRecord[]} partitions */
function letters(partitions) {
    const found = partitions.filter((p) => /^[A-Za-z]/.test(p.driveLetter)).map(letterOf);
    return found.length > 0
        ? `The drives are ${[...new Set(found)].sort().join(', ')}.`
        : 'The inventory contains no drive: the application may still be starting.';
}

/** The disk of an argument. -1 is accepted where it leaves the choice to the application. @param {string} name @returns {Check} */
export const diskExists = (name) => (call) => {
    const index = Number(call.args[name]);
    const arg = call.tool.args.find((one) => one.name === name);
    if (call.diskOf(index) || index === arg?.automatic) return undefined;
    return cause('absentDisk', `Disk ${index} does not exist. ${numbers(call.facts.disks)}`);
};

/** @param {string} name an argument @returns {Check} */
export const driveExists = (name) => (call) =>
    call.partition(name)
        ? undefined
        : cause(
              'absentDrive',
              `Drive ${call.letter(name)}: does not exist. ${letters(call.facts.partitions)}`,
          );

/** @type {Check} */
export const diskKnown = (call) => diskExists(firstNamed(call, 'disk'))(call);
/** @type {Check} */
export const driveKnown = (call) => driveExists(firstNamed(call, 'drive'))(call);

/** @param {Call} call @param {string} role */
const firstNamed = (call, role) => call.tool.args.find((arg) => arg.role === role)?.name ?? '';

/** The properties that prevent writing, in words. @param {PlainRecord} disk */
export const obstacles = (disk) =>
    [
        disk.isReadOnly && 'read-only',
        disk.isWriteProtected && 'write-protected',
        disk.isOffline && 'offline',
        disk.isBadDisk && 'marked as faulty',
    ].filter(Boolean);

/** @type {Check} */
export const writableDisk = firstOf(diskKnown, ({ disk }) => {
    const found = obstacles(disk);
    return found.length > 0
        ? cause('diskNotWritable', `Disk ${disk.diskIndex} cannot be written to: it is ${found.join(', ')}.`)
        : undefined;
});

/** The reasons why a partition cannot be written to. @param {Call} call @param {PlainRecord} partition */
export function driveObstacles(call, partition) {
    const disk = call.diskOf(partition.diskIndex);
    return [
        ...(partition.isReadOnly ? ['the drive is read-only'] : []),
        ...(partition.isBadPartition ? ['the drive is marked as faulty'] : []),
        ...(disk ? obstacles(disk).map((word) => `disk ${disk.diskIndex} is ${word}`) : []),
    ];
}

/** @type {Check} */
export const writableDrive = firstOf(driveKnown, (call) => {
    const found = driveObstacles(call, call.drive);
    return found.length > 0
        ? cause('driveNotWritable', `Drive ${letterOf(call.drive)} cannot be written to: ${found.join(', ')}.`)
        : undefined;
});

/** @param {PlainRecord} p */
export const isOfRunningSystem = (p) => p.isBootPartitionContainer || p.isCurrentSystemPartition;

/** The partition of the running system on a disk. @param {Call} call @param {PlainRecord} disk */
export const systemOn = (call, disk) => call.entries(disk).find(isOfRunningSystem);

/** @type {Check} */
export const withoutRunningSystem = (call) =>
    systemOn(call, call.disk)
        ? cause('runningSystem', `Disk ${call.disk.diskIndex} contains the running system.`)
        : undefined;

/** @type {Check} */
export const erasableDisk = firstOf(writableDisk, withoutRunningSystem);

/** @type {Check} */
export const erasableDrive = firstOf(writableDrive, ({ drive }) =>
    isOfRunningSystem(drive)
        ? cause('runningSystem', `Drive ${letterOf(drive)} belongs to the running system.`)
        : undefined,
);

/** @param {PlainRecord} p */
export const isLocked = (p) => p.bitlockerState === 'encryption not unlocked';

/** @type {Check} */
export const readableDrive = firstOf(writableDrive, ({ drive }) => {
    if (isLocked(drive))
        return cause('locked', `Drive ${letterOf(drive)} is locked by BitLocker. The user can unlock it.`);
    if (fileSystemNamed(drive.fileSystemType)) return undefined;
    const text = `Drive ${letterOf(drive)} has no readable file system: it is ${drive.fileSystemType ? quoted(drive.fileSystemType) : 'unformatted'}.`;
    return drive.isRawPartition || drive.isUnformatted
        ? cause('noFileSystem', text)
        : possibleCause('noFileSystem', text);
});

/** @type {Check} */
export const hasTable = ({ disk }) =>
    disk.isUninitialized
        ? cause('noTable', `Disk ${disk.diskIndex} has no partition table. It must be initialized first.`)
        : undefined;

/** @type {Check} */
export const basicDisk = ({ disk }) =>
    disk.isDynamic
        ? cause('dynamic', `Disk ${disk.diskIndex} is dynamic: the layout of its volumes is fixed.`)
        : undefined;

/** @type {Check} */
export const positivePasses = ({ args }) =>
    Number(args.eraseCount) <= 0
        ? cause('passes', `eraseCount must be at least 1, but is ${args.eraseCount}.`)
        : undefined;

/** Unused drive letters from D: on. @param {PlainRecord[]} partitions */
export function unusedLetters(partitions) {
    const used = new Set(partitions.map((p) => p.driveLetter.slice(0, 1).toUpperCase()));
    return [...'DEFGHIJKLMNOPQRSTUVWXYZ'].filter((letter) => !used.has(letter));
}

/** @type {Check} */
export const letterLeft = ({ facts }) =>
    unusedLetters(facts.partitions).length === 0
        ? cause('letters', 'All drive letters from D: to Z: are in use.')
        : undefined;

/** @param {FileSystem} kind */
const labelOf = ({ name }) => `${/^[NeE]/.test(name) ? 'An' : 'A'} ${name} label`;

/** @param {FileSystem} kind @param {string} label @returns {Cause | undefined} */
export function labelCause(kind, label) {
    if (label.length > kind.label)
        return cause(
            'labelLength',
            `${labelOf(kind)} has at most ${kind.label} characters, but this one has ${label.length}.`,
        );
    const wrong = [...label].find((c) => c < ' ' || kind.invalidInLabel.includes(c));
    return wrong === undefined
        ? undefined
        : cause('labelCharacter', `${labelOf(kind)} cannot contain the character ${quoted(wrong)}.`);
}

/** @param {FileSystem} kind @param {bigint} size @param {bigint} cluster @returns {Cause | undefined} */
export function clusterCause(kind, size, cluster) {
    const powerOfTwo = cluster > 0n && (cluster & (cluster - 1n)) === 0n;
    if (!powerOfTwo || cluster < kind.smallestCluster || cluster > kind.largestCluster)
        return possibleCause(
            'cluster',
            `The cluster size of ${kind.name} is a power of two from ${kind.smallestCluster} to ${kind.largestCluster} bytes, not ${cluster}.`,
        );
    return clusterCountCause(kind, size, cluster);
}

/** @param {FileSystem} kind @param {bigint} size @param {bigint} cluster @returns {Cause | undefined} */
const clusterCountCause = (kind, size, cluster) =>
    size / cluster > kind.clusters
        ? possibleCause(
              'clusterCount',
              `${kind.name} counts at most ${kind.clusters} clusters, but ${sizeText(size)} with clusters of ${cluster} bytes needs ${size / cluster}.`,
          )
        : undefined;

/** The limits of an existing volume that gets a new size. A cluster size of 0 is not checked. @param {FileSystem} kind @param {bigint} size @param {bigint} cluster @returns {Cause | undefined} */
export function sizeCause(kind, size, cluster) {
    if (size < kind.smallest || size > kind.largest)
        return possibleCause(
            'fileSystemSize',
            `${kind.name} supports ${sizeText(kind.smallest)} to ${sizeText(kind.largest)}, not ${sizeText(size)}.`,
        );
    return cluster > 0n ? clusterCountCause(kind, size, cluster) : undefined;
}

/**
 * The limits of a new volume. A cluster size of 0 selects the default.
 * @param {string} name of the file system
 * @param {bigint} size
 * @param {bigint} cluster
 * @param {string} label
 * @returns {Cause | undefined}
 */
export function newVolumeCause(name, size, cluster, label) {
    const kind = fileSystemNamed(name);
    if (!kind)
        return possibleCause('fileSystemUnknown', `The file system ${quoted(name)} cannot be created.`);
    if (size < kind.smallest || size > kind.largestCreated)
        return possibleCause(
            'fileSystemCreated',
            `${kind.name} can be created with ${sizeText(kind.smallest)} to ${sizeText(kind.largestCreated)}, not ${sizeText(size)}.`,
        );
    return (
        clusterCause(kind, size, cluster === 0n ? defaultCluster(kind, size) : cluster) ??
        labelCause(kind, label)
    );
}

/** True if a given cluster size is smaller than a sector. @param {PlainRecord} partition @param {bigint} cluster */
export const belowSector = (partition, cluster) => cluster < sectorOf(partition);
