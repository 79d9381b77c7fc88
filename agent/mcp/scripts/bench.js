// Measures the time that the gateway adds to a read: the same call through the official client and the gateway, and
// directly over Thrift, alternately, against one host. Prints the medians.
//
//     node scripts/bench.js --port N [--calls 1000]
import { parseArgs } from 'node:util';
import { fileURLToPath } from 'node:url';
import { Client } from '@modelcontextprotocol/client';
import { StdioClientTransport } from '@modelcontextprotocol/client/stdio';
import { HostConnection } from '../src/connection.js';

const { values } = parseArgs({
    options: { port: { type: 'string' }, calls: { type: 'string', default: '1000' } },
});
const port = Number(values.port ?? process.env.AGENT_NATIVE_PORT);
const count = Number(values.calls);

const direct = await HostConnection.to(port, 10000);
const client = new Client({ name: 'bench', version: '1' });
const program = fileURLToPath(new URL('../bin/aibridge-mcp.js', import.meta.url));
await client.connect(
    new StdioClientTransport({
        command: process.execPath,
        args: [program, '--port', String(port)],
        stderr: 'ignore',
    }),
);

/** @param {() => Promise<any>} call */
async function timed(call) {
    const started = performance.now();
    await call();
    return performance.now() - started;
}

/** @param {number[]} times */
const median = (times) => times.sort((a, b) => a - b)[Math.floor(times.length / 2)];

/** @type {Array<[string, any[], object]>} */
const reads = [
    ['GetPartitionInfo', ['C'], { driveLetter: 'C' }],
    ['ListAllDisks', [], {}],
    ['GetAllPartitionInfo', [], {}],
];
console.log(`medians of ${count} calls, in milliseconds`);
console.log(`${'read'.padEnd(22)}${'direct'.padStart(9)}${'gateway'.padStart(9)}${'added'.padStart(9)}`);
let maximum = 0;
for (const [method, wire, args] of reads) {
    /** @type {Record<'direct' | 'gateway', number[]>} */
    const times = { direct: [], gateway: [] };
    // The first tenth of the calls is a warm-up.
    for (let i = -count / 10; i < count; i++) {
        const directMs = await timed(() => direct.call(method, wire, 10000));
        const gatewayMs = await timed(() =>
            client.callTool({ name: method, arguments: /** @type {any} */ (args) }),
        );
        if (i >= 0) (times.direct.push(directMs), times.gateway.push(gatewayMs));
    }
    const [a, b] = [median(times.direct), median(times.gateway)];
    maximum = Math.max(maximum, b - a);
    console.log(
        `${method.padEnd(22)}${a.toFixed(3).padStart(9)}${b.toFixed(3).padStart(9)}${(b - a).toFixed(3).padStart(9)}`,
    );
}
await client.close();
direct.close();
if (maximum >= 2) {
    console.log('The gateway adds 2 ms or more.');
    process.exitCode = 1;
}
