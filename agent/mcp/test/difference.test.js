import assert from 'node:assert/strict';
import { test } from 'node:test';
import { differences } from '../src/difference.js';
import { loadTable } from '../src/table.js';

const table = loadTable();

/** @typedef {import('../src/types.js').PlainRecord} PlainRecord */

/** @param {'DiskInfo' | 'PartitionInfo'} name @param {PlainRecord} fields @returns {PlainRecord} */
function record(name, fields) {
    const defaults = { bool: false, i32: 0, i64: '0', string: '' };
    const blank = table.records[name].map((f) => [f.name, defaults[/** @type {'bool'} */ (f.type)]]);
    return { ...Object.fromEntries(blank), ...fields };
}

/** @param {number} diskIndex @param {PlainRecord} [fields] */
const disk = (diskIndex, fields = {}) =>
    record('DiskInfo', { diskIndex, serialNumber: `S${diskIndex}`, totalCapacity: '1000', isGpt: true, ...fields });

/** The sizes are in units of one sector. @param {string} letter @param {number} start @param {number} size @param {PlainRecord} [fields] */
const partition = (letter, start, size, fields = {}) =>
    record('PartitionInfo', {
        driveLetter: letter && `${letter}:`,
        label: letter.toLowerCase(),
        startSector: String(start),
        startingOffset: String(512 * start),
        endSector: String(start + size - 1),
        rawCapacity: String(size),
        displayRawCapacity: `${size} B`,
        displayFreeSize: `${size} B`,
        ...fields,
    });

/** @param {number} start @param {number} size @param {PlainRecord} [fields] */
const region = (start, size, fields = {}) => partition('', start, size, { isUnallocated: true, ...fields });

/** @param {PlainRecord[]} before @param {PlainRecord[]} after @param {{ before?: PlainRecord[], after?: PlainRecord[] }} [disks] */
const words = (before, after, disks = {}) =>
    differences(
        { disks: disks.before ?? [disk(0)], partitions: before },
        { disks: disks.after ?? [disk(0)], partitions: after },
    ).map((change) => change.words);

test('EqualInventories_HaveNoDifference', () => {
    const same = () => [partition('C', 0, 100), partition('', 100, 10), partition('', 110, 10), region(120, 50)];
    assert.deepEqual(words(same(), same()), []);
});

test('SmallerPartition_ShowsSizesAndTheRegionThatGrows', () => {
    assert.deepEqual(words([partition('C', 0, 100), region(100, 50)], [partition('C', 0, 60), region(60, 90)]), [
        'C: size 60 B (was 100 B), 60 B free (was 100 B).',
        'Free region (disk 0, after C:): size 90 B (was 50 B); starts at byte 30720 (was 51200); unallocatedIndex 0.',
    ]);
});

test('NewRegion_HasItsIndexAmongTheRegionsOfItsDisk', () => {
    const before = [partition('C', 0, 100), region(100, 50), partition('D', 150, 100), partition('E', 250, 10)];
    const after = [partition('C', 0, 100), region(100, 50), partition('D', 150, 60), region(210, 40), before[3]];
    const found = differences({ disks: [disk(0)], partitions: before }, { disks: [disk(0)], partitions: after });
    assert.deepEqual(
        found.map((change) => [change.words, change.unallocatedIndex]),
        [
            ['D: size 60 B (was 100 B), 60 B free (was 100 B).', undefined],
            ['New: free region of 40 B (disk 0, after D:), unallocatedIndex 1.', 1],
        ],
    );
});

test('NewAndGonePartitions_AreDescribed', () => {
    const fields = { label: 'Music', fileSystemType: 'NTFS' };
    assert.deepEqual(words([partition('G', 0, 100)], [partition('I', 50, 20, fields)]), [
        'New: I: "Music", NTFS, 20 B, 20 B free, disk 0.',
        'Gone: G: "g", 100 B, 100 B free, disk 0.',
    ]);
});

test('PartitionWithANewLetter_IsTheSamePartition', () => {
    assert.deepEqual(words([partition('G', 0, 100, { label: 'x' })], [partition('K', 0, 100, { label: 'x' })]), [
        'G: letter K: (was G:).',
    ]);
    assert.deepEqual(words([partition('G', 0, 100, { label: 'x' })], [partition('', 0, 100, { label: 'x' })]), [
        'G: no letter now.',
    ]);
});

test('ExchangedLetters_AreTwoNewLettersAndNoMove', () => {
    const before = [partition('D', 0, 100, { label: 'one' }), partition('E', 100, 70, { label: 'two' })];
    const after = [partition('E', 0, 100, { label: 'one' }), partition('D', 100, 70, { label: 'two' })];
    assert.deepEqual(words(before, after), ['D: letter E: (was D:).', 'E: letter D: (was E:).']);
});

test('DriveThatGivesSpaceAtItsStart_IsTheSameDrive', () => {
    const before = [partition('C', 0, 100), partition('D', 100, 200)];
    assert.deepEqual(words(before, [partition('C', 0, 150), partition('D', 150, 150)]), [
        'C: size 150 B (was 100 B), 150 B free (was 100 B).',
        'D: size 150 B (was 200 B), 150 B free (was 200 B); starts at byte 76800 (was 51200).',
    ]);
});

test('PartitionWithoutALetterAtTheSamePlace_IsTheSamePartition', () => {
    assert.deepEqual(words([partition('', 8, 100, { label: 'a' })], [partition('', 8, 50, { label: 'b' })]), [
        'Partition "a" without a letter (disk 0, starts at byte 4096): size 50 B (was 100 B), 50 B free (was 100 B); label "b" (was "a").',
    ]);
});

test('EqualPartitionsThatMove_AreNotPairedByChance', () => {
    const before = [partition('', 100, 10), partition('', 110, 10)];
    assert.deepEqual(
        words(before, [partition('', 150, 10), partition('', 160, 10)]).map((line) => line.slice(0, 4)),
        ['New:', 'New:', 'Gone', 'Gone'],
    );
});

test('RegionsThatJoin_AreTheFirstOneWithANewSize', () => {
    const before = [partition('C', 0, 100), region(100, 50), partition('D', 150, 50), region(200, 50)];
    assert.deepEqual(words(before, [partition('C', 0, 100), region(100, 150)]), [
        'Gone: D: "d", 50 B, 50 B free, disk 0.',
        'Free region (disk 0, after C:): size 150 B (was 50 B); unallocatedIndex 0.',
        'Gone: free region of 50 B (disk 0, after D:).',
    ]);
});

test('RegionsThatShrinkAtTheirStart_AreTheSameRegions', () => {
    const before = [region(100, 50), region(200, 50)];
    assert.deepEqual(words(before, [region(110, 40), region(220, 30)]), [
        'Free region (disk 0, before its first partition): size 40 B (was 50 B); starts at byte 56320 (was 51200); unallocatedIndex 0.',
        'Free region (disk 0, before its first partition): size 30 B (was 50 B); starts at byte 112640 (was 102400); unallocatedIndex 1.',
    ]);
});

test('MovedPartitionWithoutALetter_IsRecognisedByItsContent', () => {
    const fields = { label: 'Recovery', fileSystemType: 'NTFS', gptRecovery: true };
    assert.deepEqual(words([partition('', 100, 10, fields)], [partition('', 150, 10, fields)]), [
        'Partition "Recovery" without a letter (disk 0, starts at byte 51200): starts at byte 76800 (was 51200).',
    ]);
});

test('Guid_IdentifiesAPartitionWhateverElseChanges', () => {
    const fields = { partitionGuid: '{1}' };
    assert.deepEqual(words([partition('G', 0, 100, fields)], [partition('K', 20, 50, { ...fields, label: 'new' })]), [
        'G: size 50 B (was 100 B), 50 B free (was 100 B); letter K: (was G:); label "new" (was "g"); starts at byte 10240 (was 0).',
    ]);
});

test('DiskWithANewNumber_IsTheSameDiskWithItsPartitions', () => {
    const disks = { before: [disk(0), disk(1)], after: [disk(0, { serialNumber: 'S1' })] };
    assert.deepEqual(
        words([partition('C', 0, 100), partition('D', 0, 90, { diskIndex: 1 })], [partition('D', 0, 90)], disks),
        [
            'D: disk 0 (was 1).',
            'Gone: C: "c", 100 B, 100 B free, disk 0.',
            'Disk 0: number 0 (was 1).',
            'Gone: disk 0 (, ).',
        ],
    );
});

test('OtherDiskWithTheSameNumberAndSize_IsANewDisk', () => {
    const disks = {
        before: [disk(0, { diskLabel: 'USB', displayTotalCapacity: '1 KB' })],
        after: [disk(0, { diskLabel: 'USB', displayTotalCapacity: '1 KB', serialNumber: 'other' })],
    };
    assert.deepEqual(words([partition('H', 0, 100)], [partition('H', 0, 100)], disks), [
        'New: H: "h", 100 B, 100 B free, disk 0.',
        'Gone: H: "h", 100 B, 100 B free, disk 0.',
        'New: disk 0 (USB, 1 KB).',
        'Gone: disk 0 (USB, 1 KB).',
    ]);
});

test('DisksWithTheSameSerialNumberOrNone_HaveNoDifferenceToThemselves', () => {
    const same = [
        disk(0, { serialNumber: 'same' }),
        disk(1, { serialNumber: 'same' }),
        disk(2, { serialNumber: '' }),
        disk(3, { serialNumber: '' }),
    ];
    const partitions = [0, 1, 2, 3].map((diskIndex) => partition('', 0, 100, { diskIndex }));
    assert.deepEqual(words(partitions, partitions, { before: same, after: same }), []);
});

test('DiskWithoutASerialNumber_IsComparedByNumber', () => {
    const disks = {
        before: [disk(0, { serialNumber: '', isGpt: false, isUninitialized: true })],
        after: [disk(0, { serialNumber: '', totalCapacity: '2000', displayTotalCapacity: '2000 B' })],
    };
    disks.before[0].displayTotalCapacity = '1000 B';
    assert.deepEqual(words([], [], disks), [
        'Disk 0: partition table GPT (was missing); capacity 2000 B (was 1000 B).',
    ]);
});

test('OnlyRegionOfAnInitializedDisk_IsTheSameRegion', () => {
    assert.deepEqual(words([region(0, 100)], [region(34, 33)]), [
        'Free region (disk 0, before its first partition): size 33 B (was 100 B); starts at byte 17408 (was 0); unallocatedIndex 0.',
    ]);
});

test('Flags_AreNamedWhenSetAndWhenCleared', () => {
    const disks = { before: [disk(0, { isOffline: true })], after: [disk(0, { isWriteProtected: true })] };
    assert.deepEqual(words([partition('D', 0, 9, { isActive: true })], [partition('D', 0, 9, { isLogical: true })], disks), [
        'D: no longer active; now logical.',
        'Disk 0: no longer offline; now write-protected.',
    ]);
});

test('UsedSpace_CountsAboveOnePercentOrOnAWatchedDrive', () => {
    const full = (/** @type {number} */ usedSize) => ({
        disks: [disk(0)],
        partitions: [partition('D', 0, 1000, { usedSize: String(usedSize), displayUsedSize: `${usedSize} B` })],
    });
    assert.deepEqual(differences(full(500), full(510)), []);
    assert.equal(differences(full(500), full(511))[0].words, 'D: used space 511 B (was 500 B), 1000 B free.');
    assert.equal(differences(full(500), full(499), (letter) => letter === 'D').length, 1);
    assert.deepEqual(differences(full(500), full(499), (letter) => letter === 'C'), []);
});
