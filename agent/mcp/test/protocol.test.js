// What the gateway declares to a client, and its program's options for people.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { connect, program } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const { version } = JSON.parse(readFileSync(new URL('../package.json', import.meta.url), 'utf8'));

/** @param {string[]} args @param {Record<string, string>} [env] */
const run = (args, env = {}) =>
    spawnSync(process.execPath, [program, ...args], {
        encoding: 'utf8',
        input: '',
        env: { PATH: process.env.PATH, ...env },
    });

for (const modern of [false, true])
    test(`Capabilities_AnnounceNoChangesOfLists${modern ? '' : 'OnTheOlderRevision'}`, async (t) => {
        const { client } = await connect(t, { modern });
        const { tools, resources } = client.getServerCapabilities() ?? {};
        assert.deepEqual([tools, resources], [{ listChanged: false }, { listChanged: false }]);
        assert.deepEqual(client.getServerVersion()?.version, version);
    });

test('CacheHints_KeepTheToolsAndNeverTheInventory', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { modern: true, args: ['--port', String(service.port)] });
    const hint = (/** @type {any} */ result) => [result.ttlMs, result.cacheScope];
    const raw = (/** @type {string} */ method, params = {}) =>
        client.request({ method: /** @type {any} */ (method), params });
    assert.deepEqual(hint(await raw('tools/list')), [3600000, 'private']);
    assert.deepEqual(hint(await raw('resources/templates/list')), [3600000, 'private']);
    assert.deepEqual(hint(await raw('resources/list')), [0, 'private']);
    assert.deepEqual(hint(await raw('resources/read', { uri: 'aibridge://disks' })), [0, 'private']);
});

test('Help_IsOnStandardOutput', () => {
    for (const option of ['--help', '-h']) {
        const { status, stdout, stderr } = run([option]);
        assert.deepEqual([status, stderr], [0, '']);
        assert.match(stdout, /^usage: aibridge-mcp \[--port N\]/);
        assert.match(stdout, /\n {2}AIBRIDGE_MCP_PORT +sets --port if it is not given\n {2}AIBRIDGE_MCP_TOOLS +sets --tools /);
        assert.match(stdout, /\n {2}-h, --help +print this help\n {2}--version +print the version\n/);
    }
});

test('Version_IsOnStandardOutput', () => {
    const { status, stdout, stderr } = run(['--version']);
    assert.deepEqual([status, stdout, stderr], [0, `aibridge-mcp ${version}\n`, '']);
});

test('InvalidOption_IsReportedOnStandardErrorWithExitCode2', () => {
    const { status, stdout, stderr } = run(['--port', '0']);
    assert.deepEqual([status, stdout], [2, '']);
    assert.match(stderr, /^aibridge-mcp: --port must be a port from 1 to 65535, but is "0"\.\nusage: /);
});

test('InvalidVariable_IsReportedByItsName', () => {
    const { status, stderr } = run([], { AIBRIDGE_MCP_TIMEOUT: 'soon' });
    assert.equal(status, 2);
    assert.match(stderr, /AIBRIDGE_MCP_TIMEOUT must be a number of seconds, .* but is "soon"\./);
});

test('Variables_SelectTheToolsOfARunningGateway', async (t) => {
    const { client } = await connect(t, { env: { AIBRIDGE_MCP_TOOLS: 'inventory' } });
    assert.ok((await client.listTools()).tools.some((tool) => tool.name === 'ListAllDisks'));
    assert.ok(!(await client.listTools()).tools.some((tool) => tool.name === 'FormatPartition'));
});

test('ReadOnlyWithGroupsThatOnlyAct_IsAnErrorAtStart', () => {
    for (const [args, env] of /** @type {Array<[string[], any]>} */ ([
        [['--read-only', '--tools', 'clone,media'], {}],
        [[], { AIBRIDGE_MCP_READ_ONLY: 'true', AIBRIDGE_MCP_TOOLS: 'clone,media' }],
    ])) {
        const { status, stderr } = run(args, env);
        assert.equal(status, 2);
        assert.match(stderr, /--read-only and --tools clone,media exclude every tool/);
    }
});

for (const modern of [false, true])
    test(`UnofferedTool_IsRefusedWithItsGroupAndTheOption${modern ? '' : 'OnTheOlderRevision'}`, async (t) => {
        const refusal = async (/** @type {string[]} */ args, /** @type {string} */ name) => {
            const { client } = await connect(t, { modern, args: ['--port', '1', ...args] });
            const error = await client.callTool({ name, arguments: {} }).then(
                () => assert.fail(name),
                (reason) => reason,
            );
            assert.equal(error.code, -32602);
            return error.message;
        };
        assert.match(
            await refusal([], 'CloneDiskToDisk'),
            /CloneDiskToDisk is not offered\. It belongs to the group clone \(.*\)\. The user can add the group with --tools .* AIBRIDGE_MCP_TOOLS/,
        );
        assert.match(
            await refusal(['--read-only'], 'FormatPartition'),
            /FormatPartition is not offered, because the gateway runs with --read-only\. Only the user can change this/,
        );
        const long = await refusal([], 'x'.repeat(1000000));
        assert.match(long, /The gateway has no tool "x{64}"… \(the first 64 of 1,000,000 characters\)\./);
    });
