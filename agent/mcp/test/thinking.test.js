// The time between a question and the user's answer.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { connect, text } from './support/client.js';
import { disks, FakeService, partitions } from './support/fakeService.js';
import { startHost } from './support/sandbox.js';

const yes = { action: 'accept', content: { confirm: true } };
const format = {
    name: 'FormatPartition',
    arguments: { driveLetter: 'E', fileSystem: 'NTFS', label: 'x', clusterSize: 0, quickFormat: true },
};

/** @param {import('node:test').TestContext} t @param {Parameters<typeof connect>[1]} [options] */
async function start(t, options = {}) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const args = ['--port', String(service.port), '--tools', 'all', ...(options.args ?? [])];
    return { service, ...(await connect(t, { ...options, args })) };
}

/** @param {FakeService} service */
const gateCalls = (service) =>
    service.names().filter((name) => name === 'PreProcessing' || name === 'FormatPartition');

test('UserWhoThinksLongerThanTheClientsLimit_StillAnswersBecauseOfProgress', async (t) => {
    /** @type {any[]} */
    const progress = [];
    /** @type {(answer: any) => void} */
    let answerNow = () => {};
    const { service, client } = await start(t, { elicit: () => new Promise((resolve) => (answerNow = resolve)) });
    const answer = await client.callTool(format, {
        timeout: 5000,
        resetTimeoutOnProgress: true,
        onprogress: (p) => {
            progress.push(p);
            // Four reports take longer than the client's limit.
            if (progress.length === 4) answerNow(yes);
        },
    });
    assert.ok(!answer.isError, text(answer));
    assert.equal(progress[0].message, "Waiting for the user's answer.");
    assert.ok(service.names().includes('FormatPartition'));
});

test('ProgressDuringAQuestion_EndsWithTheAnswer', async (t) => {
    const { client, transport } = await start(t, { elicit: () => ({ action: 'decline' }) });
    await client.callTool(format, { onprogress: () => {} });
    let late = 0;
    const { onmessage } = transport;
    transport.onmessage = (message) => {
        if ('method' in message && message.method === 'notifications/progress') late++;
        onmessage?.(message);
    };
    // The pause between two tools is longer than the interval of the reports.
    const label = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } };
    await client.callTool(label);
    await client.callTool(label);
    assert.equal(late, 0);
});

test('UnansweredQuestion_EndsAtItsLimitWithTheStatementThatNothingWasDone', async (t) => {
    const { service, client } = await start(t, {
        args: ['--ask-timeout', '1'],
        elicit: () => new Promise(() => {}),
    });
    const answer = await client.callTool(format);
    assert.ok(answer.isError);
    assert.equal(
        text(answer),
        'The user did not answer within 1 s. FormatPartition was not called, and nothing was done. The user may be away: call it again only when the user is present.',
    );
    assert.deepEqual(answer.structuredContent, { called: false, cause: 'late' });
    assert.deepEqual(gateCalls(service), []);
});

test('AnswerAfterTheLimit_OnTheNewProtocol_HasNoEffectAndTheAnswerStatesIt', async (t) => {
    const { service, client } = await start(t, {
        modern: true,
        args: ['--ask-timeout', '0.2'],
        elicit: () => new Promise((resolve) => setTimeout(resolve, 400, yes)),
    });
    const answer = await client.callTool(format);
    assert.ok(answer.isError);
    assert.match(
        text(answer),
        /^The user did not answer within 0\.2 s\. FormatPartition was not called, and nothing was done\./,
    );
    assert.deepEqual(gateCalls(service), []);
});

test('NoCancelAndTimeout_AreThreeDifferentAnswersThatNothingWasDone', async (t) => {
    const answers = [];
    for (const reply of [{ action: 'decline' }, { action: 'cancel' }, new Promise(() => {})]) {
        const { service, client } = await start(t, { args: ['--ask-timeout', '1'], elicit: () => reply });
        const answer = await client.callTool(format);
        assert.ok(answer.isError);
        assert.deepEqual(gateCalls(service), []);
        answers.push(text(answer));
    }
    for (const answer of answers) assert.match(answer, /was not called, and nothing was done\./);
    assert.equal(new Set(answers).size, 3);
});

test('ClientThatFailsToAsk_GetsAnAnswerThatNothingWasDone', async (t) => {
    const { service, client } = await start(t, {
        elicit: () => {
            throw new Error('no window');
        },
    });
    const answer = await client.callTool(format);
    assert.ok(answer.isError);
    assert.match(text(answer), /returned no valid answer from the user\. FormatPartition was not called/);
    assert.deepEqual(gateCalls(service), []);
});

test('CallThatTheClientCancelsDuringTheQuestion_IsNotMadeByALaterYes', async (t) => {
    const stop = new AbortController();
    /** @type {(answer: any) => void} */
    let answerNow = () => {};
    const { service, client } = await start(t, {
        elicit: () => (stop.abort('enough'), new Promise((resolve) => (answerNow = resolve))),
    });
    await assert.rejects(client.callTool(format, { signal: stop.signal }));
    answerNow(yes);
    // The gate runs calls in their order, so the second of these would follow the cancelled one.
    for (let i = 0; i < 2; i++)
        await client.callTool({ name: 'DiskBringOnline', arguments: { diskIndex: 1 } });
    assert.ok(!service.names().includes('FormatPartition'));
});

for (const modern of [false, true]) {
    const era = modern ? 'OnTheNewProtocol' : 'OnTheOldProtocol';
    for (const [name, call, statement] of /** @type {const} */ ([
        ['Drive', { ...format, arguments: { ...format.arguments, driveLetter: 'Q' } }, /drive Q:\. Its drives: C, E\./],
        ['Disk', { name: 'WipeDisk', arguments: { diskIndex: 7, eraseCount: 1 } }, /disk 7\. Its disks: 0, 1\./],
        [
            'Destination',
            { name: 'CloneDiskToDisk', arguments: { sourceDiskIndex: 0, destDiskIndex: 9 } },
            /disk 9\. Its disks: 0, 1\./,
        ],
    ]))
        test(`Missing${name}_${era}_IsReportedWithoutAQuestion`, async (t) => {
            const { service, client } = await start(t, { modern, elicit: () => assert.fail('asked') });
            const answer = await client.callTool(call);
            assert.ok(answer.isError);
            assert.match(text(answer), statement);
            assert.ok(!service.names().includes('PreProcessing') && !service.names().includes(call.name));
        });
}

test('DiskThatTheHostChooses_IsNotReportedAsMissing', async (t) => {
    let asked = 0;
    const { service, client } = await start(t, { elicit: () => (asked++, yes) });
    for (const call of [
        { name: 'CreateBootableUsbByDisk', arguments: { diskIndex: -1 } },
        { name: 'CreateBootableUsbByDriveLetter', arguments: { driveLetter: '' } },
    ]) {
        const answer = await client.callTool(call);
        assert.ok(!answer.isError, text(answer));
        assert.ok(service.names().includes(call.name));
    }
    assert.equal(asked, 2);
});

test('EmptyInventory_IsReportedWithoutAQuestion', async (t) => {
    const { service, client } = await start(t, { elicit: () => assert.fail('asked') });
    service.answer.ListAllDisks = () => disks().slice(0, 0);
    service.answer.GetAllPartitionInfo = () => partitions().slice(0, 0);
    assert.match(text(await client.callTool(format)), /E:/);
});

test('LetterThatHasGone_IsReportedWithoutAQuestion', async (t) => {
    // GetPartitionInfo still answers for this letter, but the list no longer contains it.
    const host = await startHost(t, { args: ['--speed', 'instant'] });
    let asked = 0;
    const { client } = await connect(t, {
        args: ['--port', String(host.port)],
        elicit: () => (asked++, yes),
    });
    const remove = { name: 'DeletePartition', arguments: { driveLetter: 'H' } };
    assert.ok(!(await client.callTool(remove)).isError);
    await client.callTool({ name: 'WaitForChange', arguments: { seconds: 20 } });
    const answer = await client.callTool(remove);
    assert.ok(answer.isError);
    assert.match(text(answer), /does not contain drive H:/);
    assert.equal(asked, 1);
});
