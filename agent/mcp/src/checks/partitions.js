// Checks of the tools that act on a partition or an unallocated region.
import { cause, firstOf, letterOf, possibleCause, sizeText } from './call.js';
import {
    basicDisk,
    belowSector,
    clusterCause,
    driveKnown,
    erasableDrive,
    hasTable,
    isLocked,
    isOfRunningSystem,
    labelCause,
    letterLeft,
    newVolumeCause,
    readableDrive,
    sizeCause,
    writableDisk,
    writableDrive,
} from './conditions.js';
import { fileSystemNamed } from './fileSystems.js';
import {
    alignedDown,
    alignedUp,
    areNeighbours,
    endOf,
    entryCounts,
    freeAfter,
    givingExceedsMbr,
    kindBetween,
    mbrLimit,
    newSpan,
    partitionAfter,
    partitionBefore,
    sectorOf,
    sizeOf,
    startOf,
} from './layout.js';

/** @import { PlainRecord } from '../types.js' */
/** @import { Call, Cause, Check } from './call.js' */
/** @import { FileSystem } from './fileSystems.js' */

/** @param {PlainRecord} p @returns {FileSystem} of a readable drive */
const kindOf = (p) => /** @type {FileSystem} */ (fileSystemNamed(p.fileSystemType));
/** @param {PlainRecord} p */
const clusterOf = (p) => BigInt(p.clusterSize);
/** @param {PlainRecord} p */
const usedOf = (p) => BigInt(p.usedSize);
/** @param {PlainRecord} p */
const freeOf = (p) => sizeOf(p) - usedOf(p);

/** @param {string} target in words */
const beyondMbr = (target) =>
    cause('mbrLimit', `${target} would end beyond 2 TiB, which the MBR partition table of this disk cannot address.`);

const tableFull = (/** @type {PlainRecord} */ disk) =>
    cause(
        'tableFull',
        disk.isGpt
            ? `The partition table of disk ${disk.diskIndex} is full: it has 128 entries.`
            : `The MBR partition table of disk ${disk.diskIndex} is full: it has 4 entries, and no logical drive is next to this place.`,
    );

/** A readable drive on a disk with a layout that can change. */
const changeableDrive = firstOf(readableDrive, basicDisk);

/** @param {(call: Call) => bigint} sizeOfCall @returns {Check} */
const resizeTo = (sizeOfCall) =>
    firstOf(readableDrive, (call) => {
        const { drive, disk } = call;
        const wanted = sizeOfCall(call);
        const size = (wanted / sectorOf(drive)) * sectorOf(drive);
        if (size <= 0n || size < usedOf(drive))
            return cause(
                'belowUsed',
                `Drive ${letterOf(drive)} contains ${sizeText(usedOf(drive))} of data, which does not fit into ${sizeText(wanted)}.`,
            );
        const after = freeAfter(call.entries(disk), drive);
        if (wanted > sizeOf(drive) + after)
            return cause(
                'noSpaceAfter',
                after > 0n
                    ? `Only ${sizeText(after)} is unallocated directly after drive ${letterOf(drive)}, so it can have at most ${sizeText(sizeOf(drive) + after)}, not ${sizeText(wanted)}.`
                    : `Drive ${letterOf(drive)} cannot grow: no unallocated space is directly after it. It has ${sizeText(sizeOf(drive))}.`,
            );
        if (!disk.isGpt && size > sizeOf(drive) && startOf(drive) + size > mbrLimit)
            return beyondMbr(`Drive ${letterOf(drive)}`);
        return sizeCause(kindOf(drive), size, clusterOf(drive));
    });

export const resize = resizeTo((call) => call.bytes('newPartitionCapacity'));
export const resizeRelative = resizeTo((call) => sizeOf(call.drive) + call.bytes('sizeAdjustment'));

export const format = firstOf(erasableDrive, ({ drive, args }) => {
    const cluster = BigInt(args.clusterSize);
    if (cluster !== 0n && belowSector(drive, cluster))
        return cause(
            'cluster',
            `clusterSize is in bytes and must be at least ${sectorOf(drive)}, the size of a sector, but is ${cluster}.`,
        );
    return newVolumeCause(args.fileSystem, sizeOf(drive), cluster, args.label);
});

/** @param {Call} call @param {bigint} size @returns {Cause | undefined} */
const spaceToGive = ({ drive }, size) =>
    size <= 0n || size >= freeOf(drive)
        ? cause(
              'freeSpace',
              `Drive ${letterOf(drive)} has ${sizeText(freeOf(drive))} free. The requested size must be more than 0 and less than that, but is ${sizeText(size)}.`,
          )
        : undefined;

/** A new partition at the end of a drive, from the drive's free space. @param {string} sizeArg @param {string} kindArg @param {string} labelArg */
const newAtEnd = (sizeArg, kindArg, labelArg) =>
    firstOf(
        changeableDrive,
        (call) => spaceToGive(call, call.bytes(sizeArg)),
        ({ drive, args }) => {
            const begin = alignedUp(endOf(drive) - BigInt(args[sizeArg]));
            return (
                newVolumeCause(args[kindArg], endOf(drive) - begin, 0n, args[labelArg]) ??
                sizeCause(kindOf(drive), begin - startOf(drive), 0n)
            );
        },
        (call) => {
            const entries = call.entries(call.disk);
            const after = partitionAfter(entries, entries.indexOf(call.drive));
            return kindBetween(call.disk, entries, call.drive, after) ? undefined : tableFull(call.disk);
        },
        letterLeft,
    );

export const split = newAtEnd('newPartitionCapacity', 'newPartitionFileSystem', 'newPartitionLabel');
export const allocateNew = newAtEnd('partitionCapacity', 'fileSystem', 'label');

/** The unallocated region of a new partition, as the service chooses it. @param {Call} call */
function regionOf(call) {
    const regions = call.entries(call.disk).filter((p) => p.isUnallocated);
    const index = Number(call.args.unallocatedIndex);
    const first = regions.findIndex((p) => sizeOf(p) >= call.bytes('capacity'));
    return regions[index === -1 ? Math.max(first, 0) : index];
}

/** @type {Check} */
function regionFits(call) {
    const { disk, args } = call;
    const entries = call.entries(disk);
    const regions = entries.filter((p) => p.isUnallocated);
    const region = regionOf(call);
    if (!region)
        return cause(
            'noRegion',
            regions.length === 0
                ? `Disk ${disk.diskIndex} has no unallocated region.`
                : `unallocatedIndex ${args.unallocatedIndex} does not exist: the highest on disk ${disk.diskIndex} is ${regions.length - 1}.`,
        );
    const capacity = call.bytes('capacity');
    if (capacity <= 0n || capacity > sizeOf(region))
        return cause(
            'regionTooSmall',
            `The capacity must be more than 0 and at most ${sizeText(sizeOf(region))}, the size of ${Number(args.unallocatedIndex) === -1 ? 'the first unallocated region' : 'that unallocated region'}, but is ${sizeText(capacity)}. The unallocated regions of disk ${disk.diskIndex}: ${regions.map((p) => sizeText(sizeOf(p))).join(', ')}.`,
        );
    const span = newSpan(disk, entries, region, capacity);
    if (!disk.isGpt && span.end > mbrLimit) return beyondMbr('The new partition');
    return newVolumeCause(args.fileSystem, span.size, 0n, args.label);
}

/** @type {Check} */
function entryLeft(call) {
    const entries = call.entries(call.disk);
    const place = entries.indexOf(regionOf(call));
    return kindBetween(call.disk, entries, partitionBefore(entries, place), partitionAfter(entries, place))
        ? undefined
        : tableFull(call.disk);
}

export const create = firstOf(writableDisk, hasTable, basicDisk, regionFits, entryLeft, letterLeft);

export const merge = firstOf(changeableDrive, (call) => {
    const { drive, disk } = call;
    const other = call.partition('driveLetter2');
    const name = `${call.letter('driveLetter2')}:`;
    if (!other) return cause('absentDrive', `Drive ${name} does not exist.`);
    if (other === drive || other.diskIndex !== drive.diskIndex)
        return cause(
            'otherDisk',
            `${letterOf(drive)} and ${name} must be two drives of the same disk; they are on disk ${drive.diskIndex} and disk ${other.diskIndex}.`,
        );
    const fixed = fixedReason(other);
    if (fixed) return cause('secondDrive', `Drive ${name} cannot be deleted: it ${fixed}.`);
    if (!fileSystemNamed(other.fileSystemType))
        return possibleCause('secondNoFileSystem', `Drive ${name} has no readable file system.`);
    const entries = call.entries(disk);
    if (!areNeighbours(entries, drive, other))
        return cause('notAdjacent', `Drives ${letterOf(drive)} and ${name} are not adjacent: another partition is between them.`);
    const [low, high] = startOf(drive) < startOf(other) ? [drive, other] : [other, drive];
    const end = endOf(low) > endOf(high) ? endOf(low) : endOf(high);
    return sizeCause(kindOf(drive), end - startOf(low), clusterOf(drive));
});

/** The reason why a drive cannot give up its place. @param {PlainRecord} p */
function fixedReason(p) {
    if (isOfRunningSystem(p)) return 'belongs to the running system';
    if (isLocked(p)) return 'is locked by BitLocker';
    if (p.isReadOnly) return 'is read-only';
    return p.isBadPartition ? 'is marked as faulty' : undefined;
}

export const allocate = firstOf(
    changeableDrive,
    (call) => spaceToGive(call, call.bytes('newPartitionCapacity')),
    (call) => {
        const { drive } = call;
        const size = call.bytes('newPartitionCapacity');
        const target = call.partition('targetDriveLetter');
        const name = `${call.letter('targetDriveLetter')}:`;
        if (!target) return cause('absentDrive', `Drive ${name} does not exist.`);
        if (target === drive || target.diskIndex !== drive.diskIndex)
            return cause(
                'otherDisk',
                `The target must be another drive on disk ${drive.diskIndex}; drive ${name} is ${target === drive ? 'the source itself' : `on disk ${target.diskIndex}`}.`,
            );
        if (alignedDown(size) === 0n)
            return cause('oneMebibyte', `The size must be at least 1 MiB (1048576 bytes), but is ${size}.`);
        if (isLocked(target)) return cause('targetNoFileSystem', `Drive ${name} is locked by BitLocker.`);
        if (!fileSystemNamed(target.fileSystemType))
            return possibleCause('targetNoFileSystem', `Drive ${name} has no readable file system.`);
        return givingCause(call, drive, target, alignedDown(size));
    },
);

/** @param {PlainRecord} p */
const isMovable = (p) => p.isUnallocated || (!p.isReadOnly && !p.isBadPartition && !isLocked(p));

/** The first reason why space cannot move from one entry of a disk to another. @param {Call} call @param {PlainRecord} source @param {PlainRecord} target @param {bigint} size @returns {Cause | undefined} */
function givingCause(call, source, target, size) {
    const disk = /** @type {PlainRecord} */ (call.diskOf(source.diskIndex));
    const entries = call.entries(disk);
    const [from, to] = [entries.indexOf(source), entries.indexOf(target)];
    const fixed = entries.slice(Math.min(from, to), Math.max(from, to) + 1).find((p) => !isMovable(p));
    if (fixed)
        return cause(
            'notMovable',
            `A partition of ${sizeText(sizeOf(fixed))} between or at the two drives cannot be moved: it ${fixedReason(fixed)}.`,
        );
    if (!disk.isGpt && givingExceedsMbr(entries, from, to, size)) return beyondMbr('A partition');
    for (const [p, after] of [
        [source, sizeOf(source) - size],
        [target, sizeOf(target) + size],
    ].filter(([p]) => !(/** @type {PlainRecord} */ (p).isUnallocated))) {
        const record = /** @type {PlainRecord} */ (p);
        const kind = fileSystemNamed(record.fileSystemType);
        const found = kind && sizeCause(kind, /** @type {bigint} */ (after), clusterOf(record));
        if (found) return found;
    }
    return undefined;
}

/** @param {PlainRecord} p */
const offer = (p) => alignedDown(p.isUnallocated ? sizeOf(p) : freeOf(p) / 2n);

/** @param {PlainRecord} p */
const canGive = (p) =>
    p.isUnallocated ||
    (!p.isReadOnly &&
        !p.isBadPartition &&
        !isLocked(p) &&
        fileSystemNamed(p.fileSystemType) !== undefined &&
        !p.gptReserved &&
        !p.gptEfi &&
        !p.gptRecovery);

export const smartAdjust = firstOf(changeableDrive, (call) => {
    const { drive, disk } = call;
    const givers = call
        .entries(disk)
        .filter((p) => p !== drive && canGive(p) && offer(p) > 0n && !givingCause(call, p, drive, offer(p)));
    return givers.length > 0
        ? undefined
        : possibleCause('noGiver', `No unallocated region or other drive of disk ${disk.diskIndex} can give space to ${letterOf(drive)}.`);
});

export const changeCluster = firstOf(readableDrive, ({ drive, args }) => {
    const cluster = BigInt(args.newClusterSize);
    if (belowSector(drive, cluster))
        return cause(
            'cluster',
            `newClusterSize is in bytes and must be at least ${sectorOf(drive)}, the size of a sector, but is ${cluster}.`,
        );
    return clusterCause(kindOf(drive), sizeOf(drive), cluster);
});

export const changeLetter = firstOf(
    driveKnown,
    ({ drive }) =>
        drive.isBootPartitionContainer
            ? cause('systemLetter', `The running system needs the letter ${letterOf(drive)}.`)
            : undefined,
    (call) => {
        const letter = call.letter('newDriveLetter');
        const user = call.facts.partitions.find((p) => p.driveLetter.slice(0, 1).toUpperCase() === letter);
        return user
            ? cause('letterInUse', `Letter ${letter}: is already in use by a drive on disk ${user.diskIndex}.`)
            : undefined;
    },
);

export const changeLabel = firstOf(readableDrive, ({ drive, args }) =>
    labelCause(kindOf(drive), args.newLabel),
);

export const setActive = firstOf(writableDrive, ({ drive }) => {
    const reason =
        (drive.isGpt && 'its disk has a GPT') ||
        (drive.isDynamic && 'it is dynamic') ||
        (!drive.isPrimary && 'it is logical') ||
        (drive.isActive && 'it is already active');
    return reason
        ? cause('active', `Only an inactive primary drive of an MBR disk can become active; ${letterOf(drive)} cannot: ${reason}.`)
        : undefined;
});

export const setHidden = firstOf(erasableDrive, ({ drive }) =>
    drive.isHidden ? cause('hidden', `Drive ${letterOf(drive)} is already hidden.`) : undefined,
);

/** @param {boolean} toPrimary @returns {Check} */
const convertEntry = (toPrimary) =>
    firstOf(
        writableDrive,
        ({ drive }) =>
            drive.isGpt || drive.isPrimary === toPrimary
                ? cause(
                      'entryType',
                      drive.isGpt
                          ? `Disk ${drive.diskIndex} has a GPT, without primary and logical partitions.`
                          : `Drive ${letterOf(drive)} is already ${toPrimary ? 'primary' : 'logical'}.`,
                  )
                : undefined,
        basicDisk,
        (call) => (toPrimary ? primaryCause(call) : logicalCause(call)),
    );

/** Logical neighbours of the drive. @param {Call} call */
function logicalNeighbours(call) {
    const entries = call.entries(call.disk);
    const place = entries.indexOf(call.drive);
    return [partitionBefore(entries, place), partitionAfter(entries, place)].filter((p) => p?.isLogical).length;
}

/** @param {Call} call @returns {Cause | undefined} */
function logicalCause(call) {
    const { drive } = call;
    if (drive.isActive || drive.isBootPartitionContainer)
        return cause('startsFrom', `The computer starts from drive ${letterOf(drive)}, so it must stay primary.`);
    return logicalNeighbours(call) > 0 || entryCounts(call.entries(call.disk)).logicals === 0
        ? undefined
        : cause('notNextToLogical', `Drive ${letterOf(drive)} is not adjacent to the other logical drives.`);
}

/** @param {Call} call @returns {Cause | undefined} */
function primaryCause(call) {
    const { drive, disk } = call;
    if (logicalNeighbours(call) === 2)
        return cause('betweenLogical', `Drive ${letterOf(drive)} is between two logical drives.`);
    const others = call.entries(disk).filter((p) => p !== drive);
    return kindBetween(disk, others, undefined, undefined) ? undefined : tableFull(disk);
}

export const toPrimary = convertEntry(true);
export const toLogical = convertEntry(false);
