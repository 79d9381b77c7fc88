import assert from 'node:assert/strict';
import { test } from 'node:test';
import { connect, text } from './support/client.js';
import { FakeService, int64, partitions } from './support/fakeService.js';
import { inventoryOf } from './support/conversation.js';
import { startHost } from './support/sandbox.js';

const gib = 1024 ** 3;
const label = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } };
const labelC = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'C', newLabel: 'y' } };

/** @param {number} [seconds] */
const wait = (seconds) => ({ name: 'WaitForChange', arguments: seconds === undefined ? {} : { seconds } });

/** @param {import('node:test').TestContext} t @param {Parameters<typeof connect>[1]} [options] */
async function start(t, options = {}) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const args = ['--port', String(service.port), ...(options.args ?? [])];
    return { service, ...(await connect(t, { ...options, args })) };
}

/** Changes one partition of the fake service from now on. @param {FakeService} service @param {string} letter @param {object} fields */
function change(service, letter, fields) {
    const all = service.answer.GetAllPartitionInfo();
    const next = all.map((/** @type {any} */ p) => (p.driveLetter === `${letter}:` ? Object.assign(p, fields) : p));
    service.answer.GetAllPartitionInfo = () => next;
}

/** @param {any} answer */
const content = (answer) => answer.structuredContent;

test('Wait_AnswersWithTheDifferenceToTheInventoryBeforeTheOrder', async (t) => {
    const { service, client } = await start(t);
    service.answer.ChangePartitionLabel = () => {
        change(service, 'E', { label: 'x' });
        return 'Task Queued';
    };
    await client.callTool(label);
    const answer = await client.callTool(wait());
    assert.match(text(answer), /^Changed within [\d.]+ s\. Differences since the order ChangePartitionLabel \(driveLetter E\):\n- E: label "x" \(was "Dätà"\)\.$/);
    assert.deepEqual(content(answer).changes, [
        {
            item: 'partition',
            change: 'changed',
            diskIndex: 1,
            driveLetter: 'E',
            label: 'x',
            size: '9007199254740993',
            freeSize: '0',
            was: { label: 'Dätà' },
            now: { label: 'x' },
        },
    ]);
    assert.deepEqual(content(answer).orders, ['ChangePartitionLabel driveLetter=E']);
    assert.deepEqual(content(answer).withoutEffect, []);
});

test('Wait_UsesNeitherTheGateNorAToolThatActs', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(wait(0));
    assert.deepEqual(service.acting(), []);
});

test('Wait_PollsUntilALaterChangeAndReportsProgress', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    /** @type {any[]} */
    const progress = [];
    const pending = client.callTool(wait(600), {
        timeout: 600000,
        onprogress: (p) => {
            progress.push(p);
            change(service, 'E', { label: 'x' });
        },
    });
    assert.equal(content(await pending).changed, true);
    assert.match(progress[0].message, /^The inventory is unchanged; \d+ of 600 s left\.$/);
});

test('UnchangedInventory_AtTheLimitIsNeitherSuccessNorFailure', async (t) => {
    const { client } = await start(t);
    await client.callTool(label);
    const answer = await client.callTool(wait(1));
    assert.ok(!answer.isError);
    assert.match(
        text(answer),
        /^Unchanged after \d+(\.\d)? s since the order ChangePartitionLabel \(driveLetter E\)\. The order may still be waiting or running, or may have failed\. .* Do not repeat it\.$/,
    );
    assert.equal(content(answer).changed, false);
    assert.deepEqual(content(answer).withoutEffect, ['ChangePartitionLabel driveLetter=E']);
    assert.ok(content(answer).waitedSeconds >= 1);
});

test('OrderUnreportedSoFar_IsPartOfTheNextReport', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'E', { label: 'x' });
    service.answer.ChangePartitionLabel = () => {
        change(service, 'C', { label: 'y' });
        return 'Task Queued';
    };
    await client.callTool(labelC);
    const answer = await client.callTool(wait());
    assert.deepEqual(
        content(answer).changes.map((/** @type {any} */ c) => [c.driveLetter, c.now.label]),
        [
            ['C', 'y'],
            ['E', 'x'],
        ],
    );
    assert.equal(content(answer).orders.length, 2);
});

test('EffectOfAnEarlierOrder_DoesNotEndTheWaitForTheLastOneAndIsReportedAtTheLimit', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'E', { label: 'x' });
    await client.callTool(labelC);
    const answer = await client.callTool(wait(1));
    assert.match(
        text(answer),
        /^Changed within [\d.]+ s\. Differences since the orders ChangePartitionLabel \(driveLetter E\), ChangePartitionLabel \(driveLetter C\):\n- E: label "x" \(was "Dätà"\)\.\nNo visible effect yet: ChangePartitionLabel \(C:\)\./,
    );
    assert.ok(content(answer).waitedSeconds >= 1);
    assert.equal(content(answer).changed, true);
    assert.deepEqual(content(answer).withoutEffect, ['ChangePartitionLabel driveLetter=C']);
});

test('OrderWithoutAnEffect_IsStillWaitedForAfterTheReportOfAnother', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(labelC);
    await client.callTool(label);
    change(service, 'E', { label: 'x' });
    const first = await client.callTool(wait(0));
    assert.match(text(first), /\nNo visible effect yet: ChangePartitionLabel \(C:\)\./);
    const unchanged = await client.callTool(wait(0));
    assert.deepEqual(content(unchanged).orders, ['ChangePartitionLabel driveLetter=C']);
    assert.equal(content(unchanged).changed, false);
    change(service, 'C', { label: 'y' });
    const second = await client.callTool(wait(0));
    assert.match(
        text(second),
        /^Changed within [\d.]+ s\. Differences since the order ChangePartitionLabel \(driveLetter C\):\n- C: label "y" \(was "System"\)\.$/,
    );
    assert.deepEqual(content(await client.callTool(wait(0))).orders, []);
});

test('SeveralOrdersAtTheLimit_ArePlural', async (t) => {
    const { client } = await start(t);
    await client.callTool(label);
    await client.callTool(labelC);
    assert.match(text(await client.callTool(wait(0))), / The orders may still be .* Do not repeat them\.$/);
});

test('Guide_IsMentionedOnlyIfOneWasOpened', async (t) => {
    const { client } = await start(t, { args: ['--tools', 'all', '--yes'] });
    await client.callTool(label);
    assert.doesNotMatch(text(await client.callTool(wait(0))), /guide/);
    await client.callTool({ name: 'OpenPartitionLayoutEditor', arguments: { driveLetter: 'C' } });
    assert.match(text(await client.callTool(wait(0))), /may have failed, and a guide waits for the user\. /);
});

test('Guide_CanHaveItsEffectOnAnyDisk', async (t) => {
    const { service, client } = await start(t, { args: ['--tools', 'all', '--yes'] });
    await client.callTool({ name: 'OpenPartitionLayoutEditor', arguments: { driveLetter: 'C' } });
    change(service, 'E', { label: 'x' });
    assert.deepEqual(content(await client.callTool(wait(0))).withoutEffect, []);
    await client.callTool({ name: 'OpenPartitionLayoutEditor', arguments: { driveLetter: 'C' } });
    await client.callTool(label);
    change(service, 'E', { label: 'z' });
    assert.deepEqual(content(await client.callTool(wait(0))).withoutEffect, [
        'OpenPartitionLayoutEditor driveLetter=C',
    ]);
});

test('OrdersOfOneDrive_AreDistinguishedByTheirEffect', async (t) => {
    const { service, client } = await start(t, { args: ['--yes'] });
    await client.callTool(labelC);
    await client.callTool({
        name: 'ResizePartition',
        arguments: { driveLetter: 'C', newPartitionCapacity: String(60 * gib) },
    });
    change(service, 'C', { rawCapacity: int64(60 * gib) });
    assert.deepEqual(content(await client.callTool(wait(0))).withoutEffect, ['ChangePartitionLabel driveLetter=C']);
});

test('DiskOrder_HasAnEffectOnlyOnItsDisk', async (t) => {
    const { service, client } = await start(t, { args: ['--yes'] });
    await client.callTool({ name: 'WipeDisk', arguments: { diskIndex: 1, eraseCount: 1 } });
    change(service, 'C', { label: 'y' });
    const other = await client.callTool(wait(0));
    assert.match(text(other), /\nNo visible effect yet: WipeDisk \(disk 1\)\./);
    service.answer.GetAllPartitionInfo = () => partitions().filter((p) => p.diskIndex === 0);
    assert.deepEqual(content(await client.callTool(wait(0))).withoutEffect, []);
});

test('EffectThatALaterOrderUndoes_IsAnEffectOfBoth', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'E', { label: 'x' });
    await client.callTool({ ...label, arguments: { driveLetter: 'E', newLabel: 'Dätà' } });
    change(service, 'E', { label: 'Dätà' });
    const answer = await client.callTool(wait(0));
    assert.match(text(answer), /:\n- The inventory is again as before the first of these orders\.$/);
    assert.deepEqual(content(answer).withoutEffect, []);
});

test('WaitWithoutAnOrder_ReturnsAtOnceUnlessSecondsAreGiven', async (t) => {
    const { client } = await start(t);
    const answer = await client.callTool(wait());
    assert.equal(text(answer), 'No order of this gateway is waiting for a report.');
    assert.equal(content(answer).changed, false);
    assert.ok(content(answer).waitedSeconds < 30);
    const waited = await client.callTool(wait(1));
    assert.match(text(waited), /^Unchanged after [\d.]+ s\. No order of this gateway is waiting for a report\.$/);
    assert.ok(content(waited).waitedSeconds >= 1);
});

test('EffectThatAppearsWhileTheGateIsAsked_IsNotTheEffectOfThisOrder', async (t) => {
    const { service, client } = await start(t);
    const allow = service.answer.PreProcessing;
    service.answer.PreProcessing = () => {
        change(service, 'C', { label: 'earlier' });
        return allow();
    };
    await client.callTool(label);
    assert.equal(content(await client.callTool(wait(0))).changed, false);
});

test('RestartedHost_IsNotComparedWithTheInventoryBeforeTheOrder', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    const { port } = service;
    await service.stop();
    await service.start(port);
    change(service, 'E', { label: 'x' });
    const answer = await client.callTool(wait());
    assert.ok(answer.isError);
    assert.match(
        text(answer),
        /^The gateway is connected to another disk manager than for the order ChangePartitionLabel \(driveLetter E\)\. The effect cannot be compared/,
    );
    assert.match(text(answer), /The gateway is now connected to another disk manager: on port/);
    assert.deepEqual(content(await client.callTool(wait(0))).orders, []);
});

test('WaitWithoutAnOrder_ComparesWithItsLastReport', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'E', { label: 'x' });
    assert.equal(content(await client.callTool(wait(0))).changed, true);
    change(service, 'C', { label: 'by the user' });
    const answer = await client.callTool(wait(0));
    assert.deepEqual(content(answer).orders, []);
    assert.match(text(answer), /^Changed within [\d.]+ s\. Differences since the last report:\n- C: label "by the user" \(was "System"\)\.$/);
});

test('ReportedOrder_IsNotReportedAgain', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'E', { label: 'x' });
    assert.equal(content(await client.callTool(wait(0))).changed, true);
    const again = await client.callTool(wait(0));
    assert.deepEqual([content(again).changed, content(again).orders], [false, []]);
    assert.match(text(again), /^No order of this gateway is waiting for a report\.$/);
});

test('RejectedOrder_IsNotWaitedFor', async (t) => {
    const { service, client } = await start(t);
    service.answer.ChangePartitionLabel = 'Task NotValid';
    await client.callTool(label);
    assert.deepEqual(content(await client.callTool(wait(0))).orders, []);
});

test('OrderWithALostAnswer_IsWaitedFor', async (t) => {
    const { service, client } = await start(t);
    service.answer.ChangePartitionLabel = () => service.cut();
    assert.match(text(await client.callTool(label)), /Whether it accepted the order is unknown/);
    change(service, 'E', { label: 'x' });
    const answer = await client.callTool(wait(0));
    assert.deepEqual(content(answer).orders, ['ChangePartitionLabel driveLetter=E']);
    assert.equal(content(answer).changed, true);
});

test('FilesWrittenByPrograms_DoNotEndTheWait', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'C', { usedSize: int64(53687091200 + gib), freeSize: int64(53687091200 - gib) });
    assert.equal(content(await client.callTool(wait(0))).changed, false);
    change(service, 'C', { usedSize: int64(53687091200 + 2 * gib) });
    assert.equal(content(await client.callTool(wait(0))).changed, true);
});

test('FormattedDrive_ShowsAnyChangeOfItsUsedSpace', async (t) => {
    const { service, client } = await start(t, { args: ['--yes'] });
    change(service, 'E', { usedSize: int64(4096) });
    service.answer.FormatPartition = () => {
        const all = partitions();
        service.answer.GetAllPartitionInfo = () => all;
        return 'Task Queued';
    };
    await client.callTool({
        name: 'FormatPartition',
        arguments: { driveLetter: 'E', fileSystem: 'exFAT', label: 'Dätà', clusterSize: 0, quickFormat: true },
    });
    const answer = await client.callTool(wait(0));
    assert.deepEqual(content(answer).changes[0].was, { usedSize: '4096' });
});

test('Label_CannotFormALineOfTheAnswer', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    change(service, 'E', { label: 'x".\n- C: size 0' });
    assert.match(text(await client.callTool(wait(0))), /^Changed[^\n]*\n- E: label "x\\"\.\\n- C: size 0" \(was "Dätà"\)\.$/);
});

test('ManyChanges_AreLimitedWithTheirNumber', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(label);
    const many = Array.from({ length: 45 }, (_, i) =>
        Object.assign(partitions()[2], { driveLetter: '', label: `p${i}`, startSector: int64(i) }),
    );
    service.answer.GetAllPartitionInfo = () => [...partitions(), ...many];
    const answer = await client.callTool(wait(0));
    assert.deepEqual([content(answer).changes.length, content(answer).omitted], [40, 5]);
    assert.match(text(answer), /\n- 5 more changes\. The inventory shows all\.\nNo visible effect yet: /);
});

test('CancelledWait_StopsPolling', async (t) => {
    const { service, client } = await start(t);
    const controller = new AbortController();
    /** @type {any[]} */
    const progress = [];
    const pending = client.callTool(wait(600), {
        signal: controller.signal,
        timeout: 600000,
        onprogress: (p) => {
            progress.push(p);
            controller.abort();
        },
    });
    await assert.rejects(pending);
    // The next call follows the cancellation on the same stream, so every later read is the wait's.
    await client.callTool(wait(0));
    const reads = service.calls.length;
    await client.callTool({ name: 'ListPartitionsOnDisk', arguments: { diskIndex: 0 } });
    await client.callTool(label);
    assert.deepEqual(
        service
            .names()
            .slice(reads)
            .filter((name) => name !== 'Init'),
        [
            'ListPartitionsOnDisk',
            'ListAllDisks',
            'GetAllPartitionInfo',
            'PreProcessing',
            'ListAllDisks',
            'GetAllPartitionInfo',
            'ChangePartitionLabel',
            'PostProcessing',
        ],
    );
});

test('LostHost_EndsTheWaitWithTheNextStep', async (t) => {
    const { service, client } = await start(t);
    await client.callTool(wait(0));
    await service.stop();
    const answer = await client.callTool(wait());
    assert.ok(answer.isError);
    assert.match(text(answer), /not running or not reachable/);
});

test('Seconds_AreBounded', async (t) => {
    const { client } = await start(t);
    for (const seconds of [-1, 601, 1.5])
        assert.ok((await client.callTool(wait(seconds))).isError, String(seconds));
});

test('Wait_IsOfferedReadOnlyWithEveryChoiceOfGroups', async (t) => {
    for (const args of [['--tools', 'clone'], ['--read-only'], []]) {
        const { client } = await start(t, { args });
        const tool = (await client.listTools()).tools.find(({ name }) => name === 'WaitForChange');
        assert.equal(tool?.annotations?.readOnlyHint, true, args.join(' '));
    }
});

test('ResizeAndSplitOnTheSandbox_ShowTheFreeRegionAndTheNewLetter', async (t) => {
    const host = await startHost(t, { args: ['--speed', '10'] });
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    await client.callTool({
        name: 'ResizePartition',
        arguments: { driveLetter: 'D', newPartitionCapacity: String(200 * gib) },
    });
    const resized = await client.callTool(wait(300), { timeout: 300000 });
    assert.match(
        text(resized),
        /\n- D: size 200\.00 GB \(was 300\.00 GB\), 80\.00 GB free \(was 180\.00 GB\)\.\n- Free region \(disk 0, after D:\): size 265\.46 GB \(was 165\.46 GB\); starts at byte \d+ \(was 822541811712\); unallocatedIndex 0\.$/,
    );
    await client.callTool({
        name: 'SplitPartition',
        arguments: {
            driveLetter: 'D',
            newPartitionCapacity: String(20 * gib),
            newPartitionFileSystem: 'NTFS',
            newPartitionLabel: 'Music',
        },
    });
    const split = await client.callTool(wait(300), { timeout: 300000 });
    assert.match(text(split), /\n- New: I: "Music", NTFS, 20\.00 GB, [\d.]+ GB free, disk 0\./);
    const { partitions: all } = await inventoryOf(host.port);
    assert.ok(all.some((p) => p.driveLetter.startsWith('I') && p.label === 'Music'));
});

test('GoneDrive_IsReportedAlthoughGetPartitionInfoKeepsItsLastRecord', async (t) => {
    const host = await startHost(t, { args: ['--speed', 'instant'] });
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    await client.callTool({ name: 'MergePartitions', arguments: { driveLetter1: 'F', driveLetter2: 'G' } });
    const answer = await client.callTool(wait(300), { timeout: 300000 });
    assert.match(text(answer), /\n- Gone: G: "Scratch", NTFS, 80\.00 GB, 70\.00 GB free, disk 2\./);
    const stale = await client.callTool({ name: 'GetPartitionInfo', arguments: { driveLetter: 'G' } });
    assert.equal(content(stale).label, 'Scratch');
    assert.equal(content(stale).isGone, true);
    assert.match(text(stale), /^G: is no longer in the inventory; this is its last record\.\nG: "Scratch", /);
    const complete = await client.callTool({
        name: 'GetPartitionInfo',
        arguments: { driveLetter: 'g', allFields: true },
    });
    assert.deepEqual([content(complete).driveLetter, content(complete).isGone], ['G', true]);
    const alive = await client.callTool({ name: 'GetPartitionInfo', arguments: { driveLetter: 'F' } });
    assert.deepEqual([content(alive).isGone, text(alive).includes('no longer')], [undefined, false]);
});

test('FailedTask_LeavesTheInventoryUnchanged', async (t) => {
    const host = await startHost(t, { args: ['--speed', 'instant', '--fail', 'ChangePartitionLabel after 0%'] });
    const { client } = await connect(t, { args: ['--port', String(host.port)] });
    await client.callTool({ name: 'ChangePartitionLabel', arguments: { driveLetter: 'D', newLabel: 'x' } });
    const answer = await client.callTool(wait(1));
    assert.equal(content(answer).changed, false);
    assert.match(text(answer), /or may have failed/);
});
