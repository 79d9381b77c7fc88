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
 * Waits for the effect of the last order, whose answer describes it.
 * @param {Conversation} model
 * @param {RegExp} words
 * @returns {Promise<any[]>} the changes
 */
async function effect(model, words) {
    const answer = await model.call('WaitForChange', { seconds: 300 });
    assert.match(answer.text, words);
    return answer.content.changes;
}

/** @type {UserRequest[]} */
export const requests = [
    {
        name: 'RoomForAnotherSystem_ShrinksDataNextToTheFreeSpace',
        goal: 'I want to install another system on the first disk. Make 250 GB of free space for it in one piece.',
        mostCalls: 3,
        calls: async (model) => {
            await model.call('GetAllPartitionInfo');
            await model.call('ResizePartition', { driveLetter: 'D', newPartitionCapacity: String(210 * gib) });
            await effect(model, /D: size 210\.00 GB .*\n- Free region \(disk 0, after D:\): size 255\.46 GB /);
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
        mostCalls: 4,
        calls: async (model) => {
            await model.call('GetAllPartitionInfo');
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
            await effect(model, /C: size 515\.00 GB [^]*D: size 250\.00 GB /);
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
        mostCalls: 4,
        calls: async (model) => {
            await model.call('ListAllDisks');
            await model.call('GetAllPartitionInfo');
            await model.call('CloneOSDataFromPartition', { targetDiskIndex: 4, osDriveLetter: 'C' });
            await effect(model, /New: [^\n]*"Windows", NTFS, [^\n]*, disk 4\./);
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
        mostCalls: 4,
        calls: async (model) => {
            await model.call('ListAllDisks');
            await model.call('GetAllPartitionInfo');
            // The argument's description limits FAT32 to 32 GiB.
            const format = { fileSystem: 'exFAT', label: 'TV', clusterSize: 0, quickFormat: true };
            await model.call('FormatPartition', { driveLetter: 'H', ...format });
            await effect(model, /H: label "TV" \(was "STICK"\); file system exFAT \(was FAT32\)/);
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
        mostCalls: 4,
        calls: async (model) => {
            await model.call('ListAllDisks');
            await model.call('GetAllPartitionInfo');
            await model.call('ConvertDiskToGpt', { diskIndex: 1 });
            const changes = await effect(model, /Disk 1: partition table GPT \(was MBR\)\./);
            assert.ok(changes.every(({ change }) => change === 'changed'));
        },
        check: (end) => {
            assert.equal(end.disks[1].isGpt, true);
            assert.deepEqual(figures(drive(end, 'E')), ['E', 2197949513728, 900 * gib]);
        },
    },
    {
        name: 'HundredGigabytesSplitOff_BecomeANewDriveWithALetter',
        goal: 'Split 100 GB off D: as a new drive "Music". Which letter does it have?',
        mostCalls: 3,
        calls: async (model) => {
            await model.call('GetAllPartitionInfo');
            await model.call('SplitPartition', {
                driveLetter: 'D',
                newPartitionCapacity: String(100 * gib),
                newPartitionFileSystem: 'NTFS',
                newPartitionLabel: 'Music',
            });
            await effect(model, /New: I: "Music", NTFS, 100\.00 GB, /);
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
        mostCalls: 3,
        calls: async (model) => {
            await model.call('GetAllPartitionInfo');
            await model.call('MergePartitions', { driveLetter1: 'F', driveLetter2: 'G' });
            await effect(model, /F: size 180\.00 GB [^]*; used space 80\.00 GB [^]*Gone: G: "Scratch"/);
        },
        check: (end) => {
            assert.deepEqual(figures(drive(end, 'F')), ['F', 180 * gib, 80 * gib]);
            assert.equal(drive(end, 'G'), undefined);
        },
    },
    {
        name: 'OldSsdErasedForSale_HasNoPartitionsAndOthersAreUnchanged',
        goal: 'Erase the old 250 GB SSD completely, I am selling it.',
        mostCalls: 4,
        calls: async (model) => {
            await model.call('ListAllDisks');
            await model.call('GetAllPartitionInfo');
            await model.call('WipeDisk', { diskIndex: 2, eraseCount: 1 });
            await effect(model, /Gone: F: [^]*Gone: G: [^]*Disk 2: partition table missing \(was MBR\)/);
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
        // The tools identify a partition by its letter, which this one does not have.
        mostCalls: 2,
        calls: async (model) => {
            await model.call('GetAllPartitionInfo');
            await model.call('OpenDiskLayoutEditor', { diskIndex: 0 });
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
        mostCalls: 5,
        calls: async (model) => {
            await model.call('ListAllDisks');
            await model.call('InitializeDiskToGpt', { diskIndex: 4 });
            const changes = await effect(model, /Disk 4: partition table GPT \(was missing\)\./);
            const region = changes.find(({ item }) => item === 'region');
            await model.call('CreatePartition', {
                diskIndex: 4,
                capacity: region.size,
                fileSystem: 'NTFS',
                label: 'Work',
                unallocatedIndex: region.unallocatedIndex,
            });
            await effect(model, /New: I: "Work", NTFS, /);
        },
        check: (end) => {
            assert.equal(end.disks[4].isGpt, true);
            const work = entriesOn(end, 4).find((p) => p.label === 'Work');
            assert.deepEqual([work.driveLetter.slice(0, 1), work.fileSystemType], ['I', 'NTFS']);
            assert.ok(Number(work.rawCapacity) > 1860 * gib);
        },
    },
];
