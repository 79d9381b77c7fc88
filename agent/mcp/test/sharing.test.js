// The host serves three connections at a time, to all programs together.
import assert from 'node:assert/strict';
import { once } from 'node:events';
import { test } from 'node:test';
import { OPERATION_IN_PROGRESS } from '../src/constants.js';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';
import { startHost } from './support/sandbox.js';

const read = { name: 'ListAllDisks', arguments: {} };

/** Waits until the connections that are open now have ended. @param {FakeService} service @param {number} ms */
async function closedWithin(service, ms) {
    const started = performance.now();
    await Promise.all([...service.sockets].map((socket) => once(socket, 'close')));
    assert.ok(performance.now() - started < ms, `${performance.now() - started} ms`);
}

/** Three gateways, connected to their clients. @param {import('node:test').TestContext} t @param {number} port */
const threeGateways = (t, port) =>
    Promise.all(Array.from({ length: 3 }, () => connect(t, { args: ['--port', String(port)] })));

test('ThreeGatewaysThatReadAtTheSameTime_AreAllAnsweredWithinTwoSeconds', async (t) => {
    const host = await startHost(t);
    const gateways = await threeGateways(t, host.port);
    const rounds = [];
    for (let round = 0; round < 5; round++) {
        const started = performance.now();
        const answers = await Promise.all(
            gateways.flatMap(({ client }) => [client.callTool(read), client.callTool(read)]),
        );
        rounds.push(performance.now() - started);
        for (const answer of answers) assert.ok(!answer.isError, text(answer));
    }
    // A busy machine can slow one round; waiting for an idle connection would slow each by five seconds.
    assert.ok(Math.min(...rounds) < 2000, `${rounds} ms`);
});

test('GatewayThatReadsWithoutPause_LeavesTurnsToTwoOthers', async (t) => {
    const host = await startHost(t);
    const [busy, also, last] = await threeGateways(t, host.port);
    let stop = false;
    // Three streams of calls, one for each connection of the host.
    const first = await Promise.all([busy, busy, also].map(({ client }) => client.callTool(read)));
    for (const answer of first) assert.ok(!answer.isError, text(answer));
    const streams = [busy, busy, also].map(async ({ client }) => {
        while (!stop) assert.ok(!(await client.callTool(read)).isError);
    });
    const reads = [];
    for (let i = 0; i < 10; i++) {
        const started = performance.now();
        assert.ok(!(await last.client.callTool(read)).isError);
        reads.push(performance.now() - started);
    }
    stop = true;
    await Promise.all(streams);
    assert.ok(reads.sort((a, b) => a - b)[5] < 1000, `${reads} ms`);
});

test('GatewayBetweenCalls_HoldsNoConnection', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    assert.ok(!(await client.callTool(read)).isError);
    await closedWithin(service, 4000);
});

test('GatewayThatWaitsForADialog_HoldsNoConnection', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    service.rejectCalls(OPERATION_IN_PROGRESS);
    const { client } = await connect(t, { args: ['--port', String(service.port), '--timeout', '5'] });
    const call = client.callTool(
        { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } },
        {
            onprogress: ({ message }) => {
                if (/dialog/.test(message ?? '')) waiting();
            },
        },
    );
    /** @type {() => void} */
    let waiting = () => {};
    await new Promise((resolve) => (waiting = () => resolve(undefined)));
    // A connection exists only while PreProcessing runs, every 250 ms.
    await closedWithin(service, 4000);
    assert.ok((await call).isError);
});
