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

/** A port on which nothing listens now. */
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

test('HostAbsent_HandshakeAndListWorkAndACallFailsAtOnceThenWorksOnceItIsThere', async (t) => {
    const port = await closedPort();
    const { client } = await connect(t, { args: ['--port', String(port)] });
    assert.ok((await client.listTools()).tools.length > 0);
    assert.deepEqual(
        (await client.listResources()).resources.map((r) => r.uri),
        ['aibridge://disks'],
    );
    for (const call of [read, label]) {
        const why = await failsWithin(() => client.callTool(call), 10000);
        assert.match(
            why,
            /not running or cannot be reached: nothing answers on port \d+ of this computer, which --port names/,
        );
        assert.match(why, /Ask the user to start it, and call the tool again then/);
    }
    await startService(t, port);
    assert.ok(!(await client.callTool(read)).isError);
    assert.ok(!(await client.callTool(label)).isError);
});

test('HostAbsentAtAResource_FailsWithTheSameWords', async (t) => {
    const { client } = await connect(t, { args: ['--port', String(await closedPort())] });
    await assert.rejects(
        client.readResource({ uri: 'aibridge://disks' }),
        /not running or cannot be reached/,
    );
});

test('HostKilledInMidCall_SaysThatTheOutcomeIsUnknownAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    service.answer.ChangePartitionLabel = () => (service.cut(), new Promise(() => {}));
    const why = await failsWithin(() => client.callTool(label), 10000);
    assert.match(
        why,
        /ended the connection before it answered\. Whether it took the order is not known\. Do NOT simply repeat the call/,
    );
    service.answer.ChangePartitionLabel = TASK_QUEUED;
    assert.ok(!(await client.callTool(label)).isError);
});

test('HostKilledInMidRead_FailsAtOnceAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const answer = service.answer.ListAllDisks;
    service.answer.ListAllDisks = () => (service.cut(), new Promise(() => {}));
    assert.match(await failsWithin(() => client.callTool(read), 10000), /ended before it answered/);
    service.answer.ListAllDisks = answer;
    assert.ok(!(await client.callTool(read)).isError);
});

test('HostStartedAnew_IsReachedByTheNextCall', async (t) => {
    const first = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(first.port)] });
    assert.ok(!(await client.callTool(read)).isError);
    const port = first.port;
    await first.stop();
    await startService(t, port);
    assert.ok(!(await client.callTool(read)).isError);
});

test('HostThatNeverAnswersARead_FailsWithinTheLimitAndTheNextCallWorks', async (t) => {
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

test('HostThatAnswersAToolTooLate_FailsWithinTheLimitAndStillGetsItsPostProcessing', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port), '--timeout', '3'] });
    /** @type {(answer: string) => void} */
    let answerLate = () => {};
    service.answer.ChangePartitionLabel = () => new Promise((resolve) => (answerLate = resolve));
    assert.match(
        await failsWithin(() => client.callTool(label), 12000),
        /was sent, and the disk manager did not answer within 3 s\. Whether it took the order is not known/,
    );
    // Tools that read go on; tools that act wait for the one that is out.
    assert.ok(!(await client.callTool(read)).isError);
    assert.match(
        await failsWithin(() => client.callTool(label), 12000),
        /has not answered the earlier call ChangePartitionLabel yet/,
    );
    const reported = new Promise((resolve) => (service.answer.PostProcessing = resolve));
    answerLate(TASK_QUEUED);
    assert.equal(await reported, TASK_QUEUED);
});

test('HostThatNeverAnswersTheHandshake_FailsWithinTheLimit', async (t) => {
    const port = await listen(
        t,
        createServer(() => {}),
    );
    const { client } = await connect(t, { args: ['--port', String(port), '--timeout', '3'] });
    assert.match(
        await failsWithin(() => client.callTool(read), 12000),
        /accepted the connection and did not answer Init within [\d.]+ s/,
    );
});

test('HostThatNeverAnswers_DoesNotHoldUpTheListOfResources', async (t) => {
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

test('PortOfAnotherProgram_IsNamedAsSuch', async (t) => {
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
 * A way to the service that ends, from the moment that spoil() is called, each connection after the first ten bytes
 * of what the service answers.
 * @param {import('node:test').TestContext} t
 * @param {number} servicePort
 */
async function cuttingProxy(t, servicePort) {
    let spoilt = false;
    const proxy = createServer((socket) => {
        const service = createConnection(servicePort, '127.0.0.1');
        for (const end of [socket, service]) end.on('error', () => {});
        socket.pipe(service);
        service.on('data', (bytes) => (spoilt ? socket.end(bytes.subarray(0, 10)) : socket.write(bytes)));
        socket.on('close', () => service.destroy());
        service.on('close', () => socket.destroy());
    });
    return { port: await listen(t, proxy), spoil: (/** @type {boolean} */ yes) => (spoilt = yes) };
}

test('ServiceThatClosesInMidMessage_FailsAtOnceAndTheNextCallWorks', async (t) => {
    const service = await startService(t);
    const proxy = await cuttingProxy(t, service.port);
    const { client } = await connect(t, { args: ['--port', String(proxy.port)] });
    assert.ok(!(await client.callTool(read)).isError);
    proxy.spoil(true);
    assert.match(await failsWithin(() => client.callTool(read), 12000), /ended before it answered/);
    assert.match(await failsWithin(() => client.callTool(label), 12000), /ended before it answered/);
    assert.ok(!service.names().includes('ChangePartitionLabel'));
    proxy.spoil(false);
    assert.ok(!(await client.callTool(read)).isError);
});

test('ServiceThatAnswersWithAnException_IsReportedAndKept', async (t) => {
    const service = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    const answer = service.answer.ListAllDisks;
    service.answer.ListAllDisks = () => Promise.reject(new Error('no'));
    assert.match(await failsWithin(() => client.callTool(read), 10000), /refused ListAllDisks/);
    service.answer.ListAllDisks = answer;
    assert.ok(!(await client.callTool(read)).isError);
    assert.equal(service.names().filter((name) => name === 'Init').length, 1);
});

/** A program that never says a word, and the service on the next port. @param {import('node:test').TestContext} t */
async function muteThenService(t) {
    for (let i = 0; i < 50; i++) {
        const mute = createServer((socket) => socket.on('error', () => {}));
        const port = await listen(t, mute);
        const service = await startService(t, port + 1).catch(() => undefined);
        if (service) return port;
    }
    throw new Error('no two ports in a row are free');
}

test('Search_PassesOverAnotherProgramAndFindsTheService', async (t) => {
    const from = await muteThenService(t);
    const scope = { deadline: new Deadline(20000), signal: new AbortController().signal, progress: () => {} };
    const host = new Host({ ...readOptions([], {}, []), searchFrom: from, searchCount: 2 }, () => {});
    t.after(() => host.close());
    assert.equal(await host.ask('Init', [], scope), true);
    assert.equal(host.finder.last, from + 1);
});

test('SearchWithoutAService_EndsAndNamesTheRange', async () => {
    const port = await closedPort();
    const options = { ...readOptions([], {}, []), searchFrom: port, searchCount: 1 };
    const scope = { deadline: new Deadline(5000), signal: new AbortController().signal, progress: () => {} };
    await assert.rejects(new Host(options, () => {}).ask('Init', [], scope), (error) => {
        assert.ok(error instanceof HostError);
        assert.equal(error.kind, 'absent');
        assert.match(error.message, new RegExp(`no port from ${port} to ${port}`));
        return true;
    });
});

test('Gateway_EndsWithItsClientEvenWithAToolUnderWay', async (t) => {
    const service = await startService(t);
    const { client, transport } = await connect(t, { args: ['--port', String(service.port)] });
    const pid = /** @type {number} */ (transport.pid);
    const called = new Promise(
        (resolve) =>
            (service.answer.ChangePartitionLabel = () => (resolve(undefined), new Promise(() => {}))),
    );
    client.callTool(label).catch(() => {});
    await called;
    // @ts-expect-error the child process is the transport's own
    const child = transport._process;
    const exited = once(child, 'exit');
    child.stdin.end();
    const [code] = await exited;
    assert.equal(code, 0);
    assert.throws(() => process.kill(pid, 0), /ESRCH/);
});
