// Calls every tool once through the gateway, and compares the answer with zorcall's from an identical host.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { TASK_NOT_VALID, TASK_QUEUED } from '../src/constants.js';
import { loadTable } from '../src/table.js';
import { connect, text } from './support/client.js';
import { binaries, parseDigits, startHost, zorcall } from './support/sandbox.js';

const table = loadTable();
const script = fileURLToPath(new URL('../../../scripts/lib/agent-all-tools', import.meta.url));

/** The calls of scripts/lib/agent-all-tools in its order, except the gate's. @returns {Array<{ line: string, tool: import('../src/types.js').Tool, args: any }>} */
function calls() {
    const env = { ...process.env, PATH: `${binaries}:${process.env.PATH}` };
    const list = execFileSync(script, ['--calls'], { env, encoding: 'utf8' });
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

/** The structured answer with every number as a string. @param {any} value @returns {any} */
const plain = (value) => parseDigits(JSON.stringify(value).replace(/":(-?\d)/g, '": $1'));

/** @param {import('../src/types.js').Tool} tool @param {any} result */
function answerOf(tool, result) {
    assert.ok(result.structuredContent, `${tool.name}: ${text(result)}`);
    if (typeof tool.result === 'string') return result.structuredContent.answer ?? result.structuredContent;
    return plain(
        'list' in tool.result ? Object.values(result.structuredContent)[0] : result.structuredContent,
    );
}

/** Retries while the host is executing an earlier order, so that the answer does not depend on its speed. @param {() => Promise<any>} ask */
async function whenIdle(ask) {
    for (;;) {
        const answer = await ask();
        if (answer !== undefined) return answer;
    }
}

/** @param {number} port @param {ReturnType<typeof calls>[number]} call */
async function throughZorcall(port, { line, tool }) {
    const words = line.split(' ');
    if (tool.class === 'reads') return parseDigits((await zorcall(port, ...words))[0]);
    return whenIdle(
        async () => JSON.parse((await zorcall(port, '--gated', '--patient', ...words))[1] ?? '{}')[tool.name],
    );
}

/** @param {number} port @param {import('@modelcontextprotocol/client').Client} client @param {ReturnType<typeof calls>[number]} call */
async function throughGateway(port, client, { tool, args }) {
    return whenIdle(async () => {
        // The gateway checks the call before the gate, so earlier orders must have had their effect.
        if (!JSON.parse((await zorcall(port, 'PreProcessing', 'toolCalls='))[0]).allow) return undefined;
        const complete = tool.class === 'reads' && { allFields: true };
        const result = await client.callTool({ name: tool.name, arguments: { ...args, ...complete } });
        return /** @type {any} */ (result.structuredContent)?.allow === false
            ? undefined
            : answerOf(tool, result);
    });
}

// The gate pauses two seconds after each tool that acts, so several pairs of hosts share the calls.
const shares = 5;

test('EveryTool_AnswersTheSameThroughTheGatewayAndZorcall', { timeout: 870000 }, async (t) => {
    const all = calls();
    assert.deepEqual(all.map(({ tool }) => tool.name).sort(), table.tools.map((tool) => tool.name).sort());
    const size = Math.ceil(all.length / shares);
    const runs = [];
    // Hosts start in sequence, so that they do not choose the same port.
    for (let i = 0; i < shares; i++) {
        const direct = await startHost(t);
        const gatewayHost = await startHost(t);
        const { client } = await connect(t, {
            args: ['--port', String(gatewayHost.port), '--tools', 'all', '--yes'],
        });
        const share = all.slice(i * size, (i + 1) * size);
        runs.push(
            Promise.all([
                inTurn(share, (call) => throughZorcall(direct.port, call)),
                inTurn(share, (call) => throughGateway(gatewayHost.port, client, call)),
            ]),
        );
    }
    const answers = await Promise.all(runs);
    const [direct, gateway] = [answers.flatMap((pair) => pair[0]), answers.flatMap((pair) => pair[1])];
    assert.equal(gateway.length, table.tools.length);
    for (const [i, { tool }] of all.entries())
        if (gateway[i].called === false) {
            // Without the gateway the host rejects the call, or opens a guide that cannot continue.
            assert.ok(direct[i] !== TASK_QUEUED || tool.onScreen !== undefined, `${tool.name} ${gateway[i].cause}`);
        } else assert.deepEqual(gateway[i], direct[i], tool.name);
    // The calls cover both answers of the tools that act.
    assert.ok(direct.includes(TASK_NOT_VALID) && gateway.includes(TASK_QUEUED));
    assert.ok(gateway.some((answer) => answer.called === false));
});

/** @template T, U @param {T[]} all @param {(one: T) => Promise<U>} call */
async function inTurn(all, call) {
    const answers = [];
    for (const one of all) answers.push(await call(one));
    return answers;
}
