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
                 otherwise the first port from 9090 to 9153 on which it answers
  --tools        groups of tools to offer; default: inventory,partitions,disks
  --read-only    offer only the tools that read
  --yes          do not ask the user before a tool that destroys data
  --timeout      time limit of a call, in seconds (30)
  --ask-timeout  time limit of the user's answer to a question, in seconds (300)
The program uses the Model Context Protocol on standard input and output, and logs to standard error.
`;

/**
 * @param {string[]} argv the arguments, without program and script
 * @param {NodeJS.ProcessEnv} env
 * @param {string[]} groupNames all groups
 * @returns {Options} throws an Error with a message for the user
 */
export function readOptions(argv, env, groupNames) {
    const { values } = parseArgs({ args: argv, options: known });
    const option = values.port === undefined ? undefined : portNumber(values.port);
    const inherited = isPort(env.AGENT_NATIVE_PORT) ? Number(env.AGENT_NATIVE_PORT) : undefined;
    return {
        // An invalid or outdated environment variable must not prevent the handshake.
        port: option ?? inherited,
        portSource: option === undefined ? 'AGENT_NATIVE_PORT' : '--port',
        searchFrom: 9090,
        searchCount: 64,
        timeoutMs: seconds(values.timeout, '--timeout'),
        askTimeoutMs: seconds(values['ask-timeout'], '--ask-timeout'),
        yes: values.yes,
        readOnly: values['read-only'],
        groups: groupsOf(values.tools, groupNames),
        help: values.help,
    };
}

/** @param {string | undefined} text */
const isPort = (text) =>
    text !== undefined && /^\d+$/.test(text) && Number(text) >= 1 && Number(text) <= 65535;

/** @param {string} text */
function portNumber(text) {
    if (!isPort(text)) throw new Error(`--port must be a port from 1 to 65535, but is "${text}".`);
    return Number(text);
}

/** @param {string} text @param {string} name */
function seconds(text, name) {
    const value = Number(text);
    if (!(value > 0 && value <= 3600))
        throw new Error(
            `${name} must be a number of seconds, more than 0 and at most 3600, but is "${text}".`,
        );
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
            `--tools contains an unknown group: "${unknown.join('", "')}". The groups are ${groupNames.join(', ')}; all selects every group.`,
        );
    return names;
}
