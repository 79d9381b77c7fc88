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
    assert.deepEqual([content.offered, content.mayBeRejected], [true, true]);
    assert.equal(content.lost.length, 1);
    assert.match(planned.text, /Permanently lost: everything on drive E: label "Dätà".*The user is asked first\./);
    assert.deepEqual([...new Set(service.names())].sort(), ['GetAllPartitionInfo', 'Init', 'ListAllDisks']);
});

test('PlanOfAnImpossibleCall_StatesTheCauseAndNoQuestion', async (t) => {
    const { service, plan } = await start(t, { elicit: () => assert.fail('asked') });
    const { content, ...planned } = await plan('FormatPartition', { ...format, driveLetter: 'Q' });
    assert.deepEqual([content.possible, content.mayBeRejected, content.asksUser, content.cause], [false, false, false, 'absentDrive']);
    assert.match(planned.text, /cannot work: Drive Q: does not exist\. The drives are C:, E:\./);
    assert.ok(!service.names().includes('PreProcessing'));
});

test('PlanBeyondALimitOfTheApplication_StatesItAsPossible', async (t) => {
    const { plan } = await start(t);
    const { content, ...planned } = await plan('FormatPartition', { ...format, fileSystem: 'FAT32' });
    assert.deepEqual([content.possible, content.mayBeRejected, content.cause], [true, true, 'fileSystemCreated']);
    assert.match(planned.text, /The application may reject FormatPartition: FAT32 can be created with/);
});

test('PlanOfAToolThatOpensAPage_DescribesThePage', async (t) => {
    const { plan } = await start(t, { args: ['--tools', 'all'] });
    const { content, ...planned } = await plan('ConvertDiskToGpt', { diskIndex: 1 });
    assert.deepEqual([content.offered, content.mayBeRejected], [true, false]);
    assert.match(content.opens, /The conversion guide shows the disk and its new type/);
    assert.match(
        planned.text,
        /Effect: Opens the guide .* The user's start there replaces the partition table of an existing disk\./,
    );
    assert.doesNotMatch(planned.text, /Replaces the partition table/);
});

test('PlanOfAToolThatIsNotOffered_NamesTheOption', async (t) => {
    const group = await (await start(t)).plan('ConvertDiskToGpt', { diskIndex: 1 });
    assert.deepEqual([group.content.offered, group.content.possible], [false, true]);
    assert.match(group.text, /^ConvertDiskToGpt is not offered\. It belongs to the group convert .*--tools/);
    const readOnly = await (await start(t, { args: ['--read-only'] })).plan('FormatPartition', format);
    assert.equal(readOnly.content.offered, false);
    assert.match(readOnly.text, /^FormatPartition is not offered, because the gateway runs with --read-only\./);
});

test('PlanOfAnUnknownOrReadingTool_IsRejected', async (t) => {
    const { plan } = await start(t);
    for (const [name, statement] of [
        ['FormatMoon', 'There is no tool "FormatMoon".'],
        ['ListAllDisks', 'PlanCall checks only tools that act, and "ListAllDisks" is not one of them.'],
    ]) {
        const planned = await plan(name, {});
        assert.ok(planned.answer.isError);
        assert.equal(planned.text, `${statement} Nothing was called.`);
    }
});

test('InvalidArgumentsOfTheGatewaysOwnTools_AreExplainedLikeThoseOfTheOthers', async (t) => {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    const { client } = await connect(t, { args: ['--port', String(service.port)] });
    for (const [name, args, reason] of /** @type {Array<[string, any, string]>} */ ([
        ['PlanCall', {}, 'tool is missing'],
        ['PlanCall', { tool: 7 }, 'tool must be a string'],
        ['PlanCall', { tool: 'WipeDisk', arguments: [1] }, 'arguments must be an object'],
        ['PlanCall', { tool: 'WipeDisk', args: {} }, 'it has no argument "args"'],
        ['WaitForChange', { seconds: 'long' }, 'seconds must be a whole number'],
        ['WaitForChange', { seconds: 601 }, 'seconds must be between 0 and 600'],
    ])) {
        const answer = await client.callTool({ name, arguments: args });
        assert.ok(answer.isError);
        assert.equal(text(answer), `${name} was not called: ${reason}.`);
        assert.deepEqual(answer.structuredContent, { called: false, cause: 'invalidArguments' });
    }
    const zero = await client.callTool({ name: 'WaitForChange', arguments: { seconds: '0' } });
    assert.ok(!zero.isError, text(zero));
    assert.deepEqual([...new Set(service.names())].sort(), ['GetAllPartitionInfo', 'Init', 'ListAllDisks']);
});

test('Instructions_NameOnlyOfferedTools', () => {
    const names = table.tools.map((tool) => tool.name);
    for (const argv of [[], ['--read-only'], ['--tools', 'all'], ['--tools', 'clone'], ['--tools', 'care,media'], ['--tools', 'inventory']]) {
        const options = readOptions(argv, {}, Object.keys(table.groups));
        const tools = offered(table, options);
        const shown = instructions(table, tools, options.readOnly);
        const allowed = [...tools, ...ownTools].map((tool) => tool.name);
        for (const name of names.filter((one) => shown.includes(one)))
            assert.ok(allowed.includes(name), `${argv}: ${name}`);
        const acts = tools.some((tool) => tool.class !== 'reads');
        assert.equal(/Task Queued|Tools that act/.test(shown), acts, `${argv}`);
        assert.equal(/--tools/.test(shown), !options.readOnly && !argv.includes('all'), `${argv}`);
        for (const { name } of ownTools) assert.ok(shown.includes(name), `${argv}: ${name}`);
    }
    const all = instructions(table, table.tools);
    assert.match(all, /1 GB is 1024\^3 bytes/);
    assert.match(instructions(table, offered(table, readOptions(['--tools', 'clone'], {}, Object.keys(table.groups)))), /aibridge:\/\/disks/);
});
