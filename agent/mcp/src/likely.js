import { partitionOf } from './inventory.js';

/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */

/**
 * Likely causes of a "Task NotValid", each with the test that speaks for it. The service gives no reason, so none of
 * these is certain; the one that fits best stands first.
 * @type {Array<{ holds: (call: { tool: Tool, args: PlainRecord, facts: Facts }) => boolean, cause: string }>}
 */
const causes = [
    {
        holds: ({ tool }) => tool.name === 'RepairRawOrDamagedPartition',
        cause: 'this tool is switched off and always answers so',
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
        cause: 'there is no disk of that number',
    },
    { holds: ({ args, facts }) => letterTaken(args, facts), cause: 'the wanted drive letter is in use' },
    {
        holds: ({ tool, args, facts }) => tool.name === 'CreatePartition' && !regionFits(args, facts),
        cause: 'no unallocated region of that disk (or not the chosen one) is large enough',
    },
    {
        holds: ({ tool, facts }) =>
            needsSpace(tool) &&
            touchedDisks(facts).some((disk) => disk?.isMbr && BigInt(disk.totalCapacity) > mbrReach),
        cause: 'an MBR disk holds no partition beyond its first 2 TiB',
    },
    {
        holds: ({ tool, args, facts }) => shrinksBelowUse(tool, args, facts),
        cause: 'the new size is smaller than what is in use',
    },
    {
        holds: ({ tool, args, facts }) => givesTooMuch(tool, args, facts),
        cause: 'the partition that gives has less free space than asked for',
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
        cause: 'the disk is initialized already',
    },
    {
        holds: ({ facts }) => facts.namedDrives.some((d) => d.partition?.isBitlockerEncrypted),
        cause: 'the partition is encrypted with BitLocker',
    },
    {
        holds: ({ tool }) => tool.args.some((arg) => /fileSystem$/i.test(arg.name)),
        cause: 'the application does not take that file system, label or size',
    },
    {
        holds: () => true,
        cause: 'the application does not allow this now (it may be at work on the same disk, or the state may have changed)',
    },
];

/**
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {Facts} facts
 */
export const likelyCauses = (tool, args, facts) =>
    causes.filter(({ holds }) => holds({ tool, args, facts })).map(({ cause }) => cause);

const mbrReach = 2n ** 41n;

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
const letterTaken = (args, facts) =>
    typeof args.newDriveLetter === 'string' &&
    partitionOf(facts.partitions, args.newDriveLetter.slice(0, 1).toUpperCase()) !== undefined;

/** @param {PlainRecord} args @param {Facts} facts */
function regionFits(args, facts) {
    const regions = facts.partitions.filter((p) => p.isUnallocated && p.diskIndex === Number(args.diskIndex));
    const asked =
        Number(args.unallocatedIndex) < 0
            ? regions
            : regions.slice(Number(args.unallocatedIndex), Number(args.unallocatedIndex) + 1);
    return asked.some((region) => BigInt(region.rawCapacity) >= BigInt(args.capacity));
}

/** @param {Tool} tool @param {PlainRecord} args @param {Facts} facts */
function shrinksBelowUse(tool, args, facts) {
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
function givesTooMuch(tool, args, facts) {
    const size = args.partitionCapacity ?? args.newPartitionCapacity;
    const giver = facts.namedDrives[0]?.partition;
    return (
        /^(AllocateSpace|SplitPartition)/.test(tool.name) &&
        giver !== undefined &&
        BigInt(size) > BigInt(giver.freeSize)
    );
}
