import { causeOf } from './causes.js';
import { HostError } from './errors.js';
import { factsAbout } from './inventory.js';
import { targetsOf } from './loss.js';
import { diskText, driveText } from './question.js';
import { quoted } from './quote.js';
import { reasonOf } from './unoffered.js';
import { toWire } from './wire.js';

/** @import { CallToolResult } from '@modelcontextprotocol/server' */
/** @import { CallScope, PlainRecord, Tool } from './types.js' */
/** @import { Gateway } from './gateway.js' */

/** The tool's entry in tools/list, without the annotations. */
export const planTool = {
    name: 'PlanCall',
    title: 'Check a call without making it',
    description:
        'Checks a call of another tool without making it: whether it can work, what is lost, whether the user is asked, the page that opens.',
    inputSchema: {
        type: 'object',
        properties: {
            tool: { type: 'string' },
            arguments: { type: 'object' },
        },
        required: ['tool'],
    },
    outputSchema: {
        type: 'object',
        properties: {
            possible: { type: 'boolean' },
            asksUser: { type: 'boolean' },
        },
        required: ['possible', 'asksUser'],
    },
};

/**
 * @param {Gateway} gateway
 * @param {PlainRecord} given the arguments of PlanCall
 * @param {(tool: Tool) => boolean} asks whether the user is asked before a tool
 * @param {CallScope} scope
 * @returns {Promise<CallToolResult>}
 */
export async function plan(gateway, given, asks, scope) {
    const tool = gateway.table.tools.find(({ name }) => name === given.tool);
    if (!tool || tool.class === 'reads') throw unplannable(String(given.tool));
    const args = given.arguments ?? {};
    toWire(tool, args);
    const facts = await factsAbout(gateway.host, gateway.table, tool, args, scope);
    const cause = causeOf(tool, args, facts);
    const { lostDisks, lostDrives } = targetsOf(tool, facts);
    const lost = [...lostDrives.map(driveText), ...lostDisks.map(diskText)];
    const content = {
        possible: !cause?.certain,
        ...(cause && { cause: cause.check, reason: cause.text }),
        asksUser: !cause?.certain && asks(tool),
        lost: cause?.certain ? [] : lost,
        ...(tool.onScreen !== undefined && { opens: tool.onScreen }),
    };
    const outcome = cause?.certain ? `${tool.name} cannot work: ${cause.text}` : outlook(tool, content);
    const excluded = gateway.tools.includes(tool)
        ? []
        : [reasonOf(tool.name, gateway.table, gateway.options)];
    const text = [outcome, ...excluded, 'Nothing was called.'].join(' ');
    return { content: [{ type: 'text', text }], structuredContent: content };
}

/** @param {Tool} tool @param {{ reason?: string, asksUser: boolean, lost: string[] }} content */
function outlook(tool, { reason, asksUser, lost }) {
    return [
        reason
            ? `The application may reject ${tool.name}: ${reason}`
            : `The inventory shows no reason to reject ${tool.name}.`,
        `Effect: ${tool.about}`,
        lost.length > 0 ? `Permanently lost: everything on ${lost.join('; and on ')}.` : tool.reason,
        asksUser ? 'The user is asked first.' : 'The gateway does not ask the user.',
        ...(tool.onScreen === undefined ? [] : [tool.onScreen]),
    ].join(' ');
}

/** @param {string} name */
const unplannable = (name) =>
    new HostError(
        'invalid',
        `PlanCall checks only tools that act, and ${quoted(name)} is not one of them. Nothing was called.`,
    );
