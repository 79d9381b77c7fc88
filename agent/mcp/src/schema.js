import { leanFields } from './lean.js';

/** @import { Argument, Table, Tool, WireType } from './types.js' */

// Many clients read a JSON number as a double, which cannot represent every 64-bit size: in answers it is a string.
const outputTypes = {
    bool: { type: 'boolean' },
    i32: { type: 'integer' },
    i64: { type: 'string' },
    string: { type: 'string' },
};
// An argument of the gateway, which the service does not have.
const allFields = {
    type: 'boolean',
    description: 'True: every field, also false flags and sector numbers. Costs four times the tokens.',
    default: false,
};

/**
 * The JSON schema of a tool's arguments. All are required: the service reads a missing one as 0 or empty, and 0 is a
 * valid disk number.
 * @param {Tool} tool
 */
export function inputSchema(tool) {
    /** @type {Record<string, any>} */
    const properties = {};
    for (const arg of tool.args) properties[arg.name] = argumentSchema(arg);
    if (tool.class === 'reads') properties.allFields = allFields;
    return {
        type: 'object',
        properties,
        ...(tool.args.length > 0 && { required: tool.args.map((arg) => arg.name) }),
    };
}

/**
 * The JSON schema of an argument. It uses only keywords that all large model providers accept: one type, and no
 * combinations. A 64-bit size is a string; toWire also accepts a number.
 * @param {Argument} arg
 */
function argumentSchema(arg) {
    const description = [arg.obvious ? '' : arg.about, arg.note].filter(Boolean).join(' ');
    const pattern = patternOf(arg);
    const values = arg.values ?? arg.suggestions;
    const isNumber = arg.type === 'i32';
    return {
        type: outputTypes[simple(arg.type)].type,
        ...(pattern && { pattern }),
        ...(values && { enum: values }),
        ...(isNumber && arg.minimum !== undefined && { minimum: arg.minimum }),
        ...(isNumber && arg.maximum !== undefined && { maximum: arg.maximum }),
        ...(description && { description }),
    };
}

/**
 * Replaces the SDK's check of arguments: toWire also accepts what models send in spite of the schema, such as a size as
 * a number, and its messages give the next step. The SDK's message would repeat a long argument.
 * @type {import('@modelcontextprotocol/server').jsonSchemaValidator}
 */
export const acceptAll = {
    getValidator: () => (input) => ({ valid: true, data: /** @type {any} */ (input), errorMessage: undefined }),
};

/** @param {Argument} arg */
function patternOf(arg) {
    if (arg.type === 'i64') return arg.minimum === 1 ? '^[1-9][0-9]{0,18}$' : '^-?[1-9][0-9]{0,18}$';
    if (arg.role !== 'drive' && arg.role !== 'newLetter') return undefined;
    return arg.mayBeEmpty ? '^([A-Za-z](:\\\\?)?)?$' : '^[A-Za-z](:\\\\?)?$';
}

/**
 * The JSON schema of a tool's structured answer; undefined for a tool that acts, which returns a string. It describes
 * the lean records; allFields adds the other fields of the interface.
 * @param {Tool} tool
 * @param {Table} table
 */
export function outputSchema(tool, table) {
    if (typeof tool.result === 'string') return undefined;
    if ('record' in tool.result) return recordSchema(table, tool.result.record);
    const name = listName(tool.result);
    const items = recordSchema(table, recordOf(tool.result));
    return {
        type: 'object',
        properties: {
            [name]: { type: 'array', items },
            omitted: { type: 'integer', description: 'Records that exceeded the limit of an answer.' },
        },
        required: [name],
    };
}

/**
 * The key of an array in a structured answer, which must be an object.
 * @param {{ list: WireType }} type
 */
export const listName = (type) => (recordOf(type) === 'DiskInfo' ? 'disks' : 'partitions');

/** @param {{ list: WireType }} type @returns {string} the name of its records */
function recordOf({ list }) {
    if (typeof list === 'string' || !('record' in list)) throw new Error('A list must contain records.');
    return list.record;
}

/**
 * The JSON schema of a lean record. Flags are not listed, which halves its tokens; 64-bit sizes have a description,
 * which states their unit.
 * @param {Table} table
 * @param {string} name
 */
export function recordSchema(table, name) {
    const fields = table.records[name].filter(
        (field) => leanFields[name].includes(field.name) && field.type !== 'bool',
    );
    const properties = Object.fromEntries(
        fields.map(({ name, type, about }) => [
            name,
            { type: outputTypes[simple(type)].type, ...(type === 'i64' && { description: about }) },
        ]),
    );
    if (name === 'PartitionInfo') properties.unallocatedIndex = { type: 'integer' };
    return { type: 'object', description: 'Also flags such as isUnallocated, if true.', properties };
}

/** @param {WireType} type */
function simple(type) {
    if (typeof type !== 'string') throw new Error('Arguments and fields must have simple types.');
    return type;
}

/** @param {Tool} tool */
export function annotations(tool) {
    return {
        readOnlyHint: tool.class === 'reads',
        // In the protocol, false means that the tool only adds.
        destructiveHint: tool.class === 'changes' || tool.class === 'destroys',
        idempotentHint: tool.class === 'reads' || tool.class === 'opens' || tool.repeatable,
        openWorldHint: false,
    };
}

/**
 * The entry of a tool in tools/list.
 * @param {Tool} tool
 * @param {Table} table
 */
export function listed(tool, table) {
    const output = outputSchema(tool, table);
    return {
        name: tool.name,
        title: tool.title,
        description: tool.about,
        inputSchema: inputSchema(tool),
        ...(output && { outputSchema: output }),
        annotations: annotations(tool),
    };
}
