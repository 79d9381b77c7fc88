// Generates generated/ from the interface file: the Thrift client, and the interface as JSON for the tool table.
//
//     node scripts/generate.js [--thrift PROGRAM] [--interface FILE]
//
// Writes only if the interface file has changed, so every build can call it.
import { spawnSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, renameSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { parseArgs } from 'node:util';

const here = dirname(fileURLToPath(import.meta.url));
const target = join(here, '..', 'generated');
const { values } = parseArgs({
    options: {
        thrift: { type: 'string', default: 'thrift' },
        interface: {
            type: 'string',
            default: join(here, '..', '..', '..', 'service', 'ZORNativePlugin.thrift'),
        },
    },
});
const source = resolve(values.interface);

/** @param {string} file */
const modifiedAt = (file) => statSync(file, { throwIfNoEntry: false })?.mtimeMs ?? 0;

/** @param {string} generator @param {string} folder */
function compile(generator, folder) {
    const run = spawnSync(values.thrift, ['--gen', generator, '-out', folder, source], {
        stdio: ['ignore', 2, 2],
    });
    if (run.error || run.status !== 0)
        throw run.error ?? new Error(`${values.thrift} failed with exit code ${run.status}.`);
}

const newest = Math.max(modifiedAt(source), modifiedAt(fileURLToPath(import.meta.url)));
if (modifiedAt(join(target, 'ZORNativePlugin.json')) <= newest) {
    // Renamed into place when complete, so that a parallel build never reads a partial file.
    const staging = mkdtempSync(join(here, '..', '.generating-'));
    try {
        compile('js:node,es6', staging);
        compile('json', staging);
        // The compiler writes CommonJS; this package consists of ES modules.
        writeFileSync(join(staging, 'package.json'), '{ "type": "commonjs" }\n');
        const names = ['ZORNativePlugin', 'ZORNativePlugin_types'];
        for (const name of names)
            writeFileSync(join(staging, `${name}.d.ts`), 'declare const all: any;\nexport = all;\n');
        mkdirSync(target, { recursive: true });
        const files = [
            'package.json',
            ...names.flatMap((name) => [`${name}.d.ts`, `${name}.js`]),
            'ZORNativePlugin.json',
        ];
        for (const file of files) renameSync(join(staging, file), join(target, file));
    } finally {
        rmSync(staging, { recursive: true, force: true });
    }
    process.stderr.write(`generated ${target}\n`);
}
