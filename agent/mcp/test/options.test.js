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
