import Int64 from 'node-int64';
import { HostError } from './errors.js';
import { quoted } from './quote.js';

/** @import { Argument, Table, Tool, WireType } from './types.js' */

/** A tool of the service or of the gateway itself. @typedef {{ name: string }} Named */

const maxNames = 3;
const I32 = [-(2n ** 31n), 2n ** 31n - 1n];
const I64 = [-(2n ** 63n), 2n ** 63n - 1n];

/**
 * A tool's arguments in the form of the generated client, in the interface's order.
 * @param {Tool} tool
 * @param {Record<string, unknown>} given
 */
export function toWire(tool, given) {
    const names = tool.args.map((arg) => arg.name);
    requireNames(tool, given, names, names);
    return tool.args.map((arg) => valueToWire(tool, arg, given[arg.name]));
}

/**
 * The arguments of a tool of the gateway itself, checked against its schema.
 * @param {{ name: string, inputSchema: { properties: Record<string, any>, required?: string[] } }} tool
 * @param {Record<string, unknown>} given
 */
export function ownArguments(tool, given) {
    const { properties, required = [] } = tool.inputSchema;
    requireNames(tool, given, Object.keys(properties), required);
    const present = Object.entries(given).filter(([, value]) => isPresent(value));
    return Object.fromEntries(
        present.map(([name, value]) => {
            const { type, minimum, maximum } = properties[name];
            if (type === 'integer') return [name, Number(integer(tool, { name, minimum, maximum }, value, I32))];
            if (type === 'object' ? !isRecord(value) : typeof value !== type)
                throw invalid(tool, `${name} must be ${type === 'object' ? 'an object' : `a ${type}`}`);
            return [name, value];
        }),
    );
}

/** @param {unknown} value */
const isPresent = (value) => value !== undefined && value !== null;

/** @param {unknown} value */
const isRecord = (value) => typeof value === 'object' && !Array.isArray(value);

/** @param {Named} tool @param {Record<string, unknown>} given @param {string[]} known @param {string[]} required */
function requireNames(tool, given, known, required) {
    const unknown = Object.keys(given).filter((name) => !known.includes(name));
    if (unknown.length > 0) {
        const names = unknown.slice(0, maxNames).map((name) => quoted(name));
        throw invalid(tool, `it has no argument ${names.join(', ')}`);
    }
    const missing = required.filter((name) => !isPresent(given[name]));
    if (missing.length === 1) throw invalid(tool, `${missing[0]} is missing`);
    if (missing.length > 1)
        throw invalid(tool, `${missing.slice(0, -1).join(', ')} and ${missing.at(-1)} are missing`);
}

/** @param {Tool} tool @param {Argument} arg @param {unknown} value */
function valueToWire(tool, arg, value) {
    switch (arg.type) {
        case 'bool':
            return requireBoolean(tool, arg.name, value);
        case 'i32':
            return clusterSize(tool, arg, Number(integer(tool, arg, value, I32)));
        case 'i64':
            return toInt64(integer(tool, arg, value, I64));
        default:
            if (typeof value !== 'string') throw invalid(tool, `${arg.name} must be a string`);
            if (arg.values && !arg.values.includes(value))
                throw invalid(tool, `${arg.name} must be ${arg.values.join(' or ')}`);
            return arg.role === 'drive' || arg.role === 'newLetter' ? driveLetter(tool, arg, value) : value;
    }
}

/** @param {Tool} tool @param {string} name of the argument @param {unknown} value */
export function requireBoolean(tool, name, value) {
    if (typeof value !== 'boolean') throw invalid(tool, `${name} must be true or false`);
    return value;
}

/** @param {Tool} tool @param {Argument} arg @param {number} value of any role */
function clusterSize(tool, arg, value) {
    if (arg.role !== 'clusterSize' || value === arg.automatic || Number.isInteger(Math.log2(value))) return value;
    const automatic = arg.automatic === undefined ? '' : `, or ${arg.automatic}`;
    throw invalid(tool, `${arg.name} must be a power of two${automatic}, but is ${value}`);
}

/**
 * The service reads only the first byte, so "Data" would select drive D. Only a single letter is accepted.
 * @param {Tool} tool
 * @param {Argument} arg
 * @param {string} value
 */
function driveLetter(tool, arg, value) {
    if (/^[A-Za-z](:\\?)?$/.test(value) || (arg.mayBeEmpty && value === '')) return value;
    throw invalid(
        tool,
        `${arg.name} must be one letter, such as "E" or "E:"${arg.mayBeEmpty ? ', or empty' : ''}, but is ${quoted(value)}`,
    );
}

/**
 * @param {Named} tool
 * @param {Pick<Argument, 'name' | 'minimum' | 'maximum'> & Partial<Argument>} arg
 * @param {any} value
 * @param {bigint[]} range
 */
function integer(tool, arg, value, [min, max]) {
    if (typeof value === 'number' && Number.isInteger(value) && !Number.isSafeInteger(value))
        throw invalid(
            tool,
            `${arg.name} has more digits than a JSON number keeps: send it as a decimal string`,
        );
    const isInteger =
        (typeof value === 'number' && Number.isInteger(value)) ||
        (typeof value === 'string' && /^-?\d{1,20}$/.test(value));
    if (!isInteger) throw invalid(tool, `${arg.name} must be a whole number${unitText(arg)}`);
    const number = BigInt(value);
    const [least, most] = [BigInt(arg.minimum ?? min), BigInt(arg.maximum ?? max)];
    if (number < least || number > most)
        throw invalid(tool, `${arg.name} must be between ${least} and ${most}`);
    return number;
}

/** @param {Partial<Argument>} arg */
const unitText = ({ unit, type }) =>
    unit === undefined ? '' : ` of ${unit}${type === 'i64' ? ', such as 429496729600' : ''}`;

/** @param {bigint} value */
function toInt64(value) {
    const bytes = Buffer.alloc(8);
    bytes.writeBigInt64BE(value);
    return new Int64(bytes);
}

/** @param {Named} tool @param {string} reason */
const invalid = (tool, reason) =>
    new HostError('invalid', `${tool.name} was not called: ${reason}.`, {
        called: false,
        cause: 'invalidArguments',
    });

/**
 * Converts a value of the generated client to JSON; 64-bit integers become decimal strings.
 * @param {any} value
 * @param {WireType} type
 * @param {Table} table
 * @returns {any}
 */
export function fromWire(value, type, table) {
    if (type === 'i64') return value === null ? '0' : value.buffer.readBigInt64BE(value.offset).toString();
    if (typeof type === 'string') return value ?? { bool: false, i32: 0, string: '' }[type];
    if ('list' in type) return value.map((/** @type {any} */ item) => fromWire(item, type.list, table));
    return Object.fromEntries(
        table.records[type.record].map((f) => [f.name, fromWire(value[f.name], f.type, table)]),
    );
}
