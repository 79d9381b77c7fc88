// Checks of the tools that open a guide or page: the reasons for which the guide could not continue.
import { cause, firstOf, letterOf, possibleCause, sizeText } from './call.js';
import {
    basicDisk,
    diskExists,
    diskKnown,
    driveExists,
    driveKnown,
    driveObstacles,
    hasTable,
    isLocked,
    isOfRunningSystem,
    newVolumeCause,
    obstacles,
    systemOn,
    writableDisk,
} from './conditions.js';
import { fileSystemNamed } from './fileSystems.js';
import { endOf, gptEntries, mbrLimit, sectorOf, sizeOf, startOf, usableEnd } from './layout.js';

/** @import { PlainRecord } from '../types.js' */
/** @import { Call, Cause, Check } from './call.js' */

/**
 * A disk, or an entry of a disk, that a clone reads or overwrites.
 * @typedef {{ disk: PlainRecord, entry?: PlainRecord }} Place
 */

/** @param {Place} place */
const nameOf = ({ disk, entry }) =>
    entry?.driveLetter && !entry.isUnallocated ? `drive ${letterOf(entry)}` : `disk ${disk.diskIndex}`;

/** @param {Call} call @param {Place} source @param {Place} target @returns {Cause | undefined} */
function cloneCause(call, source, target) {
    if (source.disk.isOffline || source.disk.isBadDisk)
        return cause('sourceUnreadable', `Disk ${source.disk.diskIndex} cannot be read: it is ${obstacles(source.disk).join(', ')}.`);
    if (!source.entry && source.disk.isUninitialized)
        return cause('sourceEmpty', `Disk ${source.disk.diskIndex} has no partition table, so it contains no data to clone.`);
    if (source.disk === target.disk && (!target.entry || source.entry === target.entry))
        return cause('ontoItself', `${capital(nameOf(source))} cannot be cloned onto itself.`);
    const found = obstacles(target.disk);
    if (found.length > 0)
        return cause('targetNotWritable', `Disk ${target.disk.diskIndex} cannot be written to: it is ${found.join(', ')}.`);
    if (target.entry ? isOfRunningSystem(target.entry) : systemOn(call, target.disk))
        return cause('targetSystem', `The target, ${nameOf(target)}, contains the running system.`);
    const data = BigInt(source.entry ? source.entry.usedSize : source.disk.usedSize);
    const room = target.entry ? sizeOf(target.entry) : BigInt(target.disk.totalCapacity);
    return room < data
        ? cause('targetTooSmall', `The target has ${sizeText(room)}, but the source contains ${sizeText(data)} of data.`)
        : undefined;
}

/** @param {string} text */
const capital = (text) => text.slice(0, 1).toUpperCase() + text.slice(1);

/** @param {Call} call @param {string} name a disk argument @returns {Place} */
const diskPlace = (call, name) => ({
    disk: /** @type {PlainRecord} */ (call.diskOf(Number(call.args[name]))),
});

/** @param {Call} call @param {PlainRecord} entry @returns {Place} */
const entryPlace = (call, entry) => ({
    disk: /** @type {PlainRecord} */ (call.diskOf(entry.diskIndex)),
    entry,
});

/** @param {Call} call @param {string} name a drive argument @returns {Place} */
const drivePlace = (call, name) => entryPlace(call, /** @type {PlainRecord} */ (call.partition(name)));

export const cloneDisk = firstOf(diskExists('sourceDiskIndex'), diskExists('destDiskIndex'), (call) =>
    cloneCause(call, diskPlace(call, 'sourceDiskIndex'), diskPlace(call, 'destDiskIndex')),
);

export const cloneCurrent = firstOf(diskExists('targetDiskIndex'), (call) => {
    const system = call.facts.partitions.find((p) => p.isCurrentBootPartition && !p.isUnallocated);
    return system && cloneCause(call, entryPlace(call, system), diskPlace(call, 'targetDiskIndex'));
});

/** True if the guide asks the user for the disk of the running system. @param {Call} call */
const choosesSystem = (call) => Number(call.args.osDiskIndex) === -1;

export const cloneSystemDisk = firstOf(
    diskExists('osDiskIndex'),
    (call) => {
        if (choosesSystem(call)) return undefined;
        const { disk } = diskPlace(call, 'osDiskIndex');
        return call.entries(disk).some((p) => p.isBootPartitionContainer)
            ? undefined
            : cause('notSystemDisk', `Disk ${disk.diskIndex} does not contain the running system.`);
    },
    diskExists('targetDiskIndex'),
    (call) =>
        choosesSystem(call)
            ? undefined
            : cloneCause(call, diskPlace(call, 'osDiskIndex'), diskPlace(call, 'targetDiskIndex')),
);

export const cloneSystemDrive = firstOf(diskExists('targetDiskIndex'), driveExists('osDriveLetter'), (call) =>
    cloneCause(call, drivePlace(call, 'osDriveLetter'), diskPlace(call, 'targetDiskIndex')),
);

/** The entry that the clone of a partition to a disk overwrites: the first later region, otherwise the first entry. @param {PlainRecord[]} entries */
const targetEntry = (entries) => entries.slice(1).find((p) => p.isUnallocated) ?? entries[0];

/** @param {Place} source @returns {Cause | undefined} */
const lockedSource = ({ entry }) =>
    entry && isLocked(entry)
        ? cause('sourceLocked', `Drive ${letterOf(entry)} is locked by BitLocker. The user can unlock it.`)
        : undefined;

export const clonePartition = firstOf(
    driveExists('sourceDriveLetter'),
    driveExists('destDriveLetter'),
    (call) => {
        const source = drivePlace(call, 'sourceDriveLetter');
        return cloneCause(call, source, drivePlace(call, 'destDriveLetter')) ?? lockedSource(source);
    },
);

export const clonePartitionToDisk = firstOf(
    driveExists('sourceDriveLetter'),
    diskExists('destDiskIndex'),
    (call) => {
        const source = drivePlace(call, 'sourceDriveLetter');
        const target = diskPlace(call, 'destDiskIndex');
        if (source.entry?.isBootPartitionContainer) return cloneCause(call, source, target);
        const entry = targetEntry(call.entries(target.disk));
        if (!entry)
            return cause('noPlace', `Disk ${target.disk.diskIndex} has no partition or unallocated region.`);
        return cloneCause(call, source, { ...target, entry }) ?? lockedSource(source);
    },
);

/** @type {Check} */
const tableRoom = (call) => {
    const { disk } = call;
    const partitions = call.entries(disk).filter((p) => !p.isUnallocated);
    const end = usableEnd({ ...disk, isGpt: true }, call.entries(disk));
    const fits = partitions.every((p) => startOf(p) / sectorOf(p) > 33n && endOf(p) <= end);
    return fits && partitions.length <= gptEntries
        ? undefined
        : cause('noTableRoom', `Disk ${disk.diskIndex} has no room for a GPT: it needs the first 34 and the last 33 sectors.`);
};

/** @param {string} check @param {(disk: PlainRecord) => boolean} holds @param {string} kind @returns {Check} */
const already = (check, holds, kind) => ({ disk }) =>
    holds(disk) ? cause(check, `Disk ${disk.diskIndex} is already ${kind}.`) : undefined;

export const toGpt = firstOf(
    writableDisk,
    hasTable,
    basicDisk,
    already('alreadyGpt', (disk) => disk.isGpt, 'a GPT disk'),
    tableRoom,
);

export const toMbr = firstOf(
    writableDisk,
    hasTable,
    basicDisk,
    already('alreadyMbr', (disk) => !disk.isGpt, 'an MBR disk'),
    (call) => {
        const beyond = call.entries(call.disk).find((p) => !p.isUnallocated && endOf(p) > mbrLimit);
        return beyond
            ? cause('beyondMbr', `A partition ends at ${sizeText(endOf(beyond))} of the disk; an MBR partition table addresses 2 TiB.`)
            : undefined;
    },
);

export const toBasic = firstOf(
    writableDisk,
    hasTable,
    already('alreadyBasic', (disk) => !disk.isDynamic, 'a basic disk'),
    (call) => {
        const spanning = ['SPAN', 'STRIPE', 'MIRROR', 'RAID'];
        const volume = call
            .entries(call.disk)
            .find((p) => !p.isUnallocated && spanning.includes(p.dynamicVolumeType));
        return volume ? cause('spans', `A volume of the type ${volume.dynamicVolumeType} spans several disks.`) : undefined;
    },
);

export const toDynamic = firstOf(
    writableDisk,
    hasTable,
    already('alreadyDynamic', (disk) => disk.isDynamic, 'a dynamic disk'),
    ({ disk }) =>
        disk.isUsb || disk.isRemovable
            ? cause('usbDynamic', `Disk ${disk.diskIndex} is a USB disk, which cannot be dynamic.`)
            : undefined,
);

/** @param {string} name of the new file system @returns {Check} */
export const toFileSystem = (name) =>
    firstOf(driveKnown, (call) => {
        const { drive } = call;
        const reasons = [...driveObstacles(call, drive), ...(isLocked(drive) ? ['it is locked by BitLocker'] : [])];
        if (reasons.length > 0)
            return cause('driveNotWritable', `Drive ${letterOf(drive)} cannot be written to: ${reasons.join(', ')}.`);
        const present = fileSystemNamed(drive.fileSystemType);
        if (present?.name === name)
            return cause('sameFileSystem', `Drive ${letterOf(drive)} already has the file system ${name}.`);
        if (!present)
            return possibleCause('noFileSystem', `Drive ${letterOf(drive)} has no readable file system.`);
        if (drive.isBootPartitionContainer && name !== 'NTFS')
            return cause('systemFileSystem', 'The running system needs its file system.');
        const limit = newVolumeCause(name, sizeOf(drive), 0n, drive.label);
        return limit && { ...limit, check: 'fileSystemUnsuitable' };
    });

/** @param {PlainRecord} disk */
const isUsb = (disk) => (disk.isUsb || disk.isRemovable) && obstacles(disk).length === 0;

/** @param {Call} call @param {PlainRecord | undefined} disk @returns {Cause | undefined} */
function stickCause(call, disk) {
    if (!disk)
        return call.facts.disks.some(isUsb)
            ? undefined
            : possibleCause('usbNeeded', 'The inventory contains no writable USB disk. Ask the user to connect one.');
    if (!isUsb(disk))
        return cause(
            'usbNeeded',
            obstacles(disk).length > 0
                ? `Disk ${disk.diskIndex} cannot be written to: it is ${obstacles(disk).join(', ')}.`
                : `Disk ${disk.diskIndex} is not a USB disk.`,
        );
    return systemOn(call, disk)
        ? cause('runningSystem', `Disk ${disk.diskIndex} contains the running system.`)
        : undefined;
}

export const stickByDisk = firstOf(diskKnown, (call) => stickCause(call, call.diskOf(Number(call.args.diskIndex))));

/** @type {Check} */
export const stickByDrive = (call) => {
    if (call.args.driveLetter === '')
        return possibleCause('usbNeeded', 'driveLetter is empty, so the application has to know the USB disk.');
    return driveKnown(call) ?? stickCause(call, call.disk);
};

/** @type {Check} */
export const readableDisk = firstOf(diskKnown, ({ disk }) =>
    disk.isOffline || disk.isBadDisk
        ? cause('diskUnreadable', `Disk ${disk.diskIndex} cannot be read: it is ${obstacles(disk).join(', ')}.`)
        : undefined,
);

export const health = firstOf(diskKnown, (call) =>
    call.entries(call.disk).length === 0
        ? cause('noEntries', `The inventory contains no partition or unallocated region of disk ${call.disk.diskIndex}.`)
        : undefined,
);

export const rebuildMbr = firstOf(diskKnown, ({ disk }) =>
    disk.isGpt ? cause('gptHasNoMbr', `Disk ${disk.diskIndex} is a GPT disk, without an MBR to rebuild.`) : undefined,
);

export const align = firstOf(diskKnown, ({ disk }) =>
    disk.not4kAligned
        ? undefined
        : possibleCause('aligned', `All partitions of disk ${disk.diskIndex} are aligned to 4 KiB, as far as the application could check.`),
);

export const recoveryKey = firstOf(driveKnown, ({ drive }) =>
    drive.bitlockerState === 'unencrypted'
        ? cause('notEncrypted', `Drive ${letterOf(drive)} is not encrypted with BitLocker.`)
        : undefined,
);

export const scanDisk = firstOf(diskKnown, ({ disk }) =>
    disk.isVirtualDisk ? cause('virtual', `Disk ${disk.diskIndex} is a virtual disk.`) : undefined,
);

export const scanDrive = firstOf(driveKnown, ({ drive, disk }) =>
    disk.isVirtualDisk
        ? possibleCause('virtual', `Drive ${letterOf(drive)} is on the virtual disk ${disk.diskIndex}.`)
        : undefined,
);

/** @type {Check} */
export const disabled = ({ tool }) =>
    cause('disabled', `${tool.name} is disabled: it always returns "Task NotValid" and has no effect.`);
