// PlanCall, and the instructions that follow the options.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ownTools, offered } from '../src/gateway.js';
import { instructions } from '../src/instructions.js';
import { readOptions } from '../src/options.js';
import { loadTable } from '../src/table.js';
import { connect, text } from './support/client.js';
import { FakeService } from './support/fakeService.js';

const table = loadTable();

/** @param {import('node:test').TestContext} t @param {Parameters<typeof connect>[1]} [options] */
async function start(t, options = {}) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const args = ['--port', String(service.port), ...(options.args ?? [])];
    const { client } = await connect(t, { ...options, args });
    const plan = async (/** @type {string} */ tool, /** @type {object} */ given) => {
        const answer = await client.callTool({ name: 'PlanCall', arguments: { tool, arguments: given } });
        return { answer, text: text(answer), content: /** @type {any} */ (answer.structuredContent) };
    };
    return { service, plan };
}

const format = { driveLetter: 'E', fileSystem: 'exFAT', label: 'x', clusterSize: 0, quickFormat: true };

test('PlanOfADestroyingTool_StatesTheLossAndTheQuestionAndCallsNothing', async (t) => {
    const { service, plan } = await start(t, { elicit: () => assert.fail('asked') });
    const { content, ...planned } = await plan('FormatPartition', format);
    assert.deepEqual([content.possible, content.asksUser], [true, true]);
    assert.equal(content.lost.length, 1);
    assert.match(planned.text, /Permanently lost: everything on drive E: label "Dätà".*The user is asked first\./);
    assert.deepEqual([...new Set(service.names())].sort(), ['GetAllPartitionInfo', 'Init', 'ListAllDisks']);
});

test('PlanOfAnImpossibleCall_StatesTheCauseAndNoQuestion', async (t) => {
    const { service, plan } = await start(t, { elicit: () => assert.fail('asked') });
    const { content, ...planned } = await plan('FormatPartition', { ...format, driveLetter: 'Q' });
    assert.deepEqual([content.possible, content.asksUser, content.cause], [false, false, 'absentDrive']);
    assert.match(planned.text, /cannot work: Drive Q: does not exist\. The drives are C:, E:\./);
    assert.ok(!service.names().includes('PreProcessing'));
});

test('PlanBeyondALimitOfTheApplication_StatesItAsPossible', async (t) => {
    const { plan } = await start(t);
    const { content, ...planned } = await plan('FormatPartition', { ...format, fileSystem: 'FAT32' });
    assert.deepEqual([content.possible, content.cause], [true, 'fileSystemCreated']);
    assert.match(planned.text, /The application may reject FormatPartition: FAT32 can be created with/);
});

test('PlanOfAToolThatOpensAPage_DescribesThePage', async (t) => {
    const { plan } = await start(t, { args: ['--tools', 'all'] });
    const { content } = await plan('ConvertDiskToGpt', { diskIndex: 1 });
    assert.match(content.opens, /The conversion guide shows the disk and its new type/);
});

test('PlanOfAToolThatIsNotOffered_NamesTheOption', async (t) => {
    const group = await (await start(t)).plan('ConvertDiskToGpt', { diskIndex: 1 });
    assert.match(group.text, /ConvertDiskToGpt is not offered\. It belongs to the group convert .*--tools/);
    const readOnly = await (await start(t, { args: ['--read-only'] })).plan('FormatPartition', format);
    assert.match(readOnly.text, /FormatPartition is not offered, because the gateway runs with --read-only\./);
});

test('PlanOfAnUnknownOrReadingTool_IsRejected', async (t) => {
    const { plan } = await start(t);
    for (const name of ['FormatMoon', 'ListAllDisks']) {
        const planned = await plan(name, {});
        assert.ok(planned.answer.isError);
        assert.match(planned.text, /PlanCall checks only tools that act/);
    }
});

test('Instructions_NameOnlyOfferedTools', () => {
    const names = table.tools.map((tool) => tool.name);
    for (const argv of [[], ['--read-only'], ['--tools', 'all'], ['--tools', 'clone'], ['--tools', 'care,media']]) {
        const options = readOptions(argv, {}, Object.keys(table.groups));
        const tools = offered(table, options);
        const shown = instructions(table, tools, options.readOnly);
        const allowed = [...tools, ...ownTools].map((tool) => tool.name);
        for (const name of names.filter((one) => shown.includes(one)))
            assert.ok(allowed.includes(name), `${argv}: ${name}`);
        assert.equal(/Task Queued|--tools|PlanCall/.test(shown) && options.readOnly, false, `${argv}`);
    }
    assert.match(instructions(table, offered(table, readOptions(['--tools', 'clone'], {}, Object.keys(table.groups)))), /aibridge:\/\/disks/);
});
