/** @import { Field, Table, Tool, WireType } from './types.js' */

// Many clients read a JSON number as a double, which cannot represent every 64-bit size: in answers it is a string.
const outputTypes = {
    bool: { type: 'boolean' },
    i32: { type: 'integer' },
    i64: { type: 'string' },
    string: { type: 'string' },
};
const inputTypes = { ...outputTypes, i64: { type: ['integer', 'string'] } };

/**
 * The JSON schema of a tool's arguments. All are required: the service reads a missing one as 0 or empty, and 0 is a
 * valid disk number.
 * @param {Tool} tool
 */
export function inputSchema(tool) {
    /** @type {Record<string, any>} */
    const properties = {};
    for (const arg of tool.args) properties[arg.name] = { ...inputTypes[simple(arg.type)], description: arg.about };
    return {
        type: 'object',
        properties,
        ...(tool.args.length > 0 && { required: tool.args.map((arg) => arg.name) }),
    };
}

/**
 * The JSON schema of a tool's structured answer; undefined for a tool that acts, which returns a string.
 * @param {Tool} tool
 * @param {Table} table
 */
export function outputSchema(tool, table) {
    if (typeof tool.result === 'string') return undefined;
    if ('record' in tool.result) return recordSchema(table, tool.result.record);
    const name = listName(tool.result);
    return { type: 'object', properties: { [name]: typeSchema(tool.result, table) }, required: [name] };
}

/**
 * The key of an array in a structured answer, which must be an object.
 * @param {{ list: WireType }} type
 */
export const listName = (type) =>
    typeof type.list === 'object' && 'record' in type.list && type.list.record === 'DiskInfo'
        ? 'disks'
        : 'partitions';

/**
 * The JSON schema of a record of the interface.
 * @param {Table} table
 * @param {string} name
 */
export function recordSchema(table, name) {
    const fields = table.records[name];
    return {
        type: 'object',
        properties: Object.fromEntries(fields.map((f) => [f.name, typeSchema(f.type, table)])),
    };
}

/** @param {WireType} type @param {Table} table @returns {any} */
function typeSchema(type, table) {
    if (typeof type === 'string') return outputTypes[type];
    if ('record' in type) return recordSchema(table, type.record);
    return { type: 'array', items: typeSchema(type.list, table) };
}

/** @param {WireType} type */
function simple(type) {
    if (typeof type !== 'string') throw new Error('The arguments of a tool must have simple types.');
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
