import assert from 'node:assert/strict';
import { createServer as createHttp } from 'node:http';
import { createConnection, createServer } from 'node:net';
import { once } from 'node:events';
import { test } from 'node:test';
import { TASK_QUEUED } from '../src/constants.js';
import { HostError } from '../src/errors.js';
import { Host } from '../src/host.js';
import { readOptions } from '../src/options.js';
import { Deadline } from '../src/time.js';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const read = { name: 'ListAllDisks', arguments: {} };
const label = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } };

/** @param {import('node:test').TestContext} t @param {number} [port] */
async function startService(t, port) {
    const service = new FakeService();
    await service.start(port);
    t.after(() => service.stop());
    return service;
}

/** A port without a listener. */
async function closedPort() {
    const service = new FakeService();
    const port = await service.start();
    await service.stop();
    return port;
}

/** @param {import('node:test').TestContext} t @param {import('node:net').Server} server */
async function listen(t, server) {
    await new Promise((resolve) => server.listen(0, '127.0.0.1', () => resolve(undefined)));
    t.after(() => server.close());
    return /** @type {import('node:net').AddressInfo} */ (server.address()).port;
}

/** @param {() => Promise<any>} call @param {number} limitMs */
async function failsWithin(call, limitMs) {
    const started = performance.now();
    const answer = await call();
    const took = performance.now() - started;
    assert.ok(answer.isError, text(answer));
    assert.ok(took <= limitMs, `${took} ms`);
    return text(answer);
}

test('UnreachableHost_HandshakeAndListWorkAndCallsFailImmediatelyUntilItStarts', async (t) => {
    const port = await closedPort();
    const { client } = await connect(t, { args: ['--port', String(port)] });
    assert.ok((await client.listTools()).tools.length > 0);
    assert.deepEqual(
        (await client.listResources()).resources.map((r) => r.uri),
        ['aibridge://disks'],
    );
    for (const call of [read, label]) {
        const message = await failsWithin(() => client.callTool(call), 10000);
        assert.match(
            message,
            /not running or not reachable\. No program listens on port \d+ of this computer, which --port specifies\./,
        );
        assert.match(message, /Ask the user to start it, then call the tool again/);
    }
    await startService(t, port);
    assert.ok(!(await client.callTool(read)).isError);
    assert.ok(!(await client.callTool(label)).isError);
});

test('UnreachableHost_FailsAResourceWithTheSameMessage', async (t) => {
    const { client } = await connect(t, { args: ['--port', String(await closedPort())] });
    await assert.rejects(client.readResource({ uri: 'aibridge://disks' }), /not running or not reachable/);
});

test('HostKilledDuringATool_ReportsAnUnknownOutcomeAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    service.answer.ChangePartitionLabel = () => (service.cut(), new Promise(() => {}));
    const message = await failsWithin(() => client.callTool(label), 10000);
    assert.match(
        message,
        /closed the connection before it answered\. Whether it accepted the order is unknown\. Do NOT simply repeat the call: WaitForChange shows whether/,
    );
    service.answer.ChangePartitionLabel = TASK_QUEUED;
    assert.ok(!(await client.callTool(label)).isError);
});

test('HostKilledDuringARead_FailsImmediatelyAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const answer = service.answer.ListAllDisks;
    service.answer.ListAllDisks = () => (service.cut(), new Promise(() => {}));
    assert.match(await failsWithin(() => client.callTool(read), 10000), /closed before the answer arrived/);
    service.answer.ListAllDisks = answer;
    assert.ok(!(await client.callTool(read)).isError);
});

test('RestartedHost_IsReachedByTheNextCall', async (t) => {
    const first = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(first.port)] });
    assert.ok(!(await client.callTool(read)).isError);
    const port = first.port;
    await first.stop();
    await startService(t, port);
    assert.ok(!(await client.callTool(read)).isError);
});

test('HostThatNeverAnswersARead_FailsWithinTheTimeLimitAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port), '--timeout', '3'] });
    const answer = service.answer.ListAllDisks;
    service.answer.ListAllDisks = () => new Promise(() => {});
    assert.match(
        await failsWithin(() => client.callTool(read), 12000),
        /did not answer ListAllDisks within [\d.]+ s/,
    );
    service.answer.ListAllDisks = answer;
    assert.ok(!(await client.callTool(read)).isError);
});

test('HostThatAnswersAToolTooLate_FailsWithinTheTimeLimitAndStillGetsPostProcessing', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port), '--timeout', '3'] });
    /** @type {(answer: string) => void} */
    let answerLate = () => {};
    service.answer.ChangePartitionLabel = () => new Promise((resolve) => (answerLate = resolve));
    assert.match(
        await failsWithin(() => client.callTool(label), 12000),
        /was sent, but the disk manager did not answer within 3 s\. Whether it accepted the order is unknown/,
    );
    // Tools that read continue; tools that act wait for the unanswered one.
    assert.ok(!(await client.callTool(read)).isError);
    assert.match(
        await failsWithin(() => client.callTool(label), 12000),
        /has not answered the earlier call ChangePartitionLabel yet/,
    );
    const reported = new Promise((resolve) => (service.answer.PostProcessing = resolve));
    answerLate(TASK_QUEUED);
    assert.equal(await reported, TASK_QUEUED);
});

test('HostThatNeverAnswersInit_FailsWithinTheTimeLimit', async (t) => {
    const port = await listen(
        t,
        createServer(() => {}),
    );
    const { client } = await connect(t, { args: ['--port', String(port), '--timeout', '3'] });
    assert.match(
        await failsWithin(() => client.callTool(read), 12000),
        /accepted the connection but did not answer Init within [\d.]+ s/,
    );
});

test('HostThatNeverAnswers_DoesNotDelayTheListOfResources', async (t) => {
    const port = await listen(
        t,
        createServer(() => {}),
    );
    const { client } = await connect(t, { args: ['--port', String(port)] });
    const started = performance.now();
    assert.deepEqual(
        (await client.listResources()).resources.map((r) => r.uri),
        ['aibridge://disks'],
    );
    assert.ok(performance.now() - started < 8000);
});

test('PortOfAnotherProgram_IsReportedAsTheWrongService', async (t) => {
    const http = await listen(
        t,
        createHttp((_, response) => response.end()),
    );
    const banner = await listen(
        t,
        createServer((socket) => socket.on('error', () => {}).write('220 mail.example ready\r\n')),
    );
    for (const port of [http, banner]) {
        const { client } = await connect(t, { args: ['--port', String(port)] });
        assert.match(
            await failsWithin(() => client.callTool(read), 12000),
            /is not the disk manager's agent service\. Ask the user for the right port/,
        );
    }
});

/**
 * A proxy to the service. While truncate(true) is in effect, it closes each connection after the first ten bytes of
 * the answer.
 * @param {import('node:test').TestContext} t
 * @param {number} servicePort
 */
async function truncatingProxy(t, servicePort) {
    let truncated = false;
    const proxy = createServer((socket) => {
        const service = createConnection(servicePort, '127.0.0.1');
        for (const end of [socket, service]) end.on('error', () => {});
        socket.pipe(service);
        service.on('data', (bytes) => (truncated ? socket.end(bytes.subarray(0, 10)) : socket.write(bytes)));
        socket.on('close', () => service.destroy());
        service.on('close', () => socket.destroy());
    });
    return { port: await listen(t, proxy), truncate: (/** @type {boolean} */ yes) => (truncated = yes) };
}

test('ServiceThatClosesWithinAMessage_FailsImmediatelyAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const proxy = await truncatingProxy(t, service.port);
    const { client } = await connect(t, { args: ['--port', String(proxy.port)] });
    assert.ok(!(await client.callTool(read)).isError);
    proxy.truncate(true);
    assert.match(await failsWithin(() => client.callTool(read), 12000), /closed before the answer arrived/);
    assert.match(await failsWithin(() => client.callTool(label), 12000), /closed before the answer arrived/);
    assert.ok(!service.names().includes('ChangePartitionLabel'));
    proxy.truncate(false);
    assert.ok(!(await client.callTool(read)).isError);
});

test('ExceptionOfTheService_IsReportedAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const answer = service.answer.ListAllDisks;
    service.answer.ListAllDisks = () => Promise.reject(new Error('no'));
    assert.match(
        await failsWithin(() => client.callTool(read), 10000),
        /answered ListAllDisks with an exception/,
    );
    service.answer.ListAllDisks = answer;
    assert.ok(!(await client.callTool(read)).isError);
});

/** A server that never answers, and the service on the next port. @param {import('node:test').TestContext} t */
async function silentServerThenService(t) {
    for (let i = 0; i < 50; i++) {
        const silent = createServer((socket) => socket.on('error', () => {}));
        const port = await listen(t, silent);
        const service = await startService(t, port + 1).catch(() => undefined);
        if (service) return port;
    }
    throw new Error('No two consecutive ports are free.');
}

test('Search_SkipsAnotherProgramAndFindsTheService', async (t) => {
    const from = await silentServerThenService(t);
    const scope = { deadline: new Deadline(20000), signal: new AbortController().signal, progress: () => {} };
    const host = new Host({ ...readOptions([], {}, []), searchFrom: from, searchCount: 2 }, () => {});
    t.after(() => host.close());
    assert.equal(await host.ask('Init', [], scope), true);
    assert.equal(host.finder.last?.port, from + 1);
});

test('SearchWithoutAService_FailsWithTheRange', async () => {
    const port = await closedPort();
    const options = { ...readOptions([], {}, []), searchFrom: port, searchCount: 1 };
    const scope = { deadline: new Deadline(5000), signal: new AbortController().signal, progress: () => {} };
    await assert.rejects(new Host(options, () => {}).ask('Init', [], scope), (error) => {
        assert.ok(error instanceof HostError);
        assert.equal(error.kind, 'unreachable');
        assert.match(error.message, new RegExp(`No port from ${port} to ${port}`));
        return true;
    });
});

test('Gateway_ExitsWithItsClientEvenDuringATool', async (t) => {
    const service = await startService(t);
    const { client, transport } = await connect(t, { args: ['--port', String(service.port)] });
    const pid = /** @type {number} */ (transport.pid);
    const called = new Promise(
        (resolve) =>
            (service.answer.ChangePartitionLabel = () => (resolve(undefined), new Promise(() => {}))),
    );
    client.callTool(label).catch(() => {});
    await called;
    // @ts-expect-error the child process is private to the transport
    const child = transport._process;
    const exited = once(child, 'exit');
    child.stdin.end();
    const [code] = await exited;
    assert.equal(code, 0);
    assert.throws(() => process.kill(pid, 0), /ESRCH/);
});
