// Ten requests of users, each with the calls of a careful model: it reads before it acts, follows the answers'
// advice, and reports success only after the inventory shows it.
import assert from 'node:assert/strict';

/** @import { Conversation, Inventory, UserRequest } from './conversation.js' */

const gib = 1024 ** 3;

/** @param {Inventory} inventory @param {string} letter @returns {any} */
const drive = ({ partitions }, letter) => partitions.find((p) => p.driveLetter.startsWith(letter));

/** @param {Inventory} inventory @param {number} index @returns {any[]} */
const entriesOn = ({ partitions }, index) => partitions.filter((p) => p.diskIndex === index);

/** The partition with its letter, size and used space. @param {any} p */
const figures = (p) => [p.driveLetter.slice(0, 1), Number(p.rawCapacity), Number(p.usedSize)];

/** An empty SSD as disk 4. @param {any} machine @param {number} size @param {object} [keys] */
const addDisk = (machine, size, keys = {}) =>
    machine.disks.push({
        diskIndex: 4,
        size,
        diskInterface: 'NVMe',
        isSSD: true,
        isGPT: false,
        isUnInitialize: true,
        serialNO: 'NEWDISK4',
        partitions: [{ unallocated: true, startSector: 0, size }],
        ...keys,
    });

/**
 * Repeats the reads until the effect shows.
 * @param {Conversation} model
 * @param {Array<[name: string, args: Record<string, any>]>} reads
 * @param {(...answers: any[]) => boolean} shown
 */
async function untilShown(model, reads, shown) {
    const end = performance.now() + 120000;
    for (;;) {
        const answers = [];
        for (const [name, args] of reads) answers.push((await model.call(name, args)).content);
        if (shown(...answers)) return answers;
        if (performance.now() > end) assert.fail(`The effect does not show: ${JSON.stringify(answers)}`);
    }
}

/** @param {string} letter @returns {[string, { driveLetter: string }]} */
const driveRead = (letter) => ['GetPartitionInfo', { driveLetter: letter }];
/** @param {number} index @returns {[string, { diskIndex: number }]} */
const diskRead = (index) => ['ListPartitionsOnDisk', { diskIndex: index }];

/** @param {Conversation} model @param {number} [index] */
async function readDisk(model, index) {
    await model.call('ListAllDisks');
    if (index !== undefined) await model.call(...diskRead(index));
}

/** @type {UserRequest[]} */
export const requests = [
    {
        name: 'RoomForAnotherSystem_ShrinksDataNextToTheFreeSpace',
        goal: 'I want to install another system on the first disk. Make 250 GB of free space for it in one piece.',
        calls: async (model) => {
            await readDisk(model, 0);
            await model.call('ResizePartition', { driveLetter: 'D', newPartitionCapacity: String(210 * gib) });
            await untilShown(model, [driveRead('D')], (d) => Number(d.rawCapacity) === 210 * gib);
            await model.call(...diskRead(0));
        },
        check: (end) => {
            const free = entriesOn(end, 0).filter((p) => p.isUnallocated);
            assert.ok(free.some((p) => Number(p.rawCapacity) >= 250 * gib));
            assert.deepEqual(figures(drive(end, 'D')), ['D', 210 * gib, 120 * gib]);
            assert.deepEqual(figures(drive(end, 'C')), ['C', 465 * gib, 210 * gib]);
        },
    },
    {
        name: 'FullSystemDrive_GetsSpaceFromTheNextDrive',
        goal: 'C: is full. Give it 50 GB more; D: has plenty.',
        change: (machine) => (machine.disks[0].partitions[2].usedSize = 463 * gib),
        calls: async (model) => {
            await readDisk(model, 0);
            // No free space follows C:, so the first idea is rejected.
            const direct = await model.call('ResizePartitionRelative', {
                driveLetter: 'C',
                sizeAdjustment: String(50 * gib),
            });
            assert.ok(direct.isError);
            await model.call('AllocateSpaceFromPartitionToPartition', {
                sourceDriveLetter: 'D',
                targetDriveLetter: 'C',
                newPartitionCapacity: String(50 * gib),
            });
            await untilShown(
                model,
                [driveRead('D'), driveRead('C')],
                (d, c) => Number(d.rawCapacity) === 250 * gib && Number(c.rawCapacity) === 515 * gib,
            );
        },
        check: (end) => {
            assert.deepEqual(figures(drive(end, 'C')), ['C', 515 * gib, 463 * gib]);
            assert.deepEqual(figures(drive(end, 'D')), ['D', 250 * gib, 120 * gib]);
        },
    },
    {
        name: 'SystemToTheNewSsd_IsClonedWithItsData',
        goal: 'I bought a new SSD. Move my system to it.',
        change: (machine) => addDisk(machine, 1000204886016),
        hostArgs: ['--start-guides'],
        groups: ['clone'],
        calls: async (model) => {
            await readDisk(model, 0);
            await model.call(...diskRead(4));
            await model.call('CloneOSDataFromPartition', { targetDiskIndex: 4, osDriveLetter: 'C' });
            await untilShown(model, [diskRead(4)], ({ partitions }) => partitions.length > 2);
        },
        check: (end) => {
            const copy = entriesOn(end, 4).find((p) => p.label === 'Windows');
            assert.equal(Number(copy.usedSize), 210 * gib);
            assert.deepEqual(figures(drive(end, 'C')), ['C', 465 * gib, 210 * gib]);
            assert.deepEqual(figures(drive(end, 'D')), ['D', 300 * gib, 120 * gib]);
        },
    },
    {
        name: 'StickForTheTelevision_IsFormattedWithAFileSystemForItsSize',
        goal: 'Prepare the USB stick for my television. Nothing on it matters. FAT32 or exFAT will do.',
        calls: async (model) => {
            await readDisk(model, 3);
            const format = { driveLetter: 'H', label: 'TV', clusterSize: 0, quickFormat: true };
            // FAT32 can be created up to 32 GiB only.
            const first = await model.call('FormatPartition', { ...format, fileSystem: 'FAT32' });
            assert.ok(first.isError);
            await model.call('FormatPartition', { ...format, fileSystem: 'exFAT' });
            await untilShown(model, [driveRead('H')], (h) => h.label === 'TV');
        },
        check: (end) => {
            const { label, fileSystemType, usedSize } = drive(end, 'H');
            assert.deepEqual([label, fileSystemType], ['TV', 'exFAT']);
            assert.ok(Number(usedSize) < gib);
        },
    },
    {
        name: 'DiskToGpt_KeepsItsPartitionsAndData',
        goal: 'Convert disk 1 to GPT without losing my archive.',
        hostArgs: ['--start-guides'],
        groups: ['convert'],
        calls: async (model) => {
            await readDisk(model, 1);
            await model.call('ConvertDiskToGpt', { diskIndex: 1 });
            await untilShown(model, [['ListAllDisks', {}]], ({ disks }) => disks[1].isGpt === true);
            await model.call('ListAllDisks');
        },
        check: (end) => {
            assert.equal(end.disks[1].isGpt, true);
            assert.deepEqual(figures(drive(end, 'E')), ['E', 2197949513728, 900 * gib]);
        },
    },
    {
        name: 'HundredGigabytesSplitOff_BecomeANewDriveWithALetter',
        goal: 'Split 100 GB off D: as a new drive "Music". Which letter does it have?',
        calls: async (model) => {
            await readDisk(model, 0);
            await model.call('SplitPartition', {
                driveLetter: 'D',
                newPartitionCapacity: String(100 * gib),
                newPartitionFileSystem: 'NTFS',
                newPartitionLabel: 'Music',
            });
            await untilShown(model, [driveRead('D')], (d) => Number(d.rawCapacity) <= 201 * gib);
            await model.call(...diskRead(0));
        },
        check: (end) => {
            const music = end.partitions.find((p) => p.label === 'Music');
            assert.deepEqual([music.driveLetter.slice(0, 1), music.fileSystemType], ['I', 'NTFS']);
            assert.ok(Math.abs(Number(music.rawCapacity) - 100 * gib) <= 1024 ** 2);
            assert.equal(Number(drive(end, 'D').usedSize), 120 * gib);
        },
    },
    {
        name: 'TwoDrivesMerged_KeepTheDataOfBoth',
        goal: 'Merge F: and G: into F:.',
        calls: async (model) => {
            await readDisk(model, 2);
            await model.call('MergePartitions', { driveLetter1: 'F', driveLetter2: 'G' });
            // The answer for a letter that is gone remains the last record, so only F: shows the effect.
            await untilShown(
                model,
                [driveRead('F'), driveRead('G')],
                (f) => Number(f.rawCapacity) === 180 * gib,
            );
            await model.call(...diskRead(2));
        },
        check: (end) => {
            assert.deepEqual(figures(drive(end, 'F')), ['F', 180 * gib, 80 * gib]);
            assert.equal(drive(end, 'G'), undefined);
        },
    },
    {
        name: 'OldSsdErasedForSale_HasNoPartitionsAndOthersAreUnchanged',
        goal: 'Erase the old 250 GB SSD completely, I am selling it.',
        calls: async (model) => {
            await readDisk(model, 2);
            await model.call('WipeDisk', { diskIndex: 2, eraseCount: 1 });
            await untilShown(model, [diskRead(2)], ({ partitions }) =>
                partitions.every((/** @type {any} */ p) => p.isUnallocated),
            );
            await model.call('ListAllDisks');
        },
        check: (end) => {
            assert.ok(entriesOn(end, 2).every((p) => p.isUnallocated));
            assert.equal(end.disks[2].isUninitialized, true);
            assert.deepEqual(
                ['C', 'D', 'E', 'H'].map((letter) => drive(end, letter) !== undefined),
                [true, true, true, true],
            );
        },
    },
    {
        name: 'RecoveryPartitionRemoved_IsLeftToTheUserInTheLayoutEditor',
        goal: 'Remove the recovery partition from the first disk.',
        groups: ['guides'],
        // Partitions without a letter cannot be deleted by a tool.
        calls: async (model) => {
            await readDisk(model, 0);
            const direct = await model.call('DeletePartition', { driveLetter: '' });
            assert.ok(direct.isError);
            await model.call('OpenDiskLayoutEditor', { diskIndex: 0 });
            await model.call(...diskRead(0));
        },
        check: (end, model) => {
            assert.ok(model.hostLog.some((line) => line.includes('order OpenDiskLayoutEditor')));
            assert.ok(!model.hostLog.some((line) => line.includes('order DeletePartition')));
            assert.equal(entriesOn(end, 0).length, 6);
        },
    },
    {
        name: 'NewDisk_GetsATableAndOneDrive',
        goal: 'Set up the new disk with one NTFS drive "Work".',
        change: (machine) => addDisk(machine, 2000398934016),
        calls: async (model) => {
            await readDisk(model, 4);
            await model.call('InitializeDiskToGpt', { diskIndex: 4 });
            await untilShown(model, [['ListAllDisks', {}]], ({ disks }) => !disks[4].isUninitialized);
            const { partitions } = (await model.call(...diskRead(4))).content;
            await model.call('CreatePartition', {
                diskIndex: 4,
                capacity: partitions.find((/** @type {any} */ p) => p.isUnallocated).rawCapacity,
                fileSystem: 'NTFS',
                label: 'Work',
                unallocatedIndex: -1,
            });
            await untilShown(model, [diskRead(4)], ({ partitions: all }) =>
                all.some((/** @type {any} */ p) => p.label === 'Work'),
            );
        },
        check: (end) => {
            assert.equal(end.disks[4].isGpt, true);
            const work = entriesOn(end, 4).find((p) => p.label === 'Work');
            assert.deepEqual([work.driveLetter.slice(0, 1), work.fileSystemType], ['I', 'NTFS']);
            assert.ok(Number(work.rawCapacity) > 1860 * gib);
        },
    },
];
