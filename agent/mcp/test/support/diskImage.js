import { execFileSync, spawn } from 'node:child_process';
import { once } from 'node:events';
import { closeSync, mkdtempSync, openSync, readSync, rmSync, truncateSync, writeFileSync, writeSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { startImageHost } from './sandbox.js';

const script = fileURLToPath(new URL('../../../../scripts/lib/with-disk-service', import.meta.url));
const checkers = { ntfs: ['ntfsfix', '-n'], ext4: ['e2fsck', '-f', '-n'], exfat: ['fsck.exfat', '-n'] };
const block = 1024 ** 2;

/** Starts a private disk service. Without one, address is undefined and error is a line with the cause. */
async function startDiskService() {
    const child = spawn(script, ['--private', 'sh', '-c', 'echo "$DBUS_SYSTEM_BUS_ADDRESS"; cat >/dev/null']);
    let error = '';
    child.stderr.on('data', (bytes) => (error += bytes));
    const closed = once(child, 'close');
    const firstLine = once(createInterface({ input: child.stdout }), 'line');
    const [address] = await Promise.race([firstLine, closed.then(() => [undefined])]);
    const stop = async () => {
        child.stdin.end();
        await closed;
    };
    return { address, error: () => error.trim(), stop };
}

/**
 * Runs a test with the sandbox host on a new sparse image; skips the test if this computer has no disk service.
 * @param {import('node:test').TestContext} t
 * @param {number} size in bytes
 * @param {(image: string, host: Awaited<ReturnType<typeof startImageHost>>) => Promise<void>} body
 */
export async function withImageHost(t, size, body) {
    const service = await startDiskService();
    if (service.address === undefined) return t.skip(service.error());
    const folder = mkdtempSync(join(tmpdir(), 'aibridge-mcp-'));
    try {
        const image = join(folder, 'disk.img');
        writeFileSync(image, '');
        truncateSync(image, size);
        const host = await startImageHost(image, {
            DBUS_SYSTEM_BUS_ADDRESS: service.address,
            XDG_STATE_HOME: join(folder, 'state'),
        });
        try {
            await body(image, host);
        } finally {
            await host.end('SIGTERM');
        }
    } finally {
        await service.stop();
        rmSync(folder, { recursive: true, force: true });
    }
}

/** @param {string} program @param {string[]} args */
const run = (program, ...args) => execFileSync(program, args, { encoding: 'utf8', stdio: 'pipe' }).trim();

/** The partition table as sfdisk reads it from the file. @param {string} image */
export function tableOf(image) {
    const { label, partitions = [] } = JSON.parse(run('sfdisk', '--json', image)).partitiontable;
    partitions.sort((/** @type {any} */ a, /** @type {any} */ b) => a.start - b.start);
    return { label, partitions };
}

/**
 * Start and size in MiB, file system and label as blkid reads them from the file. Fails if the file system's checker
 * reports an error.
 * @param {string} image
 * @param {any} entry
 */
export function verified(image, entry) {
    const copy = extracted(image, entry);
    try {
        const type = /** @type {keyof typeof checkers} */ (run('blkid', '-p', '-s', 'TYPE', '-o', 'value', copy));
        const label = run('blkid', '-p', '-s', 'LABEL', '-o', 'value', copy);
        const [checker, ...options] = checkers[type];
        run(checker, ...options, copy);
        return [entry.start / 2048, entry.size / 2048, type, label];
    } finally {
        rmSync(copy);
    }
}

/** A sparse copy of a partition. @param {string} image @param {any} entry */
function extracted(image, { start, size }) {
    const copy = `${image}.${start}`;
    const from = openSync(image, 'r');
    const to = openSync(copy, 'w');
    const buffer = Buffer.alloc(block);
    for (let at = 0; at < size * 512; at += block) {
        const count = readSync(from, buffer, 0, Math.min(block, size * 512 - at), start * 512 + at);
        if (buffer.some((byte) => byte !== 0)) writeSync(to, buffer, 0, count, at);
    }
    closeSync(from);
    closeSync(to);
    truncateSync(copy, size * 512);
    return copy;
}
