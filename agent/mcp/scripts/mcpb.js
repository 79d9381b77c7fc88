// Makes and validates the .mcpb bundle with its official tool.
//
//     node scripts/mcpb.js [FOLDER]      FOLDER receives aibridge-mcp-VERSION.mcpb; default: the current folder
import { spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { version } from '../src/options.js';

const root = fileURLToPath(new URL('..', import.meta.url));
const output = resolve(process.argv[2] ?? '.', `aibridge-mcp-${version}.mcpb`);
const staging = mkdtempSync(join(tmpdir(), 'aibridge-mcpb-'));

/** @param {string} script @param {string[]} args */
function node(script, ...args) {
    const run = spawnSync(process.execPath, [join(root, script), ...args], { stdio: ['ignore', 2, 2] });
    if (run.status !== 0) throw new Error(`${script} ${args.join(' ')} failed with exit code ${run.status}.`);
}

try {
    node('scripts/bundle.js');
    for (const file of ['manifest.json', 'package.json', 'README.md', 'tools.json', 'dist'])
        cpSync(join(root, file), join(staging, file), { recursive: true });
    const api = join('generated', 'ZORNativePlugin.json');
    cpSync(join(root, api), join(staging, api));
    const tool = 'node_modules/@anthropic-ai/mcpb/dist/cli/cli.js';
    node(tool, 'validate', join(staging, 'manifest.json'));
    node(tool, 'pack', staging, output);
    process.stdout.write(`${output}\n`);
} finally {
    rmSync(staging, { recursive: true, force: true });
}
