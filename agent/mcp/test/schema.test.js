// The schemas of the arguments: portable, with every limit that a model needs, and the limits that the gateway enforces.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { labelCause } from '../src/checks/conditions.js';
import { fileSystemNamed } from '../src/checks/fileSystems.js';
import { inputSchema, outputSchema } from '../src/schema.js';
import { loadTable } from '../src/table.js';
import { toWire } from '../src/wire.js';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const table = loadTable();
const named = (/** @type {string} */ name) =>
    /** @type {import('../src/types.js').Tool} */ (table.tools.find((tool) => tool.name === name));
const argument = (/** @type {string} */ tool, /** @type {string} */ name) =>
    inputSchema(named(tool)).properties[name];

/** Every object within a schema that is a schema itself. @param {any} schema @returns {any[]} */
function parts(schema) {
    return [
        schema,
        ...Object.values(schema.properties ?? {}).flatMap(parts),
        ...(schema.items ? parts(schema.items) : []),
    ];
}

test('EverySchema_UsesOneTypeAndOnlyPortableKeywords', () => {
    const portable = [
        'type',
        'properties',
        'required',
        'items',
        'description',
        'enum',
        'pattern',
        'minimum',
        'maximum',
        'default',
    ];
    const all = table.tools.flatMap((tool) => [inputSchema(tool), outputSchema(tool, table)].filter(Boolean));
    assert.ok(all.length > table.tools.length);
    for (const part of all.flatMap(parts)) {
        assert.equal(typeof part.type, 'string', JSON.stringify(part));
        assert.deepEqual(
            Object.keys(part).filter((key) => !portable.includes(key)),
            [],
            JSON.stringify(part),
        );
        if (part.enum) assert.equal(part.type, 'string');
        // Some providers do not support lookaround or character classes such as \d.
        // An escaped backslash is a character of its own in every dialect.
        if (part.pattern) assert.doesNotMatch(part.pattern.replaceAll('\\\\', ''), /\(\?|\\/);
    }
});

test('Sizes_AreStringsOfDigitsInBytes', () => {
    for (const tool of table.tools)
        for (const arg of tool.args.filter((one) => one.type === 'i64')) {
            const schema = argument(tool.name, arg.name);
            assert.equal(schema.type, 'string', `${tool.name}.${arg.name}`);
            assert.match(schema.description, /bytes/i, `${tool.name}.${arg.name}`);
            assert.match('10737418240', new RegExp(schema.pattern));
            for (const wrong of ['10 GB', '1.5', '', '1e9', '00', '12345678901234567890'])
                assert.doesNotMatch(wrong, new RegExp(schema.pattern), `${tool.name}.${arg.name}`);
        }
    assert.match('-1073741824', new RegExp(argument('ResizePartitionRelative', 'sizeAdjustment').pattern));
    assert.doesNotMatch('-1', new RegExp(argument('CreatePartition', 'capacity').pattern));
});

test('Letters_HaveAPattern', () => {
    for (const tool of table.tools)
        for (const arg of tool.args.filter((one) => one.role === 'drive' || one.role === 'newLetter')) {
            const pattern = new RegExp(argument(tool.name, arg.name).pattern);
            for (const right of ['E', 'e', 'E:', 'E:\\']) assert.match(right, pattern);
            for (const wrong of ['Data', '1', 'EF', '*', 'E\\', 'E:/']) assert.doesNotMatch(wrong, pattern);
            assert.equal(pattern.test(''), tool.name === 'CreateBootableUsbByDriveLetter', tool.name);
        }
});

test('Disks_StartAtZeroAndMinusOneIsAllowedOnlyWhereTheHostChooses', () => {
    const minusOne = table.tools.flatMap((tool) =>
        tool.args
            .filter((arg) => arg.role === 'disk' && argument(tool.name, arg.name).minimum === -1)
            .map((arg) => `${tool.name}.${arg.name}`),
    );
    assert.deepEqual(minusOne, ['CreateBootableUsbByDisk.diskIndex', 'CloneOSDataFromDisk.osDiskIndex']);
    assert.equal(argument('WipeDisk', 'diskIndex').minimum, 0);
    assert.equal(argument('CreatePartition', 'unallocatedIndex').minimum, -1);
    assert.match(argument('CreatePartition', 'unallocatedIndex').description, /-1/);
});

test('FileSystems_AreListedWithTheirLimits', () => {
    for (const [tool, name] of [
        ['FormatPartition', 'fileSystem'],
        ['CreatePartition', 'fileSystem'],
        ['SplitPartition', 'newPartitionFileSystem'],
        ['AllocateSpaceFromPartitionToNewPartition', 'fileSystem'],
    ]) {
        const schema = argument(tool, name);
        assert.deepEqual(schema.enum.slice(0, 3), ['NTFS', 'FAT32', 'exFAT']);
        assert.match(schema.description, /FAT32: 33 MiB to 32 GiB, files below 4 GiB, label up to 11 characters/);
    }
    assert.deepEqual(argument('AutoCreatePartitions', 'GptOrMbr').enum, ['GPT', 'MBR']);
});

test('ClusterSizes_StateTheUnitAndTheMeaningOfZero', () => {
    const format = argument('FormatPartition', 'clusterSize');
    assert.match(format.description, /in bytes; 0 leaves the choice to the host/);
    assert.deepEqual([format.minimum, format.maximum], [0, 2097152]);
    const change = argument('ChangePartitionClusterSize', 'newClusterSize');
    assert.match(change.description, /bytes/);
    assert.deepEqual([change.minimum, change.maximum], [512, 2097152]);
});

test('EraseCounts_AreBoundedAndExplained', () => {
    for (const tool of ['WipeDisk', 'WipePartition']) {
        const schema = argument(tool, 'eraseCount');
        assert.deepEqual([schema.minimum, schema.maximum], [1, 35]);
        assert.match(schema.description, /passes.*1 is enough for most purposes/);
    }
});

test('NewPartitionCapacity_StatesWhichPartitionItRefersTo', () => {
    const about = (/** @type {string} */ tool) => argument(tool, 'newPartitionCapacity').description;
    assert.match(about('SplitPartition'), /Capacity of the new partition in bytes; the existing partition keeps/);
    assert.match(about('ResizePartition'), /New capacity of the whole partition in bytes/);
    assert.match(about('AllocateSpaceFromPartitionToPartition'), /Bytes to move .* not a new capacity/);
});

test('ArgumentsOutsideTheirLimits_AreRejectedWithTheLimits', () => {
    const wipe = (/** @type {any} */ eraseCount, diskIndex = 1) =>
        toWire(named('WipeDisk'), { diskIndex, eraseCount });
    assert.deepEqual(wipe(35), [1, 35]);
    for (const count of [0, 36, 2147483647])
        assert.throws(() => wipe(count), /eraseCount must be between 1 and 35\./);
    assert.throws(() => wipe(1, -1), /diskIndex must be between 0 and 2147483647\./);
    const create = (/** @type {any} */ capacity, unallocatedIndex = -1) =>
        toWire(named('CreatePartition'), {
            diskIndex: 0,
            capacity,
            fileSystem: 'NTFS',
            label: '',
            unallocatedIndex,
        });
    assert.throws(() => create(0), /capacity must be between 1 and 9223372036854775807\./);
    assert.throws(() => create(1, -2), /unallocatedIndex must be between -1 and/);
    const format = (/** @type {any} */ clusterSize) =>
        toWire(named('FormatPartition'), {
            driveLetter: 'E',
            fileSystem: 'NTFS',
            label: '',
            clusterSize,
            quickFormat: true,
        })[3];
    assert.deepEqual([0, 512, 2097152].map(format), [0, 512, 2097152]);
    for (const clusterSize of [1000, 4097, 3])
        assert.throws(() => format(clusterSize), /clusterSize must be a power of two, or 0, but is \d+\./);
    assert.throws(
        () => toWire(named('ChangePartitionClusterSize'), { driveLetter: 'E', newClusterSize: 1000 }),
        /newClusterSize must be a power of two, but is 1000\./,
    );
    assert.throws(
        () => toWire(named('AutoCreatePartitions'), { diskIndex: 1, partitionCount: 2, GptOrMbr: 'gpt' }),
        /GptOrMbr must be GPT or MBR\./,
    );
});

test('Calls_AcceptASizeAsANumberAndExplainAnInvalidArgument', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const resize = (/** @type {any} */ newPartitionCapacity) =>
        client.callTool({ name: 'ResizePartition', arguments: { driveLetter: 'C', newPartitionCapacity } });
    assert.ok(!(await resize(68719476737)).isError);
    assert.equal(
        service.calls.find((call) => call.method === 'ResizePartition')?.args[1].toString(),
        '68719476737',
    );
    const wrong = await resize('100 GB');
    assert.ok(wrong.isError);
    assert.match(text(wrong), /ResizePartition was not called: newPartitionCapacity must be a whole number of bytes, such as 429496729600\./);
    assert.deepEqual(wrong.structuredContent, { called: false, cause: 'invalidArguments' });
});

test('Descriptions_ContainNoRoleWordsOfTheInterfaceFile', () => {
    for (const tool of table.tools)
        for (const [name, { description = '' }] of Object.entries(inputSchema(tool).properties))
            assert.doesNotMatch(description, /reduced|looked up|checked/, `${tool.name}.${name}`);
    assert.match(
        argument('AllocateSpaceFromPartitionToPartition', 'targetDriveLetter').description,
        /^Drive letter of the target/,
    );
});

test('LongArguments_AreNotRepeatedInAnAnswer', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const long = 'x'.repeat(1024 * 1024);
    const label = { driveLetter: 'E', newLabel: long };
    for (const [name, args] of /** @type {Array<[string, any]>} */ ([
        ['ChangePartitionLabel', { ...label, driveLetter: { long } }],
        ['ChangePartitionLabel', label],
        ['ResizePartition', { driveLetter: 'C', newPartitionCapacity: long }],
    ])) {
        const answer = await client.callTool({ name, arguments: args });
        assert.ok(JSON.stringify(answer).length < 2000, `${name}: ${JSON.stringify(answer).length}`);
    }
});

test('CausesWithANameThatBeginsWithAVowelSound_HaveTheArticleAn', () => {
    const label = 'x'.repeat(40);
    for (const [name, words] of [
        ['NTFS', 'An NTFS label has at most 32 characters, but this one has 40.'],
        ['FAT32', 'A FAT32 label has at most 11 characters, but this one has 40.'],
        ['exFAT', 'An exFAT label has at most 11 characters, but this one has 40.'],
    ])
        assert.equal(labelCause(/** @type {any} */ (fileSystemNamed(name)), label)?.text, words);
});
