import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { Gateway } from '../src/gateway.js';
import { readOptions } from '../src/options.js';
import { annotations, inputSchema, outputSchema, recordSchema } from '../src/schema.js';
import { joinTable, loadTable, withConstants } from '../src/table.js';

const table = loadTable();
const named = (/** @type {string} */ name) =>
    /** @type {import('../src/types.js').Tool} */ (table.tools.find((tool) => tool.name === name));
const json = (/** @type {string} */ path) => JSON.parse(readFileSync(new URL(path, import.meta.url), 'utf8'));

test('Tools_AreTheMethodsOfTheInterfaceExceptTheGates', () => {
    const inInterface = [
        ...readFileSync(new URL('../../../service/ZORNativePlugin.thrift', import.meta.url), 'utf8').matchAll(
            /^ {4}(?:bool|string|TaskInfo|PartitionInfo|list<\w+>) (\w+)\(/gm,
        ),
    ].map((m) => m[1]);
    assert.ok(inInterface.length > table.gate.length);
    assert.deepEqual(table.methods, inInterface);
    assert.deepEqual(table.gate, ['Init', 'PostProcessing', 'PreProcessing']);
    assert.deepEqual(
        table.tools.map((tool) => tool.name),
        inInterface.filter((name) => !table.gate.includes(name)),
    );
});

test('ServerWithAllGroups_OffersExactlyTheTools', () => {
    const options = readOptions(['--tools', 'all'], {}, Object.keys(table.groups));
    assert.deepEqual(
        new Gateway(options).tools.map((tool) => tool.name),
        table.tools.map((tool) => tool.name),
    );
});

test('TableWithAMissingTool_IsRejected', () => {
    const own = json('../tools.json');
    delete own.tools.FormatPartition;
    assert.throws(() => joinTable(json('../generated/ZORNativePlugin.json'), own), /FormatPartition/);
});

test('TableWithAnUnknownTool_IsRejected', () => {
    const own = json('../tools.json');
    own.tools.FormatMoon = { title: 'x', group: 'disks', class: 'opens' };
    assert.throws(() => joinTable(json('../generated/ZORNativePlugin.json'), own), /FormatMoon/);
});

test('Classes_MatchTheCommentsOfTheInterface', () => {
    const starts = {
        reads: 'Reads the inventory',
        changes: 'Changes data.',
        destroys: 'Destroys data.',
        opens: 'Opens a page of the host; changes nothing by itself.',
    };
    for (const f of json('../generated/ZORNativePlugin.json').services[0].functions.filter(
        (/** @type {any} */ f) => !table.gate.includes(f.name),
    )) {
        const comment = f.doc.split(/\s+/).join(' ').trim();
        if (f.name === 'RepairRawOrDamagedPartition') assert.match(comment, /^Switched off/);
        else assert.ok(comment.startsWith(starts[named(f.name).class]), `${f.name}: ${comment}`);
    }
});

test('Annotations_FollowTheClass', () => {
    assert.deepEqual(annotations(named('ListAllDisks')), {
        readOnlyHint: true,
        destructiveHint: false,
        idempotentHint: true,
        openWorldHint: false,
    });
    assert.deepEqual(annotations(named('OpenDiskLayoutEditor')), {
        readOnlyHint: false,
        destructiveHint: false,
        idempotentHint: true,
        openWorldHint: false,
    });
    assert.deepEqual(annotations(named('CreatePartition')), {
        readOnlyHint: false,
        destructiveHint: false,
        idempotentHint: false,
        openWorldHint: false,
    });
    assert.deepEqual(annotations(named('ChangePartitionLabel')), {
        readOnlyHint: false,
        destructiveHint: false,
        idempotentHint: true,
        openWorldHint: false,
    });
    assert.deepEqual(annotations(named('WipeDisk')), {
        readOnlyHint: false,
        destructiveHint: true,
        idempotentHint: false,
        openWorldHint: false,
    });
});

test('InputSchema_RequiresEveryArgumentInOrder', () => {
    const schema = inputSchema(named('FormatPartition'));
    assert.deepEqual(Object.keys(schema.properties), [
        'driveLetter',
        'fileSystem',
        'label',
        'clusterSize',
        'quickFormat',
    ]);
    assert.deepEqual(schema.required, ['driveLetter', 'fileSystem', 'label', 'clusterSize', 'quickFormat']);
    assert.deepEqual(
        Object.values(schema.properties).map((p) => p.type),
        ['string', 'string', 'string', 'integer', 'boolean'],
    );
    assert.deepEqual(inputSchema(named('CreatePartition')).properties.capacity.type, ['integer', 'string']);
});

test('RecordSchemas_ContainEveryFieldOfTheRecord', () => {
    for (const { name, fields } of json('../generated/ZORNativePlugin.json').structs)
        assert.deepEqual(
            Object.keys(recordSchema(table, name).properties),
            fields.map((/** @type {any} */ field) => field.name),
        );
    assert.deepEqual(recordSchema(table, 'TaskInfo').properties, {
        allow: { type: 'boolean' },
        reasons: { type: 'string' },
    });
    assert.deepEqual(recordSchema(table, 'DiskInfo').properties.totalCapacity, { type: 'string' });
});

test('OutputSchemas_ExistOnlyForToolsThatRead', () => {
    const withSchema = table.tools.filter((tool) => outputSchema(tool, table)).map((tool) => tool.name);
    assert.deepEqual(withSchema, [
        'ListAllDisks',
        'ListPartitionsOnDisk',
        'GetPartitionInfo',
        'GetAllPartitionInfo',
    ]);
    assert.deepEqual(
        withSchema,
        table.tools.filter((tool) => tool.class === 'reads').map((tool) => tool.name),
    );
});

test('EveryTool_HasATitleAndADescription', () => {
    for (const tool of table.tools) {
        assert.ok(tool.title.length > 0 && tool.about.length > 0, tool.name);
        assert.doesNotMatch(tool.about, /PreProcessing|Absent/);
        for (const arg of tool.args) assert.doesNotMatch(arg.about, /Absent/, `${tool.name}.${arg.name}`);
    }
});

test('CommonPhrases_OccurInTheInterface', () => {
    const { constants, services } = json('../generated/ZORNativePlugin.json');
    const comments = services[0].functions
        .flatMap((/** @type {any} */ f) => [f, ...f.arguments])
        .map((/** @type {any} */ c) => c.doc.split(/\s+/).join(' '));
    for (const phrase of json('../tools.json').commonPhrases)
        assert.ok(
            comments.some((/** @type {string} */ c) => c.includes(withConstants(phrase, constants))),
            phrase,
        );
});
