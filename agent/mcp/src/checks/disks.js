// Checks of the tools that act on a whole disk.
import { Call, cause, firstOf, letterOf, possibleCause, sizeText } from './call.js';
import {
    diskKnown,
    driveKnown,
    driveObstacles,
    erasableDisk,
    isLocked,
    newVolumeCause,
    readableDrive,
    systemOn,
    unusedLetters,
} from './conditions.js';
import { fileSystemNamed } from './fileSystems.js';
import { alignedDown, gptEntries, mbrEntries, mbrLimit, mebibyte, sizeOf, usableEnd } from './layout.js';

/** @import { Argument, PlainRecord } from '../types.js' */
/** @import { Check } from './call.js' */

export const initialize = firstOf(erasableDisk, (call) => {
    const count = call.entries(call.disk).filter((p) => !p.isUnallocated).length;
    return count > 0
        ? cause(
              'hasPartitions',
              `Only a disk without partitions can be initialized. Partitions on disk ${call.disk.diskIndex}: ${count}.`,
          )
        : undefined;
});

/** @type {Check} */
function autoLayout(call) {
    const { disk, args } = call;
    const style = String(args.GptOrMbr).toUpperCase();
    if (style !== 'GPT' && style !== 'MBR')
        return cause('style', 'GptOrMbr must be "GPT" or "MBR".');
    const count = Number(args.partitionCount);
    const limit = style === 'GPT' ? gptEntries : mbrEntries;
    if (count < 1 || count > limit)
        return cause('count', `${style === 'MBR' ? 'An' : 'A'} ${style} partition table holds 1 to ${limit} partitions, not ${count}.`);
    const end = usableEnd({ ...disk, isGpt: style === 'GPT' }, call.entries(disk));
    const limited = style === 'MBR' && end > mbrLimit ? mbrLimit : end;
    const share = alignedDown((limited - mebibyte) / BigInt(count));
    const tooSmall = newVolumeCause('NTFS', share, 0n, '');
    if (tooSmall) return tooSmall;
    const left = unusedLetters(call.facts.partitions.filter((p) => p.diskIndex !== disk.diskIndex)).length;
    return left < count
        ? cause('letters', `${count} partitions need ${count} drive letters, but only ${left} are unused.`)
        : undefined;
}

export const autoCreate = firstOf(erasableDisk, autoLayout);

export const bringOnline = firstOf(diskKnown, ({ disk }) =>
    disk.isOffline ? undefined : cause('online', `Disk ${disk.diskIndex} is already online.`),
);

export const eject = firstOf(driveKnown, (call) => {
    const { drive, disk } = call;
    if (!disk.isUsb && !disk.isRemovable)
        return cause('notUsb', `Drive ${letterOf(drive)} is on disk ${disk.diskIndex}, which is not a USB disk.`);
    return systemOn(call, disk)
        ? cause('runningSystem', `Disk ${disk.diskIndex} contains the running system.`)
        : undefined;
});

/** The drive of the running Windows, to which this tool always applies. @param {Call} call */
const systemDrive = ({ facts }) => facts.partitions.find((p) => p.isCurrentBootPartition && !p.isUnallocated);

/** The readable drives on other disks with room for the data of the system drive. @param {Call} call @param {PlainRecord} source */
const targets = (call, source) =>
    call.facts.partitions.filter(
        (p) =>
            p.diskIndex !== source.diskIndex &&
            !p.isUnallocated &&
            /^[A-Za-z]/.test(p.driveLetter) &&
            !isLocked(p) &&
            fileSystemNamed(p.fileSystemType) !== undefined &&
            driveObstacles(call, p).length === 0,
    );

/** @type {Check} */
export function migrate(call) {
    const source = systemDrive(call);
    if (!source)
        return possibleCause('absentDrive', 'The inventory does not contain the drive of the running Windows.');
    const tool = { ...call.tool, args: [/** @type {Argument} */ ({ name: 'driveLetter', role: 'drive' })] };
    const unreadable = readableDrive(new Call(tool, { driveLetter: source.driveLetter }, call.facts));
    if (unreadable) return unreadable;
    const used = BigInt(source.usedSize);
    const free = targets(call, source).map((p) => sizeOf(p) - BigInt(p.usedSize));
    const most = free.reduce((a, b) => (a > b ? a : b), 0n);
    return most < used || free.length === 0
        ? possibleCause(
              'noRoom',
              `No drive on another disk has room for the ${sizeText(used)} of drive ${letterOf(source)}; the most is ${sizeText(most)} free.`,
          )
        : undefined;
}
