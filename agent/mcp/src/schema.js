/** @import { Field, Table, Tool, WireType } from './types.js' */

// A size may need more digits than a JSON number keeps in many clients: outwards it is always a text.
const outwards = {
    bool: { type: 'boolean' },
    i32: { type: 'integer' },
    i64: { type: 'string' },
    string: { type: 'string' },
};
const inwards = { ...outwards, i64: { type: ['integer', 'string'] } };

/**
 * The JSON schema of a tool's arguments. All are required: the service reads an absent one as 0 or empty, which
 * would mean disk 0.
 * @param {Tool} tool
 */
export function inputSchema(tool) {
    /** @type {Record<string, any>} */
    const properties = {};
    for (const arg of tool.args) properties[arg.name] = described(inwards[plain(arg.type)], arg.about);
    return {
        type: 'object',
        properties,
        ...(tool.args.length > 0 && { required: tool.args.map((arg) => arg.name) }),
    };
}

/**
 * The JSON schema of a tool's structured answer, or undefined for a tool that acts: it answers with a text.
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
 * The key under which a list stands in a structured answer, which has to be an object.
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
    if (typeof type === 'string') return outwards[type];
    if ('record' in type) return recordSchema(table, type.record);
    return { type: 'array', items: typeSchema(type.list, table) };
}

/** @param {WireType} type */
function plain(type) {
    if (typeof type !== 'string') throw new Error('an argument of a tool is a plain type');
    return type;
}

/**
 * The schema with its description, unless the argument's name says all of it already (driveLetter, diskIndex).
 * @param {any} schema
 * @param {string} description
 */
const described = (schema, description) =>
    /^(Drive letter\.|Disk number\.|)$/.test(description) ? schema : { ...schema, description };

/** @param {Tool} tool */
export function annotations(tool) {
    return {
        readOnlyHint: tool.class === 'reads',
        destructiveHint: tool.class === 'destroys',
        idempotentHint: tool.class === 'reads' || tool.class === 'opens' || tool.repeatable,
        openWorldHint: false,
    };
}

/**
 * A tool as tools/list shows it.
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
