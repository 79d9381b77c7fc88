// Runs the official conformance suite for servers against the gateway with a test-only HTTP server, and compares the
// result with the expected failures.
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

const suite = fileURLToPath(
    new URL('../node_modules/@modelcontextprotocol/conformance/dist/index.js', import.meta.url),
);
/** @type {Record<string, string>} */
const expected = JSON.parse(
    readFileSync(new URL('../test/conformance.json', import.meta.url), 'utf8'),
).expectedFailures;

const scratch = mkdtempSync(join(tmpdir(), 'aibridge-conformance-'));
const service = new FakeService();
const entry = await serveHttp(await service.start());
let code = 1;
try {
    const baseline = join(scratch, 'expected.yml');
    const names = Object.keys(expected);
    writeFileSync(
        baseline,
        names.length > 0 ? `server:\n${names.map((name) => `  - ${name}\n`).join('')}` : 'server: []\n',
    );
    const run = spawn(
        process.execPath,
        [
            suite,
            'server',
            '--url',
            entry.url,
            '--suite',
            'all',
            '-o',
            join(scratch, 'results'),
            '--expected-failures',
            baseline,
        ],
        {
            stdio: 'inherit',
            cwd: scratch,
        },
    );
    code = await new Promise((resolve) => run.on('close', (status) => resolve(status ?? 1)));
    console.log('\nReasons for the expected failures:');
    for (const name of names) console.log(`  ${name}: ${expected[name]}`);
} finally {
    await entry.close();
    await service.stop();
    rmSync(scratch, { recursive: true, force: true });
}
process.exitCode = code;
