// The answers of the tools that read: lean by default, complete on request, limited in length.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { leanDisk, leanPartition, unallocatedIndices } from '../src/lean.js';
import { maxAnswer, readAnswer } from '../src/reads.js';
import { loadTable } from '../src/table.js';
import { fromWire } from '../src/wire.js';
import { connect, text } from './support/client.js';
import { FakeService, int64, record } from './support/fakeService.js';
import { startHost } from './support/sandbox.js';
import { countTokens } from './support/tokens.js';

const table = loadTable();
const tool = (/** @type {string} */ name) =>
    /** @type {import('../src/types.js').Tool} */ (table.tools.find((one) => one.name === name));

/** @param {'DiskInfo' | 'PartitionInfo'} name @param {object} fields @returns {any} */
const plain = (name, fields) => fromWire(record(name, fields), { record: name }, table);

// The tokens of these answers before lean records: text and structure, of the machine with 24 disks.
const tokensBefore = { ListAllDisks: 5385, GetAllPartitionInfo: 15963 };
// The tokens of the structure alone.
const structureBefore = 14476;

test('ReadsOf24Disks_CostAtMostAThirdOfTheCompleteRecords', async (t) => {
    const host = await startHost(t, { machine: 'server' });
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    const disks = await client.callTool({ name: 'ListAllDisks', arguments: {} });
    assert.equal(/** @type {any} */ (disks.structuredContent).disks.length, 24);
    assert.ok(countTokens(disks) <= tokensBefore.ListAllDisks / 2, `${countTokens(disks)}`);
    const all = await client.callTool({ name: 'GetAllPartitionInfo', arguments: {} });
    assert.equal(/** @type {any} */ (all.structuredContent).partitions.length, 50);
    assert.ok(countTokens(all) <= structureBefore / 3, `${countTokens(all)}`);
});

test('CompleteRecordsOf24Disks_AreStillAvailableInTwoAnswers', async (t) => {
    const host = await startHost(t, { machine: 'server' });
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    const all = await client.callTool({ name: 'GetAllPartitionInfo', arguments: { allFields: true } });
    const { partitions, omitted = 0 } = /** @type {any} */ (all.structuredContent);
    assert.equal(partitions.length + omitted, 50);
    const fields = table.records.PartitionInfo.map((f) => f.name);
    for (const partition of partitions) assert.deepEqual(Object.keys(partition), fields);
    const last = await client.callTool({
        name: 'ListPartitionsOnDisk',
        arguments: { diskIndex: 23, allFields: true },
    });
    assert.deepEqual(Object.keys(/** @type {any} */ (last.structuredContent).partitions[0]), fields);
});

test('LeanDisk_OmitsDisplaySizesAndFalseFlags', () => {
    assert.deepEqual(
        leanDisk(
            plain('DiskInfo', {
                diskLabel: 'NVMe',
                diskIndex: 2,
                partitionCount: 3,
                totalCapacity: int64(1000),
                displayTotalCapacity: '1000 Byte',
                usedSize: int64(400),
                availableSpace: int64(600),
                isGpt: true,
                isSsd: true,
                serialNumber: 'S1',
            }),
        ),
        {
            diskIndex: 2,
            diskLabel: 'NVMe',
            totalCapacity: '1000',
            availableSpace: '600',
            partitionCount: 3,
            serialNumber: 'S1',
            isGpt: true,
            isSsd: true,
        },
    );
});

test('LeanDiskWithoutATable_IsNotCalledMbr', () => {
    const disk = leanDisk(plain('DiskInfo', { isUninitialized: true, isMbr: true }));
    assert.deepEqual([disk.isUninitialized, disk.isMbr], [true, undefined]);
    assert.equal(leanDisk(plain('DiskInfo', { isMbr: true })).isMbr, true);
});

test('LeanPartition_ContainsSizesStartAndSetFlags', () => {
    const c = {
        diskIndex: 1,
        driveLetter: 'C:',
        label: 'System',
        fileSystemType: 'NTFS',
        rawCapacity: int64(100),
        usedSize: int64(40),
        freeSize: int64(60),
        startingOffset: int64(1048576),
        displayRawCapacity: '100 Byte',
        isCurrentBootPartition: true,
        isPrimary: true,
        isGpt: true,
        bitlockerState: 'unencrypted',
        partitionGuid: '{1}',
    };
    const lean = {
        diskIndex: 1,
        rawCapacity: '100',
        usedSize: '40',
        freeSize: '60',
        startingOffset: '1048576',
        driveLetter: 'C:',
        label: 'System',
        fileSystemType: 'NTFS',
        isCurrentBootPartition: true,
    };
    assert.deepEqual(leanPartition(plain('PartitionInfo', c)), lean);
    const locked = { ...c, isBitlockerEncrypted: true, bitlockerState: 'encryption not unlocked' };
    assert.deepEqual(leanPartition(plain('PartitionInfo', locked)), {
        ...lean,
        isBitlockerEncrypted: true,
        bitlockerState: 'encryption not unlocked',
    });
    const without = leanPartition(plain('PartitionInfo', { ...c, driveLetter: '*', label: '' }));
    assert.deepEqual([without.driveLetter, without.label], [undefined, undefined]);
    const dynamic = leanPartition(
        plain('PartitionInfo', { ...c, isDynamic: true, dynamicVolumeType: 'SPAN', dynamicVolumeSize: int64(200) }),
    );
    assert.deepEqual([dynamic.dynamicVolumeType, dynamic.dynamicVolumeSize], ['SPAN', '200']);
});

test('LeanRegion_ContainsItsIndexAndStart', () => {
    const region = plain('PartitionInfo', {
        diskIndex: 3,
        isUnallocated: true,
        rawCapacity: int64(10),
        startingOffset: int64(90),
    });
    assert.deepEqual(leanPartition(region, 1), {
        diskIndex: 3,
        isUnallocated: true,
        rawCapacity: '10',
        startingOffset: '90',
        unallocatedIndex: 1,
    });
});

test('UnallocatedIndices_CountTheRegionsOfEachDisk', () => {
    const entry = (/** @type {number} */ diskIndex, isUnallocated = true) => ({ diskIndex, isUnallocated });
    assert.deepEqual(
        unallocatedIndices([entry(0), entry(0, false), entry(0), entry(1), entry(0)]),
        [0, undefined, 1, 0, 2],
    );
});

test('TextAndStructure_BothContainIndexStartSerialNumberAndFreeSpace', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    service.answer.ListAllDisks = [
        record('DiskInfo', { diskIndex: 0, serialNumber: 'SN42', availableSpace: int64(5), displayAvailableSpace: '5 Byte' }),
    ];
    const at = (/** @type {number} */ start) => ({ isUnallocated: true, startingOffset: int64(start) });
    service.answer.ListPartitionsOnDisk = [
        record('PartitionInfo', { driveLetter: 'C', freeSize: int64(7), displayFreeSize: '7 Byte', startingOffset: int64(512) }),
        record('PartitionInfo', at(1024)),
        record('PartitionInfo', at(4096)),
    ];
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const disks = await client.callTool({ name: 'ListAllDisks', arguments: {} });
    assert.match(text(disks), /5 bytes unused \(10\.00 GB unallocated\), serial "SN42"/);
    const [disk] = /** @type {any} */ (disks.structuredContent).disks;
    assert.deepEqual([disk.serialNumber, disk.availableSpace], ['SN42', '5']);
    const read = await client.callTool({ name: 'ListPartitionsOnDisk', arguments: { diskIndex: 0 } });
    assert.match(text(read), /^Disk 0:\n  C: .*7 bytes free, start 512\n/);
    assert.match(text(read), /Unallocated: .*start 4096, unallocatedIndex 1$/);
    const { partitions } = /** @type {any} */ (read.structuredContent);
    assert.deepEqual([partitions[0].freeSize, partitions[0].startingOffset], ['7', '512']);
    assert.deepEqual([partitions[2].unallocatedIndex, partitions[2].startingOffset], [1, '4096']);
});

test('ListOfDisks_StatesTheUnallocatedSpaceOfEachDiskAndTheNumberOfEntries', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const disk = (/** @type {number} */ diskIndex, /** @type {object} */ more) =>
        record('DiskInfo', { diskIndex, displayAvailableSpace: '2.76 TB', ...more });
    service.answer.ListAllDisks = [disk(0, { partitionCount: 1 }), disk(1, { partitionCount: 3 })];
    const entry = (/** @type {boolean} */ isUnallocated, /** @type {bigint} */ size) =>
        record('PartitionInfo', { diskIndex: 1, isUnallocated, rawCapacity: int64(size) });
    service.answer.GetAllPartitionInfo = [
        entry(true, 1099511627776n),
        entry(false, 2199023255552n),
        entry(true, 703687441777n),
    ];
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const lines = text(await client.callTool({ name: 'ListAllDisks', arguments: {} })).split('\n');
    assert.match(lines[0], /1 entry, 2\.76 TB unused \(0 bytes unallocated\)/);
    assert.match(lines[1], /3 entries, 2\.76 TB unused \(1\.64 TB unallocated\)/);
});

test('LongInventory_IsLimitedAndReportsWhatItOmitted', () => {
    const many = Array.from({ length: 1000 }, (_, i) =>
        plain('PartitionInfo', { diskIndex: Math.floor(i / 10), driveLetter: 'D', label: `Volume ${i}` }),
    );
    const answer = /** @type {any} */ (readAnswer(tool('GetAllPartitionInfo'), {}, many));
    const { partitions, omitted } = answer.structuredContent;
    assert.ok(omitted > 0);
    assert.equal(partitions.length + omitted, 1000);
    assert.ok(JSON.stringify(answer.structuredContent).length + text(answer).length <= maxAnswer + 5000);
    const lastDisk = partitions.at(-1).diskIndex;
    assert.ok(
        text(answer).endsWith(
            `Omitted: the last ${omitted} of 1000 records, because an answer has at most 60000 characters. The last one shown is on disk ${lastDisk}. Call ListPartitionsOnDisk for one disk.`,
        ),
    );
});

test('ShortInventory_IsNotLimited', () => {
    const answer = /** @type {any} */ (readAnswer(tool('GetAllPartitionInfo'), {}, [plain('PartitionInfo', {})]));
    assert.deepEqual(Object.keys(answer.structuredContent), ['partitions']);
    assert.doesNotMatch(text(answer), /Omitted/);
});

test('LongLabel_IsShortenedInTheStructureUnlessAllFieldsAreRequested', () => {
    const long = plain('PartitionInfo', { driveLetter: 'E', label: 'x'.repeat(200000) });
    const read = (/** @type {any} */ args) =>
        /** @type {any} */ (readAnswer(tool('ListPartitionsOnDisk'), { diskIndex: 0, ...args }, [long])).structuredContent
            .partitions[0].label;
    assert.equal(read({}), `${'x'.repeat(256)}… (the first 256 of 200000 characters)`);
    assert.equal(read({ allFields: true }).length, 200000);
});

test('AllFieldsThatIsNotABoolean_IsRejected', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const answer = await client.callTool({ name: 'ListAllDisks', arguments: { allFields: 'yes' } });
    assert.match(text(answer), /ListAllDisks was not called: allFields must be true or false\./);
});

test('UnknownDriveLetter_ReturnsAnEmptyRecord', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const answer = await client.callTool({ name: 'GetPartitionInfo', arguments: { driveLetter: 'Q' } });
    assert.match(text(answer), /^No partition has the drive letter Q\. The record is empty\.$/);
    assert.deepEqual(answer.structuredContent, { driveLetter: '' });
});
