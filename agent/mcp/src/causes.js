import { partitionOf } from './inventory.js';

/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */

/**
 * Possible causes of TASK_NOT_VALID with their conditions, the most likely first. The service does not report a reason.
 * @type {Array<{ holds: (call: { tool: Tool, args: PlainRecord, facts: Facts }) => boolean, cause: string }>}
 */
const causes = [
    {
        holds: ({ tool }) => tool.name === 'RepairRawOrDamagedPartition',
        cause: 'this tool is disabled and always returns this answer',
    },
    {
        holds: ({ facts }) => facts.disks.length === 0,
        cause: 'the inventory is empty: the application may still be starting',
    },
    {
        holds: ({ facts }) => facts.namedDrives.some((d) => d.letter && !d.partition),
        cause: 'no partition has that drive letter',
    },
    {
        holds: ({ facts }) => facts.namedDisks.some((d) => d.index >= 0 && !d.disk),
        cause: 'no disk has that number',
    },
    { holds: ({ args, facts }) => letterInUse(args, facts), cause: 'the new drive letter is already in use' },
    {
        holds: ({ tool, args, facts }) => tool.name === 'CreatePartition' && !regionFits(args, facts),
        cause: 'no unallocated region of that disk (or not the chosen one) is large enough',
    },
    {
        holds: ({ tool, facts }) =>
            needsSpace(tool) &&
            touchedDisks(facts).some((disk) => disk?.isMbr && BigInt(disk.totalCapacity) > mbrLimit),
        cause: 'an MBR disk cannot contain a partition beyond its first 2 TiB',
    },
    {
        holds: ({ tool, args, facts }) => shrinksBelowUsedSpace(tool, args, facts),
        cause: 'the new size is smaller than the used space',
    },
    {
        holds: ({ tool, args, facts }) => exceedsFreeSpace(tool, args, facts),
        cause: 'the source partition has less free space than requested',
    },
    {
        holds: ({ facts }) =>
            facts.namedDrives.some(
                (d) => d.partition?.isCurrentBootPartition || d.partition?.isCurrentSystemPartition,
            ),
        cause: 'the partition belongs to the running system',
    },
    { holds: ({ facts }) => diskIs(facts, 'isOffline'), cause: 'the disk is offline' },
    {
        holds: ({ facts }) =>
            diskIs(facts, 'isReadOnly') ||
            diskIs(facts, 'isWriteProtected') ||
            facts.namedDrives.some((d) => d.partition?.isReadOnly),
        cause: 'the disk or partition is read-only or write-protected',
    },
    { holds: ({ facts }) => diskIs(facts, 'isDynamic'), cause: 'the disk is dynamic' },
    { holds: ({ facts }) => diskIs(facts, 'isBadDisk'), cause: 'the disk is marked bad' },
    {
        holds: ({ tool, facts }) => !tool.name.startsWith('Initialize') && diskIs(facts, 'isUninitialized'),
        cause: 'the disk is not initialized',
    },
    {
        holds: ({ tool, facts }) =>
            tool.name.startsWith('Initialize') &&
            facts.namedDisks.some((d) => d.disk && !d.disk.isUninitialized),
        cause: 'the disk is already initialized',
    },
    {
        holds: ({ facts }) => facts.namedDrives.some((d) => d.partition?.isBitlockerEncrypted),
        cause: 'the partition is encrypted with BitLocker',
    },
    {
        holds: ({ tool }) => tool.args.some((arg) => /fileSystem$/i.test(arg.name)),
        cause: 'the application does not accept that file system, label or size',
    },
    {
        holds: () => true,
        cause: 'the application does not allow this now (it may be using the same disk, or the state may have changed)',
    },
];

/**
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {Facts} facts
 */
export const possibleCauses = (tool, args, facts) =>
    causes.filter(({ holds }) => holds({ tool, args, facts })).map(({ cause }) => cause);

const mbrLimit = 2n ** 41n;

/** @param {Tool} tool */
const needsSpace = (tool) =>
    /^(CreatePartition|ResizePartition|MergePartitions|AllocateSpace)/.test(tool.name);

/** The disks that a call touches, by number or through a drive. @param {Facts} facts */
const touchedDisks = (facts) => [
    ...facts.namedDisks.map((d) => d.disk),
    ...facts.namedDrives.map((d) => facts.disks.find((disk) => disk.diskIndex === d.partition?.diskIndex)),
];

/** @param {Facts} facts @param {string} flag */
const diskIs = (facts, flag) => touchedDisks(facts).some((disk) => disk?.[flag] === true);

/** @param {PlainRecord} args @param {Facts} facts */
const letterInUse = (args, facts) =>
    typeof args.newDriveLetter === 'string' &&
    partitionOf(facts.partitions, args.newDriveLetter.slice(0, 1).toUpperCase()) !== undefined;

/** @param {PlainRecord} args @param {Facts} facts */
function regionFits(args, facts) {
    const regions = facts.partitions.filter((p) => p.isUnallocated && p.diskIndex === Number(args.diskIndex));
    const candidates =
        Number(args.unallocatedIndex) < 0
            ? regions
            : regions.slice(Number(args.unallocatedIndex), Number(args.unallocatedIndex) + 1);
    return candidates.some((region) => BigInt(region.rawCapacity) >= BigInt(args.capacity));
}

/** @param {Tool} tool @param {PlainRecord} args @param {Facts} facts */
function shrinksBelowUsedSpace(tool, args, facts) {
    const partition = facts.namedDrives[0]?.partition;
    if (!partition) return false;
    if (tool.name === 'ResizePartition')
        return BigInt(args.newPartitionCapacity) < BigInt(partition.usedSize);
    return (
        tool.name === 'ResizePartitionRelative' &&
        BigInt(partition.rawCapacity) + BigInt(args.sizeAdjustment) < BigInt(partition.usedSize)
    );
}

/** @param {Tool} tool @param {PlainRecord} args @param {Facts} facts */
function exceedsFreeSpace(tool, args, facts) {
    const size = args.partitionCapacity ?? args.newPartitionCapacity;
    const source = facts.namedDrives[0]?.partition;
    return (
        /^(AllocateSpace|SplitPartition)/.test(tool.name) &&
        source !== undefined &&
        BigInt(size) > BigInt(source.freeSize)
    );
}
