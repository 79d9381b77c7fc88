// Every tool through the gateway once, beside the same call through zorcall on an equal host of its own.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { loadTable } from '../src/table.js';
import { connect, text } from './support/client.js';
import { startHost, zorcall } from './support/sandbox.js';

const table = loadTable();
const walk = fileURLToPath(new URL('../../../scripts/lib/agent-all-tools', import.meta.url));

/** The calls of the walk over all tools, in its order, without the gate's. @returns {Array<{ line: string, tool: import('../src/types.js').Tool, args: any }>} */
function calls() {
    const [, list] = /** @type {RegExpExecArray} */ (/^CALLS = """\n([^"]*(?:"[^"\n]+"[^"]*)*)"""/m.exec(readFileSync(walk, 'utf8')));
    return list.split('\n').flatMap((line) => {
        const [name, ...words] = line.split(' ');
        const tool = table.tools.find((one) => one.name === name);
        if (!tool) return [];
        return [{ line, tool, args: Object.fromEntries(words.map((word) => argument(tool, word))) }];
    });
}

/** @param {import('../src/types.js').Tool} tool @param {string} word */
function argument(tool, word) {
    const [name, value] = word.split('=');
    const type = tool.args.find((arg) => arg.name === name)?.type;
    if (type === 'bool') return [name, value === 'true'];
    return [name, type === 'i32' ? Number(value) : value];
}

/** What a call answers, in a form that both sides share: 64-bit numbers as texts. @param {any} value @returns {any} */
function plain(value) {
    if (Array.isArray(value)) return value.map(plain);
    if (value && typeof value === 'object') return Object.fromEntries(Object.entries(value).map(([key, one]) => [key, plain(one)]));
    return typeof value === 'number' ? String(value) : value;
}

/** @param {import('../src/types.js').Tool} tool @param {any} result */
function answerOf(tool, result) {
    assert.ok(result.structuredContent, `${tool.name}: ${text(result)}`);
    if (typeof tool.result === 'string') return result.structuredContent.answer;
    return plain('list' in tool.result ? Object.values(result.structuredContent)[0] : result.structuredContent);
}

// A host pauses two seconds after each tool that acts, so the calls are dealt out to several hosts at once. Calls that
// lean on their neighbours stay together.
const shares = 6;

test('EveryTool_AnswersThroughTheGatewayAsThroughZorcall', { timeout: 170000 }, async (t) => {
    const all = calls();
    assert.deepEqual(all.map(({ tool }) => tool.name).sort(), table.tools.map((tool) => tool.name).sort());
    const size = Math.ceil(all.length / shares);
    const runs = [];
    for (let i = 0; i < shares; i++) {
        const share = all.slice(i * size, (i + 1) * size);
        // One after the other, so that they do not choose the same ports.
        const direct = await startHost(t);
        const behindGateway = await startHost(t);
        const { client } = await connect(t, { args: ['--port', String(behindGateway.port), '--tools', 'all', '--yes'] });
        runs.push({ share, direct, client });
    }
    const answered = await Promise.all(runs.map(async ({ share, direct, client }) => {
        const pairs = [];
        for (const { line, tool, args } of share) {
            const own = plain(JSON.parse(zorcall(direct.port, ...line.split(' '))));
            pairs.push({ name: tool.name, direct: own, gateway: answerOf(tool, await client.callTool({ name: tool.name, arguments: args })) });
        }
        return pairs;
    }));
    const pairs = answered.flat();
    assert.equal(pairs.length, 66);
    for (const pair of pairs) assert.deepEqual(pair.gateway, pair.direct, pair.name);
    // Both kinds of answers of the tools that act have been seen.
    const texts = pairs.map((pair) => pair.gateway).filter((answer) => typeof answer === 'string');
    assert.deepEqual([...new Set(texts)].sort(), ['Task NotValid', 'Task Queued']);
});
