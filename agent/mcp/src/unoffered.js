import { ProtocolError, ProtocolErrorCode } from '@modelcontextprotocol/server';
import { quoted } from './quote.js';

/** @import { McpServer } from '@modelcontextprotocol/server' */
/** @import { Options, Table } from './types.js' */

/**
 * Explains a call of a tool that the options exclude, before the SDK rejects it as unknown. The SDK's message would
 * also repeat a long name.
 * @param {McpServer} server without tools so far: the SDK sets its handlers at the first one
 * @param {Table} table
 * @param {Options} options
 */
export function explainUnofferedTools(server, table, options) {
    const offered = new Set();
    const registerTool = server.registerTool.bind(server);
    server.registerTool = (/** @type {string} */ name, /** @type {any[]} */ ...rest) => {
        offered.add(name);
        return /** @type {any} */ (registerTool)(name, ...rest);
    };
    const inner = server.server;
    const setRequestHandler = inner.setRequestHandler.bind(inner);
    inner.setRequestHandler = (/** @type {string} */ method, /** @type {any[]} */ ...rest) => {
        const handler = rest.pop();
        /** @param {any} request @param {any} context */
        const checked = async (request, context) => {
            if (!offered.has(request.params.name))
                throw new ProtocolError(
                    ProtocolErrorCode.InvalidParams,
                    reasonOf(request.params.name, table, options),
                );
            return handler(request, context);
        };
        const used = method === 'tools/call' ? checked : handler;
        return /** @type {any} */ (setRequestHandler)(method, ...rest, used);
    };
}

/** The sentence about a tool that is not offered. @param {string} name @param {Table} table @param {Options} options */
export function reasonOf(name, table, options) {
    const tool = table.tools.find((one) => one.name === name);
    if (!tool) return `The gateway has no tool ${quoted(name)}.`;
    if (options.readOnly && tool.class !== 'reads')
        return `${name} is not offered, because the gateway runs with --read-only. Only the user can change this, in the gateway's configuration.`;
    return `${name} is not offered. It belongs to the group ${tool.group} (${table.groups[tool.group].about}). The user can add the group with --tools in the gateway's configuration, or with AIBRIDGE_MCP_TOOLS, and restart the gateway.`;
}
