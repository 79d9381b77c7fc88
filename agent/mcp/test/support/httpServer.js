// A test-only HTTP server for the conformance suite, with the same gateway as on standard input and output.
import { randomUUID } from 'node:crypto';
import { createServer } from 'node:http';
import {
    localhostHostValidation,
    localhostOriginValidation,
    NodeStreamableHTTPServerTransport,
    toNodeHandler,
    toWebRequest,
} from '@modelcontextprotocol/node';
import { createMcpHandler, isLegacyRequest } from '@modelcontextprotocol/server';
import { Gateway } from '../../src/gateway.js';
import { readOptions } from '../../src/options.js';
import { loadTable } from '../../src/table.js';

/**
 * @param {number} hostPort port of the service
 * @returns {Promise<{ url: string, close: () => Promise<void> }>}
 */
export async function serveHttp(hostPort) {
    const gateway = new Gateway(
        readOptions(['--port', String(hostPort), '--tools', 'all'], {}, Object.keys(loadTable().groups)),
    );
    /** @type {Map<string, NodeStreamableHTTPServerTransport>} */
    const sessions = new Map();
    const modern = toNodeHandler(createMcpHandler(() => gateway.server(), { legacy: 'reject' }));
    const validHost = localhostHostValidation();
    const validOrigin = localhostOriginValidation();
    const server = createServer(async (request, response) => {
        if (!validHost(request, response) || !validOrigin(request, response)) return;
        const body = await bodyOf(request);
        if (!(await isLegacyRequest(await toWebRequest(request, body), body)))
            return modern(request, response, body);
        const id = request.headers['mcp-session-id'];
        const transport =
            (typeof id === 'string' && sessions.get(id)) || (await newSession(gateway, sessions));
        await transport.handleRequest(request, response, body);
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', () => resolve(undefined)));
    const { port } = /** @type {import('node:net').AddressInfo} */ (server.address());
    return {
        url: `http://localhost:${port}/mcp`,
        close: async () => {
            server.closeAllConnections();
            await new Promise((resolve) => server.close(resolve));
            await gateway.close();
        },
    };
}

/** The JSON of a request's body; undefined without one. @param {import('node:http').IncomingMessage} request */
async function bodyOf(request) {
    let text = '';
    for await (const bytes of request.setEncoding('utf8')) text += bytes;
    try {
        return JSON.parse(text);
    } catch {
        return undefined;
    }
}

/** @param {Gateway} gateway @param {Map<string, NodeStreamableHTTPServerTransport>} sessions */
async function newSession(gateway, sessions) {
    /** @type {NodeStreamableHTTPServerTransport} */
    const transport = new NodeStreamableHTTPServerTransport({
        sessionIdGenerator: () => randomUUID(),
        onsessioninitialized: (id) => void sessions.set(id, transport),
    });
    await gateway.server().connect(transport);
    return transport;
}
