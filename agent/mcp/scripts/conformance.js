// Runs the official conformance suite for servers against the gateway with a test-only HTTP server, and compares the
// result with the expected failures: the scenarios that the newest revision of the protocol requires, then the scenarios
// of the older revision that most clients use.
//
//     node scripts/conformance.js
//
// Exit code 1: a scenario failed unexpectedly, or an expected failure passed.
import { spawn } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { FakeService } from '../test/support/fakeService.js';
import { serveHttp } from '../test/support/httpServer.js';

/** @param {string} path */
const file = (path) => fileURLToPath(new URL(path, import.meta.url));
const suite = file('../node_modules/@modelcontextprotocol/conformance/dist/index.js');
/** The reasons by scenario. @type {Record<string, Record<string, string>>} */
const expected = JSON.parse(readFileSync(file('../test/conformance.json'), 'utf8'));
const runs = [
    { revision: '2026-07-28', select: ['--requirements', '2026-07-28'] },
    { revision: '2025-11-25', select: ['--suite', 'all', '--spec-version', '2025-11-25'] },
];

const scratch = mkdtempSync(join(tmpdir(), 'aibridge-conformance-'));
const service = new FakeService();
const entry = await serveHttp(await service.start());
try {
    for (const { revision, select } of runs) {
        console.log(`\n##### Revision ${revision}`);
        if ((await run(revision, select)) !== 0) process.exitCode = 1;
        console.log('\nReasons for the expected failures:');
        for (const [name, reason] of Object.entries(expected[revision])) console.log(`  ${name}: ${reason}`);
    }
} finally {
    await entry.close();
    await service.stop();
    rmSync(scratch, { recursive: true, force: true });
}

/** @param {string} revision @param {string[]} select @returns {Promise<number>} the suite's exit code */
async function run(revision, select) {
    const baseline = join(scratch, `${revision}.yml`);
    const names = Object.keys(expected[revision]);
    writeFileSync(
        baseline,
        names.length > 0 ? `server:\n${names.map((name) => `  - ${name}\n`).join('')}` : 'server: []\n',
    );
    const options = ['--url', entry.url, ...select, '-o', join(scratch, revision)];
    const child = spawn(
        process.execPath,
        ['--import', file('fs-glob.js'), suite, 'server', ...options, '--expected-failures', baseline],
        { stdio: 'inherit', cwd: scratch },
    );
    return new Promise((resolve) => child.on('close', (status) => resolve(status ?? 1)));
}
