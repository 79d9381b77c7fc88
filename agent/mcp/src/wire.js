import Int64 from 'node-int64';
import { HostError } from './errors.js';
import { listName } from './schema.js';

/** @import { Field, Plain, PlainRecord, Table, Tool, WireType } from './types.js' */

const I32 = [-(2n ** 31n), 2n ** 31n - 1n];
const I64 = [-(2n ** 63n), 2n ** 63n - 1n];

/**
 * A tool's arguments as the generated client takes them, in the interface's order.
 * @param {Tool} tool
 * @param {Record<string, unknown>} given
 */
export function toWire(tool, given) {
    const unknown = Object.keys(given).filter((name) => !tool.args.some((arg) => arg.name === name));
    if (unknown.length > 0) throw invalid(tool, `it has no argument ${unknown.join(', ')}`);
    return tool.args.map((arg) => valueToWire(tool, arg, given[arg.name]));
}

/** @param {Tool} tool @param {Field} arg @param {unknown} value */
function valueToWire(tool, arg, value) {
    if (value === undefined || value === null) throw invalid(tool, `${arg.name} is missing`);
    switch (arg.type) {
        case 'bool':
            if (typeof value !== 'boolean') throw invalid(tool, `${arg.name} must be true or false`);
            return value;
        case 'i32':
            return Number(integer(tool, arg, value, I32));
        case 'i64':
            return toInt64(integer(tool, arg, value, I64));
        default:
            if (typeof value !== 'string') throw invalid(tool, `${arg.name} must be a text`);
            return isDriveLetter(arg) ? driveLetter(tool, arg, value) : value;
    }
}

/** @param {Field} arg */
export const isDriveLetter = (arg) => arg.type === 'string' && /driveLetter\d?$/i.test(arg.name);

/** @param {Field} arg */
export const isDiskIndex = (arg) => arg.type === 'i32' && /diskIndex$/i.test(arg.name);

/**
 * The service looks at the first byte only, so "Data" would mean drive D: more than a letter is not sent on.
 * @param {Tool} tool
 * @param {Field} arg
 * @param {string} value
 */
function driveLetter(tool, arg, value) {
    const mayBeEmpty = /may be empty/i.test(arg.about);
    if (/^[A-Za-z](:\\?)?$/.test(value) || (mayBeEmpty && value === '')) return value;
    throw invalid(
        tool,
        `${arg.name} must be one letter, such as "E" or "E:"${mayBeEmpty ? ', or empty' : ''}, and not "${value}"`,
    );
}

/** @param {Tool} tool @param {Field} arg @param {unknown} value @param {bigint[]} range */
function integer(tool, arg, value, [least, most]) {
    if (typeof value === 'number' && Number.isInteger(value) && !Number.isSafeInteger(value))
        throw invalid(
            tool,
            `${arg.name} is too large for a JSON number to keep every digit: send it as a text of digits`,
        );
    const whole =
        (typeof value === 'number' && Number.isInteger(value)) ||
        (typeof value === 'string' && /^-?\d{1,20}$/.test(value));
    if (!whole) throw invalid(tool, `${arg.name} must be a whole number`);
    const number = BigInt(value);
    if (number < least || number > most)
        throw invalid(tool, `${arg.name} must lie between ${least} and ${most}`);
    return number;
}

/** @param {bigint} value */
function toInt64(value) {
    const bytes = Buffer.alloc(8);
    bytes.writeBigInt64BE(value);
    return new Int64(bytes);
}

/** @param {Tool} tool @param {string} why */
const invalid = (tool, why) => new HostError('invalid', `${tool.name} was not called: ${why}.`);

/**
 * A value from the generated client as JSON has it; 64-bit numbers become decimal texts.
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

/**
 * The structured form of a reading tool's answer: always an object.
 * @param {Tool} tool
 * @param {any} plain
 * @returns {PlainRecord}
 */
export const structured = (tool, plain) =>
    typeof tool.result === 'object' && 'list' in tool.result ? { [listName(tool.result)]: plain } : plain;
