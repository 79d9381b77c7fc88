// The official client over standard input and output, with the real sandbox host.
import assert from 'node:assert/strict';
import { createConnection, createServer } from 'node:net';
import { test } from 'node:test';
import { OPERATION_IN_PROGRESS, TASK_QUEUED, TASKS_IN_EXECUTION } from '../src/constants.js';
import { ownTools } from '../src/gateway.js';
import { loadTable } from '../src/table.js';
import { connect, text } from './support/client.js';
import { startHost } from './support/sandbox.js';

const queued = new RegExp(`^"${TASK_QUEUED}"`);
const gib = 1024n ** 3n;

/** @typedef {import('@modelcontextprotocol/client').Client} Client */

/** @param {Client} client @param {string} name @param {object} [args] */
const call = (client, name, args = {}) => client.callTool({ name, arguments: /** @type {any} */ (args) });

/** @param {Client} client @param {number} diskIndex @returns {Promise<any[]>} */
const partitionsOn = async (client, diskIndex) =>
    /** @type {any} */ ((await call(client, 'ListPartitionsOnDisk', { diskIndex })).structuredContent)
        .partitions;

/**
 * Rereads a disk until wanted() returns a result. The host executes orders asynchronously.
 * @param {Client} client
 * @param {number} diskIndex
 * @param {(partitions: any[]) => any} wanted
 */
async function untilShown(client, diskIndex, wanted) {
    const end = performance.now() + 15000;
    for (;;) {
        const partitions = await partitionsOn(client, diskIndex);
        const found = wanted(partitions);
        if (found) return found;
        if (performance.now() > end)
            assert.fail(`the inventory does not show the effect: ${JSON.stringify(partitions)}`);
    }
}

test('HandshakeListAndRead_ShowTheIncludedMachine', async (t) => {
    const host = await startHost(t);
    const { client } = await connect(t, { args: ['--port', String(host.port), '--tools', 'all'] });
    assert.equal(client.getServerVersion()?.name, 'aibridge-mcp');
    assert.equal((await client.listTools()).tools.length, loadTable().tools.length + ownTools.length);
    const answer = await call(client, 'ListAllDisks');
    const { disks } = /** @type {any} */ (answer.structuredContent);
    // The values of the machine file.
    assert.deepEqual(
        disks.map((/** @type {any} */ d) => [d.diskLabel, d.totalCapacity]),
        [
            ['NVMe', '1000204886016'],
            ['SATA', '4000787030016'],
            ['SATA', '250059350016'],
            ['USB', '64023257088'],
        ],
    );
    assert.match(text(answer), /Disk 1: "SATA", .*4000787030016 bytes.*MBR/);
});

test('CreateFormatAndLabel_AppearInTheInventory', async (t) => {
    const host = await startHost(t);
    const { client } = await connect(t, {
        args: ['--port', String(host.port)],
        elicit: () => ({ action: 'accept', content: { confirm: true } }),
    });
    const before = (await partitionsOn(client, 0)).length;
    const created = await call(client, 'CreatePartition', {
        diskIndex: 0,
        capacity: String(10n * gib),
        fileSystem: 'NTFS',
        label: 'Agent',
        unallocatedIndex: -1,
    });
    assert.match(text(created), queued);
    const fresh = await untilShown(
        client,
        0,
        (all) => all.length > before && all.find((p) => p.label === 'Agent'),
    );
    assert.equal(fresh.fileSystemType, 'NTFS');
    const letter = fresh.driveLetter.slice(0, 1);

    assert.match(
        text(
            await call(client, 'FormatPartition', {
                driveLetter: letter,
                fileSystem: 'exFAT',
                label: 'Formatted',
                clusterSize: 0,
                quickFormat: true,
            }),
        ),
        queued,
    );
    await untilShown(client, 0, (all) =>
        all.find((p) => p.label === 'Formatted' && p.fileSystemType === 'exFAT'),
    );

    assert.match(
        text(await call(client, 'ChangePartitionLabel', { driveLetter: letter, newLabel: 'Lästig' })),
        queued,
    );
    await untilShown(client, 0, (all) => all.find((p) => p.label === 'Lästig'));
    const one = /** @type {any} */ (
        (await call(client, 'GetPartitionInfo', { driveLetter: letter })).structuredContent
    );
    assert.deepEqual(
        [one.label, one.fileSystemType, one.rawCapacity],
        ['Lästig', 'exFAT', String(10n * gib)],
    );
});

test('PartitionBeyondTheLimitOfMbr_IsNotCalledForThatCause', async (t) => {
    const host = await startHost(t);
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    const answer = await call(client, 'CreatePartition', {
        diskIndex: 1,
        capacity: String(10n * gib),
        fileSystem: 'NTFS',
        label: 'x',
        unallocatedIndex: -1,
    });
    assert.ok(answer.isError);
    assert.match(text(answer), /was not called.*would end beyond 2 TiB/);
});

test('AbsentTarget_IsReportedBeforeTheUserIsAsked', async (t) => {
    const host = await startHost(t);
    const { client } = await connect(t, {
        args: ['--port', String(host.port), '--tools', 'all'],
        elicit: () => assert.fail('asked'),
    });
    const format = { driveLetter: 'Q', fileSystem: 'NTFS', label: 'x', clusterSize: 0, quickFormat: true };
    const answer = await call(client, 'FormatPartition', format);
    assert.ok(answer.isError);
    assert.match(text(answer), /does not contain drive Q:\. Its drives: C, D, E, F, G, H\./);
    // The service itself would queue this conversion.
    const conversion = await call(client, 'ConvertDiskToGpt', { diskIndex: 9 });
    assert.ok(conversion.isError);
    assert.match(text(conversion), /Disk 9 does not exist\. The disks are 0, 1, 2, 3\./);
    assert.ok(!host.log.some((line) => line.includes('guide opened')));
});

test('SplitPartition_ExplainsHowToFindTheLetterOfTheNewDrive', async (t) => {
    const host = await startHost(t);
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    const split = {
        driveLetter: 'D',
        newPartitionCapacity: String(20n * gib),
        newPartitionFileSystem: 'NTFS',
        newPartitionLabel: 'New',
    };
    const answer = text(await call(client, 'SplitPartition', split));
    assert.match(answer, queued);
    assert.match(answer, /ListPartitionsOnDisk \(diskIndex 0\).*the entry after D:/);
});

test('Elicitation_RunsTheToolOnlyIfAccepted', async (t) => {
    const host = await startHost(t);
    let reply = /** @type {any} */ ({ action: 'decline' });
    const { client } = await connect(t, { args: ['--port', String(host.port)], elicit: () => reply });
    assert.match(
        text(await call(client, 'DeletePartition', { driveLetter: 'F' })),
        /The user answered no/,
    );
    reply = { action: 'accept', content: { confirm: true } };
    assert.match(text(await call(client, 'DeletePartition', { driveLetter: 'G' })), queued);
    await untilShown(client, 2, (all) => all.every((p) => !p.driveLetter?.startsWith('G')));
    assert.ok((await partitionsOn(client, 2)).some((p) => p.driveLetter?.startsWith('F')));
    assert.ok(!host.log.some((line) => line.includes('order DeletePartition') && line.includes('F')));
});

test('HostWithAnOpenDialog_IsRetriedWithProgressAndThenReported', async (t) => {
    const host = await startHost(t, { change: (machine) => (machine.popuped = true) });
    const { client } = await connect(t, { args: ['--port', String(host.port), '--timeout', '4'] });
    /** @type {any[]} */
    const progress = [];
    const answer = await client.callTool(
        { name: 'ChangePartitionLabel', arguments: { driveLetter: 'D', newLabel: 'x' } },
        { onprogress: (p) => progress.push(p) },
    );
    assert.ok(progress.length >= 2);
    assert.ok(answer.isError);
    assert.ok(text(answer).startsWith(`Not called: "${OPERATION_IN_PROGRESS}"`));
    assert.match(text(answer), /Ask the user to close it/);
});

test('BusyHost_RejectsTheNextTool', async (t) => {
    const host = await startHost(t, { change: (machine) => (machine.taskMilliseconds = 600000) });
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    assert.match(
        text(await call(client, 'ChangePartitionLabel', { driveLetter: 'D', newLabel: 'x' })),
        queued,
    );
    const answer = await call(client, 'ChangePartitionLabel', { driveLetter: 'D', newLabel: 'y' });
    assert.ok(answer.isError);
    assert.ok(text(answer).startsWith(`Not called: "${TASKS_IN_EXECUTION}"`));
});

/** A proxy with a fixed port for hosts that are replaced. @param {import('node:test').TestContext} t */
async function fixedPort(t) {
    const target = { port: 0 };
    const server = createServer((socket) => {
        const host = createConnection(target.port, 'localhost');
        for (const end of [socket, host]) end.on('error', () => {});
        socket.pipe(host).pipe(socket);
        socket.on('close', () => host.destroy());
        host.on('close', () => socket.destroy());
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', () => resolve(undefined)));
    t.after(() => server.close());
    return { port: /** @type {import('node:net').AddressInfo} */ (server.address()).port, target };
}

test('HostKilledDuringACall_IsReportedAndTheNextCallReachesTheRestartedHost', async (t) => {
    const { port, target } = await fixedPort(t);
    const first = await startHost(t);
    target.port = first.port;
    const { client } = await connect(t, { args: ['--port', String(port)] });
    assert.ok(!(await call(client, 'ListAllDisks')).isError);
    first.child.kill('SIGSTOP');
    const pending = call(client, 'ListAllDisks');
    await first.kill();
    const started = performance.now();
    const answer = await pending;
    assert.ok(performance.now() - started < 10000);
    assert.ok(answer.isError);
    target.port = (await startHost(t)).port;
    assert.ok(!(await call(client, 'ListAllDisks')).isError);
    assert.match(
        text(await call(client, 'ChangePartitionLabel', { driveLetter: 'D', newLabel: 'x' })),
        queued,
    );
});

test('HangingHost_FailsTheCallWithinTheTimeLimitAndIsReachedWhenItContinues', async (t) => {
    const host = await startHost(t);
    const { client } = await connect(t, { args: ['--port', String(host.port), '--timeout', '4'] });
    host.child.kill('SIGSTOP');
    const answer = await call(client, 'ListAllDisks');
    assert.ok(answer.isError);
    assert.match(text(answer), /did not answer Init within [\d.]+ s/);
    host.child.kill('SIGCONT');
    const end = performance.now() + 15000;
    for (;;) {
        const again = await call(client, 'ListAllDisks');
        if (!again.isError) break;
        assert.ok(performance.now() < end, text(again));
    }
});
