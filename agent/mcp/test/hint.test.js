// The advice to wait for an earlier order, after a call that the inventory shows to be impossible.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import { test } from 'node:test';
import { temporaryChecks } from '../src/orders.js';
import { connect, text } from './support/client.js';
import { FakeService, partitions } from './support/fakeService.js';

/** @import { Tool } from '../src/types.js' */

const hint = /An earlier order may still be waiting: call WaitForChange, then try again\./;

const label = (/** @type {string} */ letter) => ({
    name: 'ChangePartitionLabel',
    arguments: { driveLetter: letter, newLabel: 'x' },
});
const toLetter = (/** @type {string} */ letter, /** @type {string} */ newDriveLetter) => ({
    name: 'ChangePartitionDriveLetter',
    arguments: { driveLetter: letter, newDriveLetter },
});
const tooLarge = (/** @type {string} */ letter) => ({
    name: 'SplitPartition',
    arguments: {
        driveLetter: letter,
        newPartitionCapacity: '90071992547409930',
        newPartitionFileSystem: 'NTFS',
        newPartitionLabel: '',
    },
});
const toGpt = { name: 'ConvertDiskToGpt', arguments: { diskIndex: 0 } };
const wipe = (/** @type {number} */ diskIndex) => ({ name: 'WipeDisk', arguments: { diskIndex, eraseCount: 1 } });

/** @typedef {{ name: string, arguments: any }} Request */

/** @type {Array<[string, Request, Request, string, boolean]>} the first call is queued, the second one impossible */
const rows = [
    ['space of the same drive', label('C'), tooLarge('C'), 'freeSpace', true],
    ['space of another disk', label('E'), tooLarge('C'), 'freeSpace', false],
    ['partition table', label('C'), toGpt, 'alreadyGpt', false],
    ['absent disk', wipe(1), wipe(7), 'absentDisk', false],
    ['absent drive without an order for its letter', label('E'), label('Q'), 'absentDrive', false],
    ['absent drive that an order names as the new letter', toLetter('E', 'Q'), label('Q'), 'absentDrive', true],
    ['letter that an order releases', toLetter('E', 'Q'), toLetter('C', 'E'), 'letterInUse', true],
    ['letter, with an order for the same disk', label('C'), toLetter('C', 'E'), 'letterInUse', true],
    ['letter of another disk', label('E'), toLetter('C', 'C'), 'letterInUse', false],
];

/** @param {import('node:test').TestContext} t */
async function start(t) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const args = ['--port', String(service.port), '--tools', 'all', '--yes'];
    return { service, ...(await connect(t, { args })) };
}

for (const [subject, order, call, check, expected] of rows)
    test(`Hint_${expected ? 'Follows' : 'DoesNotFollow'}: ${subject}`, async (t) => {
        const { client } = await start(t);
        assert.ok(!(await client.callTool(order)).isError);
        const answer = await client.callTool(call);
        assert.equal(/** @type {any} */ (answer.structuredContent).cause, check);
        assert.equal(hint.test(text(answer)), expected, text(answer));
    });

test('Hint_DoesNotFollowTheRunningSystem', async (t) => {
    const { service, client } = await start(t);
    const system = partitions();
    system[0].isBootPartitionContainer = true;
    service.answer.GetAllPartitionInfo = () => system;
    await client.callTool(label('C'));
    const answer = await client.callTool(wipe(0));
    assert.equal(/** @type {any} */ (answer.structuredContent).cause, 'runningSystem');
    assert.doesNotMatch(text(answer), hint);
});

test('Hint_DoesNotFollowForADriveThatAnOrderHasDeleted', async (t) => {
    const { service, client } = await start(t);
    await client.callTool({ name: 'DeletePartition', arguments: { driveLetter: 'E' } });
    service.answer.GetAllPartitionInfo = () => partitions().filter((p) => p.driveLetter !== 'E:');
    assert.doesNotMatch(text(await client.callTool(label('E'))), hint);
});

test('TemporaryChecks_Exist', () => {
    const folder = new URL('../src/checks/', import.meta.url);
    const sources = readdirSync(folder).map((name) => readFileSync(new URL(name, folder), 'utf8'));
    const unknown = [...temporaryChecks].filter((name) => !sources.some((source) => source.includes(`'${name}'`)));
    assert.deepEqual(unknown, []);
});
