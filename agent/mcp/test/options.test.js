import assert from 'node:assert/strict';
import { test } from 'node:test';
import { offered } from '../src/gateway.js';
import { readOptions } from '../src/options.js';
import { loadTable } from '../src/table.js';

const table = loadTable();
const read = (/** @type {string[]} */ argv, env = {}) => readOptions(argv, env, Object.keys(table.groups));

test('Port_ComesFromTheOptionOrTheEnvironmentOrASearch', () => {
    assert.equal(read(['--port', '1234'], { AGENT_NATIVE_PORT: '99' }).port, 1234);
    assert.equal(read([], { AGENT_NATIVE_PORT: '99' }).port, 99);
    assert.deepEqual([read([]).port, read([]).searchFrom], [undefined, 9090]);
    for (const invalid of ['', '0', 'abc', '70000'])
        assert.equal(read([], { AGENT_NATIVE_PORT: invalid }).port, undefined);
});

test('TimeLimits_HaveDefaults', () => {
    assert.equal(read([]).timeoutMs, 30000);
    assert.equal(read(['--timeout', '2.5']).timeoutMs, 2500);
});

test('InvalidValues_AreRejectedByName', () => {
    assert.throws(() => read(['--port', '70000']), /--port/);
    assert.throws(() => read(['--timeout', '0']), /--timeout/);
    assert.throws(() => read(['--tools', 'disks,moon']), /"moon"/);
    assert.throws(() => read(['--moon']), /moon/);
});

test('EveryOption_CanBeSetByAVariable', () => {
    const env = {
        AIBRIDGE_MCP_PORT: '1234',
        AIBRIDGE_MCP_TOOLS: 'disks, care',
        AIBRIDGE_MCP_READ_ONLY: 'true',
        AIBRIDGE_MCP_YES: '1',
        AIBRIDGE_MCP_TIMEOUT: '2.5',
        AIBRIDGE_MCP_ASK_TIMEOUT: '60',
    };
    const options = read([], { ...env, AGENT_NATIVE_PORT: '99' });
    assert.deepEqual([options.port, options.portSource], [1234, 'AIBRIDGE_MCP_PORT']);
    assert.deepEqual(options.groups, ['disks', 'care']);
    assert.deepEqual([options.readOnly, options.yes], [true, true]);
    assert.deepEqual([options.timeoutMs, options.askTimeoutMs], [2500, 60000]);
});

test('OptionAndVariable_OptionWins', () => {
    const env = { AIBRIDGE_MCP_PORT: '1234', AIBRIDGE_MCP_TOOLS: 'disks', AIBRIDGE_MCP_TIMEOUT: '60' };
    const options = read(['--port', '5', '--tools', 'care', '--timeout', '1'], env);
    assert.deepEqual([options.port, options.groups, options.timeoutMs], [5, ['care'], 1000]);
});

test('EmptyVariablesAndPlaceholders_AreIgnored', () => {
    for (const value of ['', ' ', '${user_config.port}']) {
        const env = Object.fromEntries(
            ['PORT', 'TOOLS', 'READ_ONLY', 'YES', 'TIMEOUT', 'ASK_TIMEOUT'].map((name) => [
                `AIBRIDGE_MCP_${name}`,
                value,
            ]),
        );
        assert.deepEqual(read([], env), read([]));
    }
});

test('InvalidVariables_AreRejectedByName', () => {
    assert.throws(() => read([], { AIBRIDGE_MCP_PORT: '70000' }), /AIBRIDGE_MCP_PORT must be a port/);
    assert.throws(() => read([], { AIBRIDGE_MCP_YES: 'perhaps' }), /AIBRIDGE_MCP_YES must be true or false/);
    assert.throws(() => read([], { AIBRIDGE_MCP_TOOLS: 'moon' }), /AIBRIDGE_MCP_TOOLS contains an unknown group/);
    assert.equal(read([], { AIBRIDGE_MCP_READ_ONLY: 'false' }).readOnly, false);
});

test('ToolsAndReadOnly_SelectTheOfferedTools', () => {
    const names = (/** @type {string[]} */ argv) => offered(table, read(argv)).map((tool) => tool.name);
    const reading = ['ListAllDisks', 'ListPartitionsOnDisk', 'GetPartitionInfo', 'GetAllPartitionInfo'];
    assert.deepEqual(names(['--tools', 'inventory']), reading);
    assert.deepEqual(names(['--tools', 'all', '--read-only']), reading);
    assert.deepEqual(
        names(['--tools', 'all']),
        table.tools.map((tool) => tool.name),
    );
    assert.ok(names([]).includes('FormatPartition') && !names([]).includes('CloneDiskToDisk'));
    assert.ok(
        names(['--tools', 'clone']).includes('CloneDiskToDisk') &&
            !names(['--tools', 'clone']).includes('ListAllDisks'),
    );
});
