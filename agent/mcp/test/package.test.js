// The forms in which the gateway is shipped: the npm package, the .mcpb bundle, and the registry's entry.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { before, after, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { settable, variableOf } from '../src/options.js';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const folder = fileURLToPath(new URL('..', import.meta.url));
const json = (/** @type {string} */ file) => JSON.parse(readFileSync(join(folder, file), 'utf8'));
const scratch = mkdtempSync(join(tmpdir(), 'aibridge-mcp-'));
let archive = '';

/** @param {string} cwd @param {string} program @param {string[]} args */
function run(cwd, program, ...args) {
    const result = spawnSync(program, args, { cwd, encoding: 'utf8' });
    assert.equal(result.status, 0, result.stderr);
    return result.stdout.trim();
}

const offline = ['--offline', '--no-audit', '--no-fund'];

before(() => {
    const printed = run(folder, 'npm', 'pack', '--pack-destination', scratch, ...offline);
    archive = join(scratch, printed.split('\n').at(-1) ?? '');
});
after(() => rmSync(scratch, { recursive: true, force: true }));

/** Reads the disks of a fake service through a gateway. @param {import('node:test').TestContext} t @param {string} program */
async function readsDisks(t, program) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { program, args: ['--port', String(service.port)] });
    assert.ok((await client.listTools()).tools.length > 20);
    assert.match(text(await client.callTool({ name: 'ListAllDisks', arguments: {} })), /^Disk 0: "SATA"/);
}

test('Package_StartsFromAnEmptyFolderWithoutTheNetwork', async (t) => {
    run(scratch, 'npm', 'install', '--prefix', scratch, '--ignore-scripts', ...offline, archive);
    await readsDisks(t, join(scratch, 'node_modules', '.bin', 'aibridge-mcp'));
    // Only the package itself: its dependencies are part of its program.
    assert.deepEqual(
        readdirSync(join(scratch, 'node_modules')).filter((name) => !name.startsWith('.')),
        ['aibridge-mcp'],
    );
});

test('PackedFile_RunsWithNpx', () => {
    const empty = mkdtempSync(join(scratch, 'npx-'));
    const printed = run(empty, 'npx', '--yes', '--offline', '--package', archive, 'aibridge-mcp', '--version');
    assert.equal(printed, `aibridge-mcp ${json('package.json').version}`);
});

test('Package_IsSmallAndComplete', () => {
    assert.ok(statSync(archive).size < 1000000, `${statSync(archive).size} bytes`);
    const files = run(scratch, 'tar', 'tzf', archive).split('\n').sort();
    assert.deepEqual(files, [
        'package/README.md',
        'package/dist/THIRD-PARTY-NOTICES.txt',
        'package/dist/aibridge-mcp.js',
        'package/generated/ZORNativePlugin.json',
        'package/manifest.json',
        'package/package.json',
        'package/server.json',
        'package/tools.json',
    ]);
    const { license, dependencies } = json('package.json');
    assert.deepEqual([license, dependencies], ['UNLICENSED', undefined]);
    const readme = readFileSync(join(folder, 'README.md'), 'utf8');
    assert.match(readme, /^No licence is given\.$/m);
    assert.match(readme, /collects no data/);
});

test('Notices_CoverEveryBundledPackage', () => {
    const notices = readFileSync(join(folder, 'dist', 'THIRD-PARTY-NOTICES.txt'), 'utf8');
    for (const name of ['@modelcontextprotocol/server', 'async-mutex', 'node-int64', 'p-timeout', 'thrift', 'zod'])
        assert.match(notices, new RegExp(`^${name} \\d+\\.\\d+`, 'm'));
});

test('McpbBundle_IsValidAndStartsWithItsDefaultSettings', async (t) => {
    const bundle = run(scratch, process.execPath, join(folder, 'scripts', 'mcpb.js'), scratch);
    const tool = join(folder, 'node_modules', '@anthropic-ai', 'mcpb', 'dist', 'cli', 'cli.js');
    const unpacked = join(scratch, 'unpacked');
    run(scratch, process.execPath, tool, 'unpack', bundle, unpacked);
    const { server, user_config: settings, version } = JSON.parse(readFileSync(join(unpacked, 'manifest.json'), 'utf8'));
    assert.equal(version, json('package.json').version);
    assert.ok(statSync(bundle).size < 1000000);
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const value = (/** @type {string} */ name) => (name === 'port' ? service.port : settings[name].default);
    const env = Object.fromEntries(
        Object.entries(server.mcp_config.env).map(([name, one]) => [
            name,
            String(one).replace(/\$\{user_config\.(\w+)\}/, (_, key) => String(value(key))),
        ]),
    );
    assert.equal(server.mcp_config.args[0].replace('${__dirname}', unpacked), join(unpacked, server.entry_point));
    const { client } = await connect(t, { program: join(unpacked, server.entry_point), env });
    assert.ok((await client.listTools()).tools.some((one) => one.name === 'FormatPartition'));
    assert.match(text(await client.callTool({ name: 'ListAllDisks', arguments: {} })), /^Disk 0: "SATA"/);
});

test('RegistryEntry_AgreesWithThePackageAndTheOptions', () => {
    const [entry, pack] = [json('server.json'), json('package.json')];
    assert.match(entry.name, /^[a-zA-Z0-9.-]+\/[a-zA-Z0-9._-]+$/);
    assert.equal(entry.name, pack.mcpName);
    assert.ok(entry.description.length <= 100, `${entry.description.length}`);
    assert.equal(entry.version, pack.version);
    const [{ registryType, identifier, version, transport, environmentVariables }] = entry.packages;
    assert.deepEqual([registryType, identifier, version, transport], ['npm', pack.name, pack.version, { type: 'stdio' }]);
    assert.deepEqual(
        environmentVariables.map((/** @type {any} */ one) => one.name).sort(),
        settable.map(variableOf).sort(),
    );
    assert.ok(environmentVariables.every((/** @type {any} */ one) => one.description.length > 0));
});

test('LockFile_NamesOnlyThePublicRegistry', () => {
    // An entry without an address is taken from the registry of npm's configuration and verified by its hash.
    const entries = Object.entries(json('package-lock.json').packages).filter(([path]) => path !== '');
    assert.ok(entries.length > 50);
    assert.deepEqual(entries.filter(([, one]) => !one.integrity && !one.inBundle), []);
    const resolved = entries.flatMap(([, one]) => one.resolved ?? []);
    assert.deepEqual(
        resolved.filter((url) => !url.startsWith('https://registry.npmjs.org/')),
        [],
    );
});
