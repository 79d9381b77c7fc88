import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { Gateway } from '../src/gateway.js';
import { readOptions } from '../src/options.js';
import { annotations, inputSchema, outputSchema, recordSchema } from '../src/schema.js';
import { joinTable, loadTable } from '../src/table.js';

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

// Typed by hand: a class that is too weak lets a model destroy data without a question.
test('Classes_AreThoseOfTheEffects', () => {
    const ofClass = (/** @type {string} */ wanted) =>
        table.tools.filter((tool) => tool.class === wanted).map((tool) => tool.name);
    assert.deepEqual(ofClass('reads'), [
        'ListAllDisks',
        'ListPartitionsOnDisk',
        'GetPartitionInfo',
        'GetAllPartitionInfo',
    ]);
    assert.deepEqual(ofClass('opens'), [
        'ShowBitLockerStatus',
        'RetrieveBitLockerRecoveryKey',
        'OpenPartitionLayoutEditor',
        'OpenDiskLayoutEditor',
        'CheckPartitionFileSystem',
        'DiskHealthCheck',
        'RecoverLostPartition',
        'RepairRawOrDamagedPartition',
        'ScanDiskBadSectors',
        'ScanPartitionBadSectors',
        'Windows11UpgradeCheck',
    ]);
    assert.deepEqual(ofClass('adds'), [
        'CreateBootableISO',
        'InstallAndEnablePreOS',
        'CreatePartition',
        'DiskBringOnline',
    ]);
    assert.deepEqual(ofClass('changes'), [
        'DisablePreOS',
        'ConvertDiskToGpt',
        'ConvertDiskToMbr',
        'ConvertDiskToDynamic',
        'ConvertDiskToBasic',
        'ConvertPartitionToPrimary',
        'ConvertPartitionToLogical',
        'ConvertPartitionToFat',
        'ConvertPartitionToExfat',
        'ConvertPartitionToNtfs',
        'SmartSpaceAdjustment',
        'SplitPartition',
        'ResizePartition',
        'ResizePartitionRelative',
        'AllocateSpaceFromPartitionToNewPartition',
        'AllocateSpaceFromPartitionToPartition',
        'ChangePartitionClusterSize',
        'ChangePartitionDriveLetter',
        'ChangePartitionLabel',
        'SetPartitionHidden',
        'SetPartitionActive',
        'EjectUsb',
        'MigrateSystemDriveData',
        'RebuildMbr',
        'ToggleWriteProtection',
        'AlignDiskTo4k',
        'RepairWindowsBoot',
        'PasswordReset',
    ]);
    assert.deepEqual(ofClass('destroys'), [
        'CreateBootableUsbByDisk',
        'CreateBootableUsbByDriveLetter',
        'CreateWindowsInstallerMedia',
        'CloneOSDataFromCurrent',
        'CloneOSDataFromDisk',
        'CloneOSDataFromPartition',
        'CloneDiskToDisk',
        'ClonePartitionToPartition',
        'ClonePartitionToDisk',
        'DeleteAllPartitions',
        'InitializeDiskToGpt',
        'InitializeDiskToMbr',
        'WipeDisk',
        'FormatPartition',
        'DeletePartition',
        'MergePartitions',
        'WipePartition',
        'AutoCreatePartitions',
        'LowLevelFormat',
    ]);
});

test('DestructiveHint_IsFalseOnlyForToolsThatReadOpenOrAdd', () => {
    for (const tool of table.tools) {
        assert.equal(
            annotations(tool).destructiveHint,
            ['changes', 'destroys'].includes(tool.class),
            tool.name,
        );
        assert.match(tool.reason, /^[A-Z].*\.$/, tool.name);
    }
});

test('LostData_IsNamedByArgumentsOfTheToolAndOnlyForToolsThatDestroy', () => {
    for (const tool of table.tools) {
        const targets = tool.args.filter((arg) => arg.role === 'drive' || arg.role === 'disk');
        for (const name of tool.loses) assert.ok(targets.some((arg) => arg.name === name), tool.name);
        assert.equal(tool.loses.length > 0, tool.class === 'destroys' && targets.length > 0, tool.name);
    }
    assert.deepEqual(named('MergePartitions').loses, ['driveLetter2']);
    assert.deepEqual(named('ClonePartitionToPartition').loses, ['destDriveLetter']);
});

// The tools of the clone, conversion, boot media, recovery, health and toolbox pages, and of the layout editors.
test('Pages_AreDescribedForExactlyTheToolsThatOpenOne', () => {
    const groups = ['clone', 'care', 'guides'];
    const others = [
        'CreateBootableISO',
        'CreateBootableUsbByDisk',
        'CreateBootableUsbByDriveLetter',
        'CreateWindowsInstallerMedia',
        'ConvertDiskToGpt',
        'ConvertDiskToMbr',
        'ConvertDiskToDynamic',
        'ConvertDiskToBasic',
        'ConvertPartitionToFat',
        'ConvertPartitionToExfat',
        'ConvertPartitionToNtfs',
        'ToggleWriteProtection',
    ];
    const without = ['SmartSpaceAdjustment', 'MigrateSystemDriveData', 'RepairRawOrDamagedPartition'];
    for (const { name, group, onScreen } of table.tools) {
        const opens = (groups.includes(group) || others.includes(name)) && !without.includes(name);
        assert.equal(onScreen !== undefined, opens, name);
    }
});

test('EditedComments_ChangeOnlyTheDescriptions', () => {
    const api = json('../generated/ZORNativePlugin.json');
    const comments = ['', 'Drive letter.', 'Destroys data. May be empty. Absent: 0. "Task Queued"'];
    for (const comment of comments) {
        const edited = JSON.parse(
            JSON.stringify(api, (key, value) => (key === 'doc' ? comment : value)),
        );
        const other = joinTable(edited, json('../tools.json'));
        assert.deepEqual(withoutDescriptions(other), withoutDescriptions(table));
        for (const [i, tool] of other.tools.entries()) {
            const parts = (/** @type {import('../src/types.js').Tool} */ one) =>
                withoutDescriptions([inputSchema(one), outputSchema(one, table), annotations(one)]);
            assert.deepEqual(parts(tool), parts(table.tools[i]));
        }
    }
});

/** @param {any} value @returns {any} */
const withoutDescriptions = (value) =>
    JSON.parse(
        JSON.stringify(value, (key, part) => (key === 'about' || key === 'description' ? undefined : part)),
    );

test('TableWithAnUndescribedArgument_IsRejected', () => {
    const own = json('../tools.json');
    delete own.arguments.eraseCount;
    assert.throws(() => joinTable(json('../generated/ZORNativePlugin.json'), own), /eraseCount/);
});

test('ArgumentsOfToolsJson_OccurInTheInterface', () => {
    const names = new Set(table.tools.flatMap((tool) => tool.args.map((arg) => arg.name)));
    assert.deepEqual(Object.keys(json('../tools.json').arguments).filter((name) => !names.has(name)), []);
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
        destructiveHint: true,
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
    assert.equal(inputSchema(named('CreatePartition')).properties.capacity.type, 'string');
});

test('RecordSchemas_ContainFieldsOfTheRecordWithTheirTypes', () => {
    for (const name of ['DiskInfo', 'PartitionInfo']) {
        const { unallocatedIndex, ...properties } = recordSchema(table, name).properties;
        assert.equal(unallocatedIndex?.type, name === 'PartitionInfo' ? 'integer' : undefined);
        const { fields } = json('../generated/ZORNativePlugin.json').structs.find(
            (/** @type {any} */ one) => one.name === name,
        );
        for (const [field, { type }] of Object.entries(properties)) {
            const { typeId } = fields.find((/** @type {any} */ one) => one.name === field);
            assert.equal(type, /** @type {any} */ ({ i32: 'integer', i64: 'string', string: 'string' })[typeId]);
        }
        assert.ok(Object.keys(properties).length >= 6, name);
    }
    assert.equal(recordSchema(table, 'DiskInfo').properties.totalCapacity.description, 'Capacity in bytes.');
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
        for (const arg of tool.args) assert.ok(arg.about.length > 0, `${tool.name}.${arg.name}`);
    }
});
