import { causeOf } from './causes.js';
import { HostError } from './errors.js';
import { factsAbout } from './inventory.js';
import { targetsOf } from './loss.js';
import { diskText, driveText } from './question.js';
import { quoted } from './quote.js';
import { reasonOf } from './unoffered.js';
import { waitTool } from './wait.js';
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
            offered: { type: 'boolean' },
            mayBeRejected: { type: 'boolean' },
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
    if (!tool || tool.class === 'reads') throw unplannable(gateway, given.tool);
    const args = given.arguments ?? {};
    toWire(tool, args);
    const facts = await factsAbout(gateway.host, gateway.table, tool, args, scope);
    const cause = causeOf(tool, args, facts);
    const { lostDisks, lostDrives } = targetsOf(tool, facts);
    const lost = [...lostDrives.map(driveText), ...lostDisks.map(diskText)];
    const content = {
        possible: !cause?.certain,
        offered: gateway.tools.includes(tool),
        mayBeRejected: cause?.certain === false,
        ...(cause && { cause: cause.check, reason: cause.text }),
        asksUser: !cause?.certain && asks(tool),
        lost: cause?.certain ? [] : lost,
        ...(tool.onScreen !== undefined && { opens: tool.onScreen }),
    };
    const outcome = cause?.certain ? `${tool.name} cannot work: ${cause.text}` : outlook(tool, content);
    const excluded = content.offered
        ? []
        : [reasonOf(tool.name, gateway.table, gateway.options)];
    const text = [...excluded, outcome, 'Nothing was called.'].join(' ');
    return { content: [{ type: 'text', text }], structuredContent: content };
}

/** @param {Tool} tool @param {{ reason?: string, asksUser: boolean, lost: string[] }} content */
function outlook(tool, { reason, asksUser, lost }) {
    return [
        reason
            ? `The application may reject ${tool.name}: ${reason}`
            : `The inventory shows no reason to reject ${tool.name}.`,
        `Effect: ${tool.about}`,
        ...(tool.onScreen === undefined ? [] : [tool.onScreen]),
        lost.length > 0 ? `Permanently lost: everything on ${lost.join('; and on ')}.` : effect(tool),
        asksUser ? 'The user is asked first.' : 'The gateway does not ask the user.',
    ].join(' ');
}

/** The reason for the class of a tool, which a page only has after the user's start. @param {Tool} tool */
const effect = ({ onScreen, class: kind, reason }) =>
    onScreen === undefined || kind === 'opens'
        ? reason
        : `The user's start there ${reason.slice(0, 1).toLowerCase()}${reason.slice(1)}`;

/** @param {Gateway} gateway @param {string} name */
function unplannable(gateway, name) {
    const exists = [...gateway.table.tools, planTool, waitTool].some((tool) => tool.name === name);
    const statement = exists
        ? `PlanCall checks only tools that act, and ${quoted(name)} is not one of them.`
        : `There is no tool ${quoted(name)}.`;
    return new HostError('invalid', `${statement} Nothing was called.`, { called: false, cause: 'invalidArguments' });
}
