import { fileURLToPath } from 'node:url';
import { Client } from '@modelcontextprotocol/client';
import { StdioClientTransport } from '@modelcontextprotocol/client/stdio';

export const program = fileURLToPath(new URL('../../bin/aibridge-mcp.js', import.meta.url));

/**
 * Starts the gateway as a child process of the official client.
 * @param {import('node:test').TestContext} t closes the client at its end
 * @param {{ args?: string[], env?: Record<string, string>, capabilities?: any, modern?: boolean, elicit?: (params: any) => any, program?: string }} [options]
 */
export async function connect(
    t,
    { args = [], env = {}, capabilities = {}, modern = false, elicit, program: path = program } = {},
) {
    const transport = new StdioClientTransport({
        command: process.execPath,
        args: [path, ...args],
        env: { PATH: process.env.PATH ?? '', ...env },
        stderr: 'pipe',
    });
    let log = '';
    transport.stderr?.on('data', (bytes) => (log += bytes));
    const client = new Client(
        { name: 'test', version: '1' },
        {
            capabilities: { ...capabilities, ...(elicit && { elicitation: {} }) },
            ...(modern && { versionNegotiation: { mode: { pin: '2026-07-28' } } }),
        },
    );
    if (elicit) client.setRequestHandler('elicitation/create', async (request) => elicit(request.params));
    await client.connect(transport);
    t.after(() => client.close());
    return { client, transport, log: () => log };
}

/** The text content of an answer. @param {any} result */
export const text = (result) => result.content.map((/** @type {any} */ part) => part.text).join('\n');
