import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const folder = fileURLToPath(new URL('..', import.meta.url));

/** @param {string} cwd @param {string[]} args */
function npm(cwd, ...args) {
    const run = spawnSync('npm', [...args, '--offline', '--no-audit', '--no-fund', '--ignore-scripts'], {
        cwd,
        encoding: 'utf8',
    });
    assert.equal(run.status, 0, run.stderr);
    return run.stdout.trim();
}

test('Package_StartsFromAnEmptyFolderWithoutTheNetwork', { timeout: 870000 }, async (t) => {
    const scratch = mkdtempSync(join(tmpdir(), 'aibridge-mcp-'));
    t.after(() => rmSync(scratch, { recursive: true, force: true }));
    const archive = npm(folder, 'pack', '--pack-destination', scratch).split('\n').at(-1) ?? '';
    npm(scratch, 'install', '--prefix', scratch, join(scratch, archive));
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, {
        program: join(scratch, 'node_modules', '.bin', 'aibridge-mcp'),
        args: ['--port', String(service.port)],
    });
    assert.ok((await client.listTools()).tools.length > 20);
    assert.match(text(await client.callTool({ name: 'ListAllDisks', arguments: {} })), /^Disk 0: SATA/);
});
