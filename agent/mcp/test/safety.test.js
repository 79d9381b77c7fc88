import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ownTools } from '../src/gateway.js';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const format = {
    name: 'FormatPartition',
    arguments: { driveLetter: 'E', fileSystem: 'NTFS', label: 'x', clusterSize: 0, quickFormat: true },
};
const label = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } };

/** @param {import('node:test').TestContext} t @param {Parameters<typeof connect>[1]} [options] */
async function start(t, options = {}) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    return {
        service,
        ...(await connect(t, {
            ...options,
            args: ['--port', String(service.port), ...(options.args ?? [])],
        })),
    };
}

for (const modern of [false, true]) {
    const era = modern ? 'OnTheNewProtocol' : 'OnTheOldProtocol';

    test(`DestroyingTool_${era}_AsksWithTheTargetAndRunsWhenAccepted`, async (t) => {
        /** @type {any[]} */
        const asked = [];
        const { service, client } = await start(t, {
            modern,
            elicit: (params) => (asked.push(params), { action: 'accept', content: { confirm: true } }),
        });
        const answer = await client.callTool(format);
        assert.ok(!answer.isError, text(answer));
        assert.equal(asked.length, 1);
        assert.match(asked[0].message, /\(FormatPartition\)\n- driveLetter: "E"\n- fileSystem: "NTFS"/);
        assert.match(asked[0].message, /Drive E: label "Dätà", file system "exFAT", 8\.00 PB/);
        assert.deepEqual(service.calls.find((call) => call.method === 'FormatPartition')?.args, [
            'E',
            'NTFS',
            'x',
            0,
            true,
        ]);
    });

    for (const [name, reply, statement, reason] of /** @type {const} */ ([
        ['Decline', { action: 'decline' }, 'The user answered no.', 'no'],
        ['Cancel', { action: 'cancel' }, 'The user closed the question without an answer.', 'cancelled'],
        ['AnUncheckedBox', { action: 'accept', content: { confirm: false } }, 'The user answered no.', 'no'],
        [
            'AnAnswerWithoutTheBox',
            { action: 'accept', content: {} },
            'The client returned no valid answer from the user.',
            'invalid',
        ],
    ]))
        test(`DestroyingTool_${era}_IsNotCalledAfter${name}AndTheAnswerStatesIt`, async (t) => {
            const { service, client } = await start(t, { modern, elicit: () => reply });
            const answer = await client.callTool(format);
            assert.ok(answer.isError);
            assert.ok(
                text(answer).startsWith(`${statement} FormatPartition was not called, and nothing was done.`),
                text(answer),
            );
            assert.deepEqual(answer.structuredContent, { called: false, cause: reason });
            assert.ok(
                !service.names().includes('PreProcessing') && !service.names().includes('FormatPartition'),
            );
        });

    test(`ChangingTool_${era}_RunsWithoutAQuestion`, async (t) => {
        const { service, client } = await start(t, { modern, elicit: () => assert.fail('asked') });
        assert.ok(!(await client.callTool(label)).isError);
        assert.ok(service.names().includes('ChangePartitionLabel'));
    });
}

test('DestroyingTool_WithoutElicitation_RunsBecauseTheClientAsks', async (t) => {
    const { service, client } = await start(t);
    assert.ok(!(await client.callTool(format)).isError);
    assert.ok(service.names().includes('FormatPartition'));
});

test('DestroyingTool_WithYes_RunsWithoutAQuestion', async (t) => {
    const { service, client } = await start(t, { args: ['--yes'], elicit: () => assert.fail('asked') });
    assert.ok(!(await client.callTool(format)).isError);
    assert.ok(service.names().includes('FormatPartition'));
});

test('UnansweredQuestion_FailsWithinItsTimeLimitWithoutCallingTheTool', async (t) => {
    const { service, client } = await start(t, {
        args: ['--ask-timeout', '1'],
        elicit: () => new Promise(() => {}),
    });
    const started = performance.now();
    const answer = await client.callTool(format);
    assert.ok(performance.now() - started < 10000);
    assert.ok(answer.isError, text(answer));
    assert.ok(!service.names().includes('FormatPartition'));
});

test('AnswerToOneQuestion_DoesNotAllowAnotherCall', async (t) => {
    const { service, client } = await start(t, {
        modern: true,
        elicit: () => ({ action: 'accept', content: { confirm: true } }),
    });
    // A client can send any answer: with the state of a question about another drive, or repeatedly.
    const ask = (/** @type {any} */ call, /** @type {any} */ more) =>
        /** @type {Promise<any>} */ (
            client.request(
                { method: 'tools/call', params: { ...call, ...more } },
                { allowInputRequired: true },
            )
        );
    const question = await ask(format, {});
    assert.equal(question.resultType, 'input_required');
    const yes = {
        inputResponses: { confirm: { action: 'accept', content: { confirm: true } } },
        requestState: question.requestState,
    };
    const other = { ...format, arguments: { ...format.arguments, driveLetter: 'C' } };
    assert.equal((await ask(other, yes)).resultType, 'input_required');
    assert.equal((await ask(format, yes)).resultType, 'input_required', 'a second use of the same answer');
    assert.ok(!service.names().includes('FormatPartition'));
    const forged = { ...yes, requestState: `${question.requestState}x` };
    await assert.rejects(ask(format, forged), /Invalid or expired requestState/);
});

test('AbsentTarget_IsReportedInTheSameFormByEveryTool', async (t) => {
    const { service, client } = await start(t, { args: ['--tools', 'all'], elicit: () => assert.fail('asked') });
    for (const [name, more] of /** @type {Array<[string, any]>} */ ([
        ['FormatPartition', { ...format.arguments, driveLetter: 'Q' }],
        ['ChangePartitionLabel', { driveLetter: 'Q', newLabel: 'x' }],
        ['MergePartitions', { driveLetter1: 'C', driveLetter2: 'Q' }],
        [
            'AllocateSpaceFromPartitionToPartition',
            { sourceDriveLetter: 'C', targetDriveLetter: 'Q', newPartitionCapacity: '1048576' },
        ],
        ['ClonePartitionToPartition', { sourceDriveLetter: 'C', destDriveLetter: 'Q' }],
    ])) {
        const answer = await client.callTool({ name, arguments: more });
        assert.deepEqual(answer.structuredContent, { called: false, queued: false, cause: 'absentDrive' }, name);
    }
    const disk = await client.callTool({ name: 'WipeDisk', arguments: { diskIndex: 7, eraseCount: 1 } });
    assert.deepEqual(disk.structuredContent, { called: false, queued: false, cause: 'absentDisk' });
    assert.ok(!service.names().includes('PreProcessing'));
});

test('DestroyingTool_WithoutAHost_FailsBeforeTheQuestion', async (t) => {
    const { service, client } = await start(t, { elicit: () => assert.fail('asked') });
    await service.stop();
    assert.match(text(await client.callTool(format)), /not running or not reachable/);
});

test('ReadOnly_OffersOnlyToolsThatRead', async (t) => {
    const { service, client } = await start(t, { args: ['--read-only', '--tools', 'all'] });
    assert.deepEqual(
        (await client.listTools()).tools.map((tool) => tool.name),
        [
            'ListAllDisks',
            'ListPartitionsOnDisk',
            'GetPartitionInfo',
            'GetAllPartitionInfo',
            ...ownTools.map((tool) => tool.name),
        ],
    );
    await assert.rejects(client.callTool(format));
    assert.deepEqual(service.names(), []);
});
