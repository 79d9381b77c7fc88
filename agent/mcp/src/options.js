import { parseArgs } from 'node:util';
import { helpText, optionTable, variableOf } from './manual.js';

/** @import { Options } from './types.js' */

export { variableOf, version } from './manual.js';

/** The options that a variable can set as well: clients with a form for settings pass them as variables. */
export const settable = optionTable.filter((option) => option.settable).map((option) => option.name);

export const usage = helpText();

/** @type {Record<string, { type: 'string' | 'boolean', short?: string }>} */
const known = Object.fromEntries(
    optionTable.map(({ name, short, value }) => [
        name,
        { type: value === undefined ? 'boolean' : 'string', ...(short === undefined ? {} : { short }) },
    ]),
);

/**
 * @param {string[]} argv the arguments, without program and script
 * @param {NodeJS.ProcessEnv} env
 * @param {string[]} groupNames all groups
 * @returns {Options} throws an Error with a message for the user
 */
export function readOptions(argv, env, groupNames) {
    const values = /** @type {Record<string, string | boolean | undefined>} */ (
        parseArgs({ args: argv, options: known }).values
    );
    /** The value of an option and its source for messages. @param {string} name */
    const setting = (name) =>
        values[name] !== undefined
            ? { value: values[name], source: `--${name}` }
            : { value: variable(env, variableOf(name)), source: variableOf(name) };
    const port = setting('port');
    const configured = port.value === undefined ? undefined : portNumber(String(port.value), port.source);
    const inherited = isPort(env.AGENT_NATIVE_PORT) ? Number(env.AGENT_NATIVE_PORT) : undefined;
    return {
        // An invalid or outdated AGENT_NATIVE_PORT must not prevent the handshake.
        port: configured ?? inherited,
        portSource: configured === undefined ? 'AGENT_NATIVE_PORT' : port.source,
        searchFrom: 9090,
        searchCount: 64,
        timeoutMs: seconds(setting('timeout'), 30),
        askTimeoutMs: seconds(setting('ask-timeout'), 300),
        yes: truth(setting('yes')),
        readOnly: truth(setting('read-only')),
        groups: groupsOf(setting('tools'), groupNames),
        help: values.help === true,
        version: values.version === true,
    };
}

/**
 * The value of a variable; undefined if it is empty, or a placeholder for which the client has no value.
 * @param {NodeJS.ProcessEnv} env
 * @param {string} name
 */
function variable(env, name) {
    const value = env[name]?.trim();
    return value === '' || /^\$\{.*\}$/.test(value ?? '') ? undefined : value;
}

/** @typedef {{ value: string | boolean | undefined, source: string }} Setting */

/** @param {Setting} setting */
function truth({ value, source }) {
    if (value === undefined || typeof value === 'boolean') return value === true;
    if (/^(1|true|yes|on)$/i.test(value)) return true;
    if (/^(0|false|no|off)$/i.test(value)) return false;
    throw new Error(`${source} must be true or false, but is "${value}".`);
}

/** @param {string | undefined} value */
const isPort = (value) =>
    value !== undefined && /^\d+$/.test(value) && Number(value) >= 1 && Number(value) <= 65535;

/** @param {string} value @param {string} source */
function portNumber(value, source) {
    if (!isPort(value)) throw new Error(`${source} must be a port from 1 to 65535, but is "${value}".`);
    return Number(value);
}

/** @param {Setting} setting @param {number} otherwise in seconds @returns {number} milliseconds */
function seconds({ value, source }, otherwise) {
    const number = Number(value ?? otherwise);
    if (!(number > 0 && number <= 3600))
        throw new Error(
            `${source} must be a number of seconds, more than 0 and at most 3600, but is "${value}".`,
        );
    return number * 1000;
}

/** @param {Setting} setting @param {string[]} groupNames */
function groupsOf({ value, source }, groupNames) {
    if (value === undefined) return undefined;
    if (value === 'all') return groupNames;
    const names = String(value)
        .split(',')
        .map((name) => name.trim());
    const unknown = names.filter((name) => !groupNames.includes(name));
    if (unknown.length > 0)
        throw new Error(
            `${source} contains an unknown group: "${unknown.join('", "')}". The groups are ${groupNames.join(', ')}; all selects every group.`,
        );
    return names;
}
