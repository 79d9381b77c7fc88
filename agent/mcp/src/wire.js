import Int64 from 'node-int64';
import { HostError } from './errors.js';
import { quoted } from './quote.js';

/** @import { Argument, Table, Tool, WireType } from './types.js' */

const maxNames = 3;
const I32 = [-(2n ** 31n), 2n ** 31n - 1n];
const I64 = [-(2n ** 63n), 2n ** 63n - 1n];

/**
 * A tool's arguments in the form of the generated client, in the interface's order.
 * @param {Tool} tool
 * @param {Record<string, unknown>} given
 */
export function toWire(tool, given) {
    const unknown = Object.keys(given).filter((name) => !tool.args.some((arg) => arg.name === name));
    if (unknown.length > 0) {
        const names = unknown.slice(0, maxNames).map((name) => quoted(name));
        throw invalid(tool, `it has no argument ${names.join(', ')}`);
    }
    return tool.args.map((arg) => valueToWire(tool, arg, given[arg.name]));
}

/** @param {Tool} tool @param {Argument} arg @param {unknown} value */
function valueToWire(tool, arg, value) {
    if (value === undefined || value === null) throw invalid(tool, `${arg.name} is missing`);
    switch (arg.type) {
        case 'bool':
            return requireBoolean(tool, arg.name, value);
        case 'i32':
            return Number(integer(tool, arg, value, I32));
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

/** @param {Tool} tool @param {Argument} arg @param {unknown} value @param {bigint[]} range */
function integer(tool, arg, value, [min, max]) {
    if (typeof value === 'number' && Number.isInteger(value) && !Number.isSafeInteger(value))
        throw invalid(
            tool,
            `${arg.name} has more digits than a JSON number keeps: send it as a decimal string`,
        );
    const isInteger =
        (typeof value === 'number' && Number.isInteger(value)) ||
        (typeof value === 'string' && /^-?\d{1,20}$/.test(value));
    if (!isInteger) throw invalid(tool, `${arg.name} must be a whole number`);
    const number = BigInt(value);
    const [least, most] = [BigInt(arg.minimum ?? min), BigInt(arg.maximum ?? max)];
    if (number < least || number > most)
        throw invalid(tool, `${arg.name} must be between ${least} and ${most}`);
    return number;
}

/** @param {bigint} value */
function toInt64(value) {
    const bytes = Buffer.alloc(8);
    bytes.writeBigInt64BE(value);
    return new Int64(bytes);
}

/** @param {Tool} tool @param {string} reason */
const invalid = (tool, reason) => new HostError('invalid', `${tool.name} was not called: ${reason}.`);

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
