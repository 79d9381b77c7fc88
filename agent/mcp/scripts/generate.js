// Makes generated/ from the interface file: the Thrift client, and the interface as JSON for the tool table.
//
//     node scripts/generate.js [--thrift PROGRAM] [--interface FILE]
//
// Without changes in the interface file nothing is written, so a build may call it every time.
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
const writtenAt = (file) => statSync(file, { throwIfNoEntry: false })?.mtimeMs ?? 0;

/** @param {string} generator @param {string} folder */
function compile(generator, folder) {
    const run = spawnSync(values.thrift, ['--gen', generator, '-out', folder, source], {
        stdio: ['ignore', 2, 2],
    });
    if (run.error || run.status !== 0)
        throw run.error ?? new Error(`${values.thrift} ended with ${run.status}`);
}

const newest = Math.max(writtenAt(source), writtenAt(fileURLToPath(import.meta.url)));
if (writtenAt(join(target, 'ZORNativePlugin.json')) <= newest) {
    // Made aside and put in place whole: two builds at once never read half a file.
    const aside = mkdtempSync(join(here, '..', '.generating-'));
    try {
        compile('js:node,es6', aside);
        compile('json', aside);
        // The compiler writes CommonJS; this package is made of ES modules.
        writeFileSync(join(aside, 'package.json'), '{ "type": "commonjs" }\n');
        const names = ['ZORNativePlugin', 'ZORNativePlugin_types'];
        for (const name of names)
            writeFileSync(join(aside, `${name}.d.ts`), 'declare const all: any;\nexport = all;\n');
        mkdirSync(target, { recursive: true });
        const files = [
            'package.json',
            ...names.flatMap((name) => [`${name}.d.ts`, `${name}.js`]),
            'ZORNativePlugin.json',
        ];
        for (const file of files) renameSync(join(aside, file), join(target, file));
    } finally {
        rmSync(aside, { recursive: true, force: true });
    }
    process.stderr.write(`generated ${target}\n`);
}
