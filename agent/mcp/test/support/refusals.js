// Calls of every tool that the inventory can check, the sandbox's own reason for each rejection, and the cause that the
// gateway finds.
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { causeOf, checks } from '../../src/causes.js';
import { TASK_QUEUED } from '../../src/constants.js';
import { HostError } from '../../src/errors.js';
import { Host } from '../../src/host.js';
import { factsAbout } from '../../src/inventory.js';
import { readOptions } from '../../src/options.js';
import { loadTable } from '../../src/table.js';
import { Deadline } from '../../src/time.js';
import { toWire } from '../../src/wire.js';
import { startHost } from './sandbox.js';

/** @import { Tool } from '../../src/types.js' */
/** @import { Facts } from '../../src/inventory.js' */

/**
 * @typedef {object} Outcome
 * @property {string} call
 * @property {string} reason the sandbox's; empty if it accepts the call
 * @property {import('../../src/checks/call.js').Cause | undefined} cause
 */

const table = loadTable();
const scope = () => ({
    deadline: new Deadline(20000),
    signal: new AbortController().signal,
    progress: () => {},
});

/**
 * Makes calls without the gate. No task ends during the test, so that the machine does not change.
 * @param {import('node:test').TestContext} t
 * @param {{ machine: string, change?: (machine: any) => void, perTool: number }} options
 * @returns {Promise<Outcome[]>}
 */
export async function outcomes(t, { machine, change, perTool }) {
    const folder = mkdtempSync(join(tmpdir(), 'aibridge-mcp-'));
    t.after(() => rmSync(folder, { recursive: true, force: true }));
    const transcript = join(folder, 'transcript');
    const { port } = await startHost(t, {
        machine,
        change: (all) => {
            change?.(all);
            all.taskMilliseconds = 2000000000;
        },
        args: ['--transcript', transcript],
    });
    const options = readOptions(['--port', String(port)], {}, Object.keys(table.groups));
    const host = new Host(options, () => {});
    t.after(() => host.close());
    const found = [];
    for (const tool of table.tools.filter(({ name }) => checks[name]))
        for (const args of await argumentsOf(host, tool, perTool)) {
            const facts = await factsAbout(host, table, tool, args, scope());
            const read = readFileSync(transcript).length;
            const answer = await host.ask(tool.name, toWire(tool, args), scope());
            const events = () =>
                readFileSync(transcript)
                    .subarray(read)
                    .toString()
                    .split('\n')
                    .slice(0, -1)
                    .map((line) => JSON.parse(line));
            // The library's signal opens these guides after the answer of the tool.
            while (answer === TASK_QUEUED && opensLater(tool) && !events().some(isOpened))
                await host.ask('Init', [], scope());
            found.push({
                call: `${tool.name} ${JSON.stringify(args)}`,
                reason: reasonOf(answer, events()),
                cause: causeOf(tool, args, facts),
            });
        }
    return found;
}

/** @param {Tool} tool */
const opensLater = (tool) =>
    tool.group === 'clone' || (tool.group === 'convert' && tool.onScreen !== undefined);
/** @param {any} event */
const isOpened = (event) => event.kind === 'guide' && event.action === 'opened';

/**
 * The host's reason for a rejection, or the guide's for not continuing. A rejection without a sentence of its own is
 * named by the call that returned false, otherwise by the answer.
 * @param {string} answer
 * @param {any[]} events
 */
function reasonOf(answer, events) {
    const calls = events.filter((e) => e.kind === 'hostCall' && e.member !== 'closeGuide');
    if (answer !== TASK_QUEUED)
        return (
            calls.findLast((e) => e.reason)?.reason ??
            calls.findLast((e) => e.result === false)?.member ??
            answer
        );
    const guide = events.findLast(isOpened);
    if (guide?.title.startsWith('Convert: ')) return guide.text;
    if (!guide?.title.startsWith('Clone: ')) return '';
    return /^step \d+: (.*)$/.exec(guide.text)?.[1] ?? (guide.canStart ? '' : 'The guide names no target.');
}

/** Different arguments of a tool, chosen by a fixed sequence. @param {Host} host @param {Tool} tool @param {number} count @returns {Promise<any[]>} */
async function argumentsOf(host, tool, count) {
    const facts = await factsAbout(host, table, { ...tool, args: [] }, {}, scope());
    const next = sequence(tool.name);
    const all = new Map();
    for (let i = 0; i < count * 8 && all.size < count; i++) {
        const args = Object.fromEntries(
            tool.args.map((arg) => {
                const values = valuesOf(arg, facts);
                return [arg.name, values[next() % values.length]];
            }),
        );
        if (isSent(tool, args)) all.set(JSON.stringify(args), args);
    }
    return [...all.values()];
}

/** False if the gateway rejects the arguments by their form. @param {Tool} tool @param {any} args */
function isSent(tool, args) {
    try {
        return toWire(tool, args).length === tool.args.length;
    } catch (error) {
        if (error instanceof HostError) return false;
        throw error;
    }
}

/** @param {import('../../src/types.js').Argument} arg @param {Facts} facts @returns {any[]} */
function valuesOf(arg, facts) {
    const letters = facts.partitions.filter((p) => /^[A-Z]/.test(p.driveLetter)).map((p) => p.driveLetter);
    const sizes = facts.partitions.flatMap((p) => [
        p.rawCapacity,
        String(BigInt(p.rawCapacity) / 2n),
        String(BigInt(p.rawCapacity) + 2n ** 30n),
        String(BigInt(p.usedSize) - 1n),
    ]);
    switch (arg.role) {
        case 'drive':
            return [...letters, ...letters, 'B'];
        case 'newLetter':
            return [...letters, 'B', 'Y', 'Z'];
        case 'disk':
            return [...facts.disks.map((d) => d.diskIndex), ...facts.disks.map((d) => d.diskIndex), 99];
        case 'region':
            return [-1, -1, 0, 1, 5];
        case 'size':
            return [...sizes, '0', '1', '1048575', '5368709120', '5368709120', '-5368709120', '107374182400', '4398046511104'];
        case 'clusterSize':
            return [0, 0, 4096, 4096, 65536, 1, 8, 5000, 8388608];
        case 'fileSystem':
            return ['NTFS', 'NTFS', 'NTFS', 'FAT32', 'exFAT', 'EXT4', 'FAT', 'ReFS', ''];
        case 'label':
            return ['', 'Data', 'Data', 'Twelve chars', 'A.B', 'x\ny', 'A label with more than thirty-two characters'];
        case 'switch':
            return [true, false];
        case 'passes':
            return [1, 3, 0, -1];
        case 'count':
            return [1, 2, 4, 5, 0, 200];
        default:
            return ['GPT', 'MBR', 'gpt', 'APM'];
    }
}

/** A fixed sequence of numbers for each name. @param {string} name */
function sequence(name) {
    let state = [...name].reduce((sum, c) => (sum * 31 + c.charCodeAt(0)) >>> 0, 7);
    return () => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return state >>> 8;
    };
}
