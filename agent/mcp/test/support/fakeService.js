import { readFileSync } from 'node:fs';
import Int64 from 'node-int64';
import thrift from 'thrift';
import ZORNativePlugin from '../../generated/ZORNativePlugin.js';
import records from '../../generated/ZORNativePlugin_types.js';
import { TASK_QUEUED } from '../../src/constants.js';
import { loadTable } from '../../src/table.js';

/** @param {bigint | number | string} value */
export function int64(value) {
    const bytes = Buffer.alloc(8);
    bytes.writeBigInt64BE(BigInt(value));
    return new Int64(bytes);
}

/** A record with default values except for the given fields. @param {'DiskInfo' | 'PartitionInfo' | 'TaskInfo'} name @param {object} [fields] */
export function record(name, fields = {}) {
    const defaults = { bool: () => false, i32: () => 0, i64: () => int64(0), string: () => '' };
    const blank = Object.fromEntries(
        loadTable().records[name].map((f) => [f.name, defaults[/** @type {'bool'} */ (f.type)]()]),
    );
    return new records[name]({ ...blank, ...fields });
}

export const disks = () => [
    record('DiskInfo', {
        diskLabel: 'SATA',
        diskIndex: 0,
        partitionCount: 2,
        serialNumber: 'SN-0',
        totalCapacity: int64(500107862016),
        displayTotalCapacity: '465.76 GB',
        isGpt: true,
    }),
    record('DiskInfo', {
        diskLabel: 'NVMe',
        diskIndex: 1,
        partitionCount: 2,
        serialNumber: 'SN-1',
        totalCapacity: int64('9223372036854775807'),
        displayTotalCapacity: '8388608.00 TB',
        isMbr: true,
    }),
];
export const partitions = () => [
    record('PartitionInfo', {
        diskIndex: 0,
        driveLetter: 'C:',
        label: 'System',
        partitionGuid: '{0b5d4f00-0000-4000-8000-000000000001}',
        startingOffset: int64(1048576),
        displayUsedSize: '50.00 GB',
        fileSystemType: 'NTFS',
        rawCapacity: int64(107374182400),
        usedSize: int64(53687091200),
        freeSize: int64(53687091200),
        displayRawCapacity: '100.00 GB',
        isCurrentBootPartition: true,
        isGpt: true,
    }),
    record('PartitionInfo', {
        diskIndex: 0,
        isUnallocated: true,
        rawCapacity: int64(10737418240),
        displayRawCapacity: '10.00 GB',
        isGpt: true,
    }),
    record('PartitionInfo', {
        diskIndex: 1,
        driveLetter: 'E:',
        label: 'Dätà',
        startSector: int64(2048),
        startingOffset: int64(1048576),
        displayUsedSize: '0 Byte',
        fileSystemType: 'exFAT',
        rawCapacity: int64('9007199254740993'),
        displayRawCapacity: '8.00 PB',
        isMbr: true,
    }),
    record('PartitionInfo', {
        diskIndex: 1,
        isUnallocated: true,
        rawCapacity: int64(1),
        displayRawCapacity: '1.00 Bytes',
        isMbr: true,
    }),
];

/** @returns {Array<[string, number]>} all methods with their number of arguments */
function argumentCounts() {
    const { services } = JSON.parse(
        readFileSync(new URL('../../generated/ZORNativePlugin.json', import.meta.url), 'utf8'),
    );
    return services[0].functions.map((/** @type {any} */ f) => [f.name, f.arguments.length]);
}

/** The generated server recognises a handler that returns a promise by its number of parameters. @param {number} count @param {(args: any[]) => any} run */
const handlerOf = (count, run) =>
    Object.defineProperty((/** @type {any[]} */ ...args) => run(args), 'length', { value: count });

/**
 * A scripted service: `answer` maps a method to its answer (a value, or a function of its arguments that may be async),
 * and `calls` records every call. Tools without an answer return TASK_QUEUED.
 */
export class FakeService {
    constructor() {
        /** @type {Array<{ method: string, args: any[] }>} */
        this.calls = [];
        /** @type {Record<string, any>} */
        this.answer = {
            Init: true,
            PreProcessing: () => new records.TaskInfo({ allow: true, reasons: '' }),
            PostProcessing: (/** @type {string} */ text) => text === TASK_QUEUED,
            ListAllDisks: disks,
            GetAllPartitionInfo: partitions,
            ListPartitionsOnDisk: (/** @type {number} */ index) =>
                partitions().filter((p) => p.diskIndex === index),
            GetPartitionInfo: (/** @type {string} */ letter) =>
                partitions().find((p) => p.driveLetter.startsWith(letter.slice(0, 1).toUpperCase())) ??
                record('PartitionInfo'),
        };
        /** @type {Set<import('node:net').Socket>} */
        this.sockets = new Set();
        /** @type {import('node:net').Server | undefined} */
        this.server = undefined;
    }

    /** @param {number} [port] 0 for any free port */
    async start(port = 0) {
        const handler = Object.fromEntries(
            argumentCounts().map(([method, count]) => [
                method,
                handlerOf(count, (args) => this.handle(method, args)),
            ]),
        );
        const server = thrift.createServer(ZORNativePlugin, handler, {
            transport: thrift.TBufferedTransport,
            protocol: thrift.TBinaryProtocol,
        });
        server.on('connection', (/** @type {import('node:net').Socket} */ socket) => {
            this.sockets.add(socket);
            socket.on('error', () => {});
            socket.on('close', () => this.sockets.delete(socket));
        });
        this.server = server;
        await new Promise((resolve, reject) =>
            server.once('error', reject).listen(port, '127.0.0.1', () => resolve(undefined)),
        );
        return this.port;
    }

    get port() {
        return /** @type {import('node:net').AddressInfo} */ (this.server?.address()).port;
    }

    /** Closes every connection as a killed process does, and stops listening. */
    async stop() {
        const closed = new Promise((resolve) => this.server?.close(() => resolve(undefined)));
        this.cut();
        await closed;
    }

    cut() {
        for (const socket of this.sockets) socket.destroy();
    }

    /** @param {string} method @param {any[]} args */
    async handle(method, args) {
        this.calls.push({ method, args });
        const answer = method in this.answer ? this.answer[method] : TASK_QUEUED;
        return typeof answer === 'function' ? answer(...args) : answer;
    }

    /** The names of the calls, in order. */
    names() {
        return this.calls.map((call) => call.method);
    }

    /** The calls of the gate and of tools that act; the gateway reads the inventory around them. */
    acting() {
        const reads = ['Init', 'ListAllDisks', 'GetAllPartitionInfo', 'ListPartitionsOnDisk', 'GetPartitionInfo'];
        return this.calls.filter((call) => !reads.includes(call.method));
    }

    /** PreProcessing rejects every call from now on. @param {string} reasons */
    rejectCalls(reasons) {
        this.answer.PreProcessing = () => new records.TaskInfo({ allow: false, reasons });
    }
}
