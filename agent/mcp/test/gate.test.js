import assert from 'node:assert/strict';
import { test } from 'node:test';
import { OPERATION_IN_PROGRESS, TASK_NOT_VALID, TASK_QUEUED, TASKS_IN_EXECUTION } from '../src/constants.js';
import { connect, text } from './support/client.js';
import { disks, FakeService } from './support/fakeService.js';

const label = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } };

/** @param {import('node:test').TestContext} t @param {{ args?: string[] }} [options] */
async function start(t, { args = [] } = {}) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    return { service, ...(await connect(t, { args: ['--port', String(service.port), ...args] })) };
}

test('ActingTool_RunsBetweenPreAndPostProcessing', async (t) => {
    const { service, client } = await start(t);
    const answer = await client.callTool(label);
    assert.deepEqual(
        service.acting(),
        [
            { method: 'PreProcessing', args: ['ChangePartitionLabel driveLetter=E newLabel=x'] },
            { method: 'ChangePartitionLabel', args: ['E', 'x'] },
            { method: 'PostProcessing', args: [TASK_QUEUED] },
        ],
    );
    assert.ok(!answer.isError);
    assert.deepEqual(answer.structuredContent, { answer: TASK_QUEUED, queued: true });
    assert.match(text(answer), /does NOT mean that the work is done/);
    assert.match(text(answer), /call WaitForChange, or ListPartitionsOnDisk \(diskIndex 1\) after a while/);
});

test('QueuedToolWithADisk_NamesTheReadForThatDisk', async (t) => {
    const { service, client } = await start(t);
    service.answer.ListAllDisks = () => [Object.assign(disks()[1], { isOffline: true })];
    const answer = await client.callTool({ name: 'DiskBringOnline', arguments: { diskIndex: 1 } });
    assert.match(text(answer), /ListPartitionsOnDisk \(diskIndex 1\)/);
});

test('ToolThatOpensAPage_ReportsThatNothingChangedAndNoResultFollows', async (t) => {
    const { client } = await start(t, { args: ['--tools', 'care'] });
    const answer = await client.callTool({ name: 'DiskHealthCheck', arguments: { diskIndex: 1 } });
    assert.match(text(answer), /The health page shows the state of the disk\. Only the user sees it\./);
    assert.match(text(answer), /Nothing has been changed yet, and no result will be returned/);
    assert.match(text(answer), /polling the inventory does not help/);
});

test('ReadingTool_NeedsNoGate', async (t) => {
    const { service, client } = await start(t);
    const answer = await client.callTool({ name: 'ListPartitionsOnDisk', arguments: { diskIndex: 1 } });
    assert.deepEqual(service.names(), ['Init', 'ListPartitionsOnDisk']);
    assert.equal(/** @type {any} */ (answer.structuredContent).partitions[0].rawCapacity, '9007199254740993');
    assert.match(text(answer), /E: "Dätà", "exFAT", 8.00 PB \(9007199254740993 bytes\)/);
});

test('TwoActingTools_RunInSequenceWithThePauseBetween', async (t) => {
    const { service, client } = await start(t);
    const started = performance.now();
    await Promise.all([client.callTool(label), client.callTool(label)]);
    assert.ok(performance.now() - started >= 2000);
    assert.deepEqual(
        service.acting().map((call) => call.method),
        [
            'PreProcessing',
            'ChangePartitionLabel',
            'PostProcessing',
            'PreProcessing',
            'ChangePartitionLabel',
            'PostProcessing',
        ],
    );
});

test('PauseBetweenTwoTools_IsReportedAsProgress', async (t) => {
    const { client } = await start(t);
    await client.callTool(label);
    /** @type {any[]} */
    const progress = [];
    await client.callTool(label, { onprogress: (p) => progress.push(p) });
    assert.match(progress[0].message, /Waiting for the pause of two seconds/);
});

test('OperationInProgress_IsRetriedWithProgressUntilAllowed', async (t) => {
    const { service, client } = await start(t);
    const allow = service.answer.PreProcessing;
    service.rejectCalls(OPERATION_IN_PROGRESS);
    const reject = service.answer.PreProcessing;
    let asked = 0;
    service.answer.PreProcessing = () => (++asked < 4 ? reject() : allow());
    /** @type {any[]} */
    const progress = [];
    const answer = await client.callTool(label, { onprogress: (p) => progress.push(p) });
    assert.ok(!answer.isError);
    assert.equal(asked, 4);
    assert.ok(progress.length >= 1);
    assert.match(progress[0].message, /Waiting for the disk manager/);
});

test('LastingOperationInProgress_FailsWithinTheTimeLimitWithTheNextStep', async (t) => {
    const { service, client } = await start(t, { args: ['--timeout', '3'] });
    service.rejectCalls(OPERATION_IN_PROGRESS);
    /** @type {any[]} */
    const progress = [];
    const started = performance.now();
    const answer = await client.callTool(label, { onprogress: (p) => progress.push(p) });
    assert.ok(performance.now() - started >= 1500);
    assert.ok(progress.length >= 1);
    assert.ok(answer.isError);
    assert.match(text(answer), /A dialog is still open in the disk manager\. Ask the user to close it/);
    assert.deepEqual(answer.structuredContent, { allow: false, reasons: OPERATION_IN_PROGRESS });
    assert.ok(!service.names().includes('ChangePartitionLabel'));
});

test('TasksInExecution_IsReportedImmediately', async (t) => {
    const { service, client } = await start(t);
    service.rejectCalls(TASKS_IN_EXECUTION);
    const answer = await client.callTool(label);
    assert.ok(answer.isError);
    assert.ok(text(answer).includes(TASKS_IN_EXECUTION));
    assert.match(text(answer), /Inform the user, call WaitForChange, then call the tool again; an immediate retry/);
    assert.deepEqual(answer.structuredContent, { allow: false, reasons: TASKS_IN_EXECUTION });
    assert.deepEqual(
        service.acting().map((call) => call.method),
        ['PreProcessing'],
    );
});

test('GateWithoutReasons_ReportsTheMissingApplication', async (t) => {
    const { service, client } = await start(t);
    service.rejectCalls('');
    assert.match(text(await client.callTool(label)), /not connected to an application/);
});

test('TaskNotValid_IncludesTheTargetAndTheCauseThatAnApplicationMayHave', async (t) => {
    const { service, client } = await start(t, { args: ['--yes'] });
    service.answer.FormatPartition = TASK_NOT_VALID;
    const format = { driveLetter: 'E', fileSystem: 'FAT32', label: '', clusterSize: 0, quickFormat: true };
    const answer = await client.callTool({ name: 'FormatPartition', arguments: format });
    assert.ok(answer.isError);
    assert.deepEqual(service.calls.find((call) => call.method === 'PostProcessing')?.args, [TASK_NOT_VALID]);
    assert.ok(text(answer).startsWith(`"${TASK_NOT_VALID}": FormatPartition was rejected`));
    assert.match(text(answer), /Cause: FAT32 can be created with .* to 32\.00 GB \(34359738368 bytes\), not /);
    assert.match(text(answer), /E: "Dätà", "exFAT"/);
});

test('TaskNotValid_WithoutACauseInTheInventory_ClaimsNone', async (t) => {
    const { service, client } = await start(t);
    service.answer.ChangePartitionLabel = TASK_NOT_VALID;
    const answer = text(await client.callTool(label));
    assert.match(answer, /does not report a reason, and the inventory shows none/);
    assert.doesNotMatch(answer, /Cause:/);
});

test('UnknownDriveOrDisk_IsReportedWithTheExistingOnesBeforeTheGate', async (t) => {
    const { service, client } = await start(t);
    const drive = text(await client.callTool({ ...label, arguments: { driveLetter: 'Q', newLabel: 'x' } }));
    assert.match(drive, /ChangePartitionLabel was not called.*Drive Q: does not exist\. The drives are C:, E:\./);
    const disk = text(await client.callTool({ name: 'DiskBringOnline', arguments: { diskIndex: 7 } }));
    assert.match(disk, /Disk 7 does not exist\. The disks are 0, 1\./);
    assert.ok(!service.names().includes('PreProcessing'));
});

test('CreatePartition_ChecksTheUnallocatedRegions', async (t) => {
    const { service, client } = await start(t);
    service.answer.CreatePartition = TASK_NOT_VALID;
    const create = {
        diskIndex: 0,
        capacity: '10737418241',
        fileSystem: 'NTFS',
        label: '',
        unallocatedIndex: -1,
    };
    const tooLarge = await client.callTool({ name: 'CreatePartition', arguments: create });
    assert.match(text(tooLarge), /at most 10\.00 GB \(10737418240 bytes\)/);
    assert.deepEqual(tooLarge.structuredContent, { called: false, queued: false, cause: 'regionTooSmall' });
    assert.ok(!service.names().includes('CreatePartition'));
    await client.callTool({ name: 'CreatePartition', arguments: { ...create, capacity: '10737418240' } });
    assert.ok(service.names().includes('CreatePartition'));
});

test('OtherAnswersOfTheCloneTools_AreReturned', async (t) => {
    const { service, client } = await start(t, { args: ['--tools', 'clone'] });
    service.answer.CloneDiskToDisk = 'It seems that disk1 is not exist';
    service.answer.CloneOSDataFromCurrent = '';
    const missing = await client.callTool({
        name: 'CloneDiskToDisk',
        arguments: { sourceDiskIndex: 0, destDiskIndex: 1 },
    });
    assert.ok(missing.isError);
    assert.match(text(missing), /"It seems that disk1 is not exist"/);
    assert.match(
        text(await client.callTool({ name: 'CloneOSDataFromCurrent', arguments: { targetDiskIndex: 1 } })),
        /empty answer: the application has no page/,
    );
});

test('ClientThatCancelsAtTheGate_PreventsTheCall', async (t) => {
    const { service, client } = await start(t);
    service.rejectCalls(OPERATION_IN_PROGRESS);
    const stop = new AbortController();
    const waiting = client.callTool(label, { signal: stop.signal, onprogress: () => stop.abort('enough') });
    await assert.rejects(waiting);
    service.answer.PreProcessing = new FakeService().answer.PreProcessing;
    await client.callTool({ name: 'SetPartitionHidden', arguments: { driveLetter: 'E' } });
    assert.ok(service.names().includes('SetPartitionHidden'));
    assert.ok(!service.names().includes('ChangePartitionLabel'));
});
