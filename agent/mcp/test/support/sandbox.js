import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../../../../', import.meta.url));
/** Folder of zorhost, zorcall and the library. */
export const binaries = process.env.AIBRIDGE_BIN ?? join(root, 'build', 'bin');

// The host chooses its port before it binds it. If another program takes it in between, the exit code is 1.
const attempts = 10;
const notListening = 1;

/**
 * Starts the sandbox host with one of the included machines.
 * @param {import('node:test').TestContext} t ends the host at its end
 * @param {{ machine?: string, change?: (machine: any) => void, args?: string[] }} [options] change edits a copy of the machine file
 */
export async function startHost(t, { machine = 'desktop', change, args = [] } = {}) {
    const file = change ? editedMachine(t, machine, change) : machine;
    const host = await start(['--machine', file, ...args]);
    t.after(host.kill);
    return host;
}

/**
 * Starts the sandbox host on a disk image. The caller ends it with SIGTERM, so that it detaches the image.
 * @param {string} image
 * @param {Record<string, string>} env
 */
export const startImageHost = (image, env) => start(['--image', image], env);

/** @param {string[]} args @param {Record<string, string>} [env] */
async function start(args, env = {}) {
    for (let i = 0; i < attempts; i++) {
        const host = await startOnce(args, env);
        if (host) return host;
    }
    throw new Error(`zorhost did not find a free port in ${attempts} attempts.`);
}

/** @param {string[]} args @param {Record<string, string>} env */
async function startOnce(args, env) {
    const child = spawn(join(binaries, 'zorhost'), ['--headless', ...args], {
        env: { ...process.env, QT_QPA_PLATFORM: 'offscreen', ...env },
        stdio: ['ignore', 'pipe', 'pipe'],
    });
    let errors = '';
    child.stderr.on('data', (bytes) => (errors += bytes));
    /** @type {string[]} */
    const log = [];
    const exited = once(child, 'exit');
    const port = await new Promise((resolve, reject) => {
        createInterface({ input: child.stdout }).on('line', (line) => {
            log.push(line);
            const found = /agent service on .*:(\d+)/.exec(line);
            if (found) resolve(Number(found[1]));
        });
        child.once('error', reject);
        child.once('exit', (code) =>
            code === notListening
                ? resolve(undefined)
                : reject(new Error(`zorhost exited with ${code}: ${errors}`)),
        );
    });
    if (port === undefined) return undefined;
    const end = async (/** @type {NodeJS.Signals} */ signal) => {
        child.kill(signal);
        await exited;
    };
    return { port: /** @type {number} */ (port), log, end, kill: () => end('SIGKILL'), child };
}

/** @param {import('node:test').TestContext} t @param {string} machine @param {(machine: any) => void} change */
function editedMachine(t, machine, change) {
    const folder = mkdtempSync(join(tmpdir(), 'aibridge-mcp-'));
    t.after(() => rmSync(folder, { recursive: true, force: true }));
    const content = JSON.parse(readFileSync(join(root, 'host', 'machines', `${machine}.json`), 'utf8'));
    change(content);
    const file = join(folder, 'machine.json');
    writeFileSync(file, JSON.stringify(content));
    return file;
}

/**
 * The lines that zorcall prints.
 * @param {number} port
 * @param {string[]} words
 * @returns {Promise<string[]>}
 */
export async function zorcall(port, ...words) {
    const child = spawn(join(binaries, 'zorcall'), ['--port', String(port), ...words], {
        stdio: ['ignore', 'pipe', 'pipe'],
    });
    let printed = '';
    child.stdout.on('data', (bytes) => (printed += bytes));
    await once(child, 'close');
    return printed.trim().split('\n');
}

/** Parses JSON with every number as a string, so that all digits are kept. @param {string} json */
export const parseDigits = (json) => JSON.parse(json.replace(/(": |\[|, )(-?\d+)(?=[,}\]])/g, '$1"$2"'));
