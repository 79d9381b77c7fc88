import assert from 'node:assert/strict';
import { createServer } from 'node:net';
import { test } from 'node:test';
import { listenerOn, processesIn, sameHost, socketsIn } from '../src/program.js';

const netstat = [
    'Aktive Verbindungen',
    '',
    '  Proto  Lokale Adresse         Remoteadresse          Status           PID',
    '  TCP    0.0.0.0:135            0.0.0.0:0              ABHÖREN          1084',
    '  TCP    127.0.0.1:9090         0.0.0.0:0              ABHÖREN          4711',
    '  TCP    127.0.0.1:9090         127.0.0.1:50123        HERGESTELLT      4711',
    '  TCP    127.0.0.1:50123        127.0.0.1:9090         HERGESTELLT      815',
    '  TCP    127.0.0.1:19090        0.0.0.0:0              ABHÖREN          99',
    '  TCP    [::1]:9090             [::]:0                 ABHÖREN          4712',
    '  UDP    0.0.0.0:9090           *:*                                     7',
].join('\r\n');

test('ProcessesOfAPort_AreThoseThatListenOnItInAnyLanguageOfWindows', () => {
    assert.deepEqual(processesIn(netstat, 9090), ['4711', '4712']);
    assert.deepEqual(processesIn(netstat, 9091), []);
    assert.deepEqual(processesIn('', 9090), []);
});

const table = [
    '  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode',
    '   0: 0100007F:2382 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 4711 1 0 100 0 0 10 0',
    '   1: 0100007F:2382 0100007F:C3CB 01 00000000:00000000 00:00000000 00000000  1000        0 4712 1 0 20 4 30 10 -1',
    '   2: 0100007F:2383 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 4713 1 0 100 0 0 10 0',
].join('\n');

test('SocketsOfAPort_AreThoseThatListenOnIt', () => {
    assert.deepEqual(socketsIn(table, 9090), ['4711']);
    assert.deepEqual(socketsIn(table, 9092), []);
});

test('RestartedProgramOnTheSamePort_IsIdentifiedAsAnother', async (t) => {
    const listen = (/** @type {number} */ port) =>
        new Promise((resolve) => {
            const server = createServer().listen(port, '127.0.0.1', () => resolve(server));
        });
    const first = await listen(0);
    const { port } = first.address();
    const before = await listenerOn(port);
    assert.equal(await listenerOn(port), before);
    await new Promise((resolve) => first.close(resolve));
    assert.equal(await listenerOn(port), undefined);
    const second = await listen(port);
    t.after(() => second.close());
    const after = await listenerOn(port);
    if (before === undefined) return t.skip('this system does not identify the program of a port');
    assert.notEqual(after, before);
    assert.ok(!sameHost({ port, program: before }, { port, program: after }));
});

test('HostWithAnUnknownProgram_IsIdentifiedByItsPort', () => {
    assert.ok(sameHost({ port: 1, program: undefined }, { port: 1, program: '7' }));
    assert.ok(!sameHost({ port: 1, program: '7' }, { port: 2, program: '7' }));
});
