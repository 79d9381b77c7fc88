import { execFile } from 'node:child_process';
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { promisify } from 'node:util';

// The service does not identify itself. The program that listens on its port shows that a host has been restarted.
const netstatMs = 3000;

/**
 * Identifies the program that listens on a port of this computer: the process on Windows, its socket on Linux. Undefined
 * if the operating system does not report it.
 * @param {number} port
 * @returns {Promise<string | undefined>}
 */
export async function listenerOn(port) {
    const read = readers[process.platform];
    const found = read ? await read(port).catch(() => []) : [];
    return found.length > 0 ? [...new Set(found)].sort().join(' ') : undefined;
}

/** @type {Record<string, (port: number) => Promise<string[]>>} */
const readers = {
    linux: async (port) => {
        const tables = await Promise.all(
            ['/proc/net/tcp', '/proc/net/tcp6'].map((path) => readFile(path, 'utf8').catch(() => '')),
        );
        return tables.flatMap((table) => socketsIn(table, port));
    },
    win32: async (port) => {
        const netstat = join(process.env.SystemRoot ?? 'C:\\Windows', 'System32', 'netstat.exe');
        const { stdout } = await promisify(execFile)(netstat, ['-ano'], {
            timeout: netstatMs,
            windowsHide: true,
        });
        return processesIn(stdout, port);
    },
};

/** The inodes of the sockets that listen on the port, in a table of /proc/net. @param {string} table @param {number} port */
export function socketsIn(table, port) {
    const listening = '0A';
    const hexPort = port.toString(16).toUpperCase().padStart(4, '0');
    return table.split('\n').flatMap((row) => {
        const [, local = '', , state, , , , , , inode] = row.trim().split(/\s+/);
        return state === listening && local.endsWith(`:${hexPort}`) ? [inode] : [];
    });
}

/** The processes that listen on the port, in the output of netstat -ano. @param {string} output @param {number} port */
export function processesIn(output, port) {
    return output.split(/\r?\n/).flatMap((row) => {
        const [protocol, local = '', foreign = '', ...rest] = row.trim().split(/\s+/);
        // The name of the state is translated, but only a listening socket has the foreign port 0.
        const listens = protocol === 'TCP' && local.endsWith(`:${port}`) && foreign.endsWith(':0');
        return listens ? [rest[rest.length - 1]] : [];
    });
}

/** @import { HostId } from './types.js' */

/** @param {HostId} a @param {HostId} b */
export const sameHost = (a, b) =>
    a.port === b.port && (a.program === undefined || b.program === undefined || a.program === b.program);
