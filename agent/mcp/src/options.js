import { parseArgs } from 'node:util';

/** @import { Options } from './types.js' */

const known = {
    port: { type: /** @type {const} */ ('string') },
    timeout: { type: /** @type {const} */ ('string'), default: '30' },
    'ask-timeout': { type: /** @type {const} */ ('string'), default: '300' },
    tools: { type: /** @type {const} */ ('string') },
    'read-only': { type: /** @type {const} */ ('boolean'), default: false },
    yes: { type: /** @type {const} */ ('boolean'), default: false },
    help: { type: /** @type {const} */ ('boolean'), short: 'h', default: false },
};

export const usage = `usage: aibridge-mcp [--port N] [--tools GROUP,...|all] [--read-only] [--yes] [--timeout S] [--ask-timeout S]
  --port         port of the application's agent service on this computer; default: AGENT_NATIVE_PORT,
                 else the first port from 9090 to 9105 where it answers
  --tools        groups of tools to offer; default: inventory,partitions,disks
  --read-only    offer only the tools that read
  --yes          do not ask the user before a tool that destroys data
  --timeout      longest time that a call may take, in seconds (30)
  --ask-timeout  longest wait for the user's answer to a question, in seconds (300)
The Model Context Protocol is spoken on standard input and output; the log goes to standard error.
`;

/**
 * @param {string[]} argv the arguments, without program and script
 * @param {NodeJS.ProcessEnv} env
 * @param {string[]} groupNames every group there is
 * @returns {Options} throws an Error with a text for the user
 */
export function readOptions(argv, env, groupNames) {
    const { values } = parseArgs({ args: argv, options: known });
    const named =
        values.port !== undefined
            ? { port: values.port, by: '--port' }
            : { port: env.AGENT_NATIVE_PORT || undefined, by: 'AGENT_NATIVE_PORT' };
    return {
        port: named.port === undefined ? undefined : portNumber(named.port, named.by),
        portSaidBy: named.by,
        searchFrom: 9090,
        searchCount: 16,
        timeoutMs: seconds(values.timeout, '--timeout'),
        askTimeoutMs: seconds(values['ask-timeout'], '--ask-timeout'),
        yes: values.yes,
        readOnly: values['read-only'],
        groups: groupsOf(values.tools, groupNames),
        help: values.help,
    };
}

/** @param {string} text @param {string} by */
function portNumber(text, by) {
    const port = Number(text);
    if (!/^\d+$/.test(text) || port < 1 || port > 65535)
        throw new Error(`${by} must be a port from 1 to 65535, and is "${text}"`);
    return port;
}

/** @param {string} text @param {string} name */
function seconds(text, name) {
    const value = Number(text);
    if (!(value > 0 && value <= 3600))
        throw new Error(`${name} must be a number of seconds up to 3600, and is "${text}"`);
    return value * 1000;
}

/** @param {string | undefined} text @param {string[]} groupNames */
function groupsOf(text, groupNames) {
    if (text === undefined) return undefined;
    if (text === 'all') return groupNames;
    const names = text.split(',').map((name) => name.trim());
    const unknown = names.filter((name) => !groupNames.includes(name));
    if (unknown.length > 0)
        throw new Error(
            `--tools: there is no group "${unknown.join('", "')}"; the groups are ${groupNames.join(', ')}, or all`,
        );
    return names;
}
