import { readFileSync } from 'node:fs';

/** @import { Argument, Field, Table, Tool, WireType } from './types.js' */

/** @param {string} path */
const readJson = (path) => JSON.parse(readFileSync(new URL(path, import.meta.url), 'utf8'));

/**
 * The table of the tools: the Thrift compiler's JSON of the interface file (names, arguments, comments) joined with
 * tools.json (title, group, class, the facts about each argument). A comment is shown unchanged,
 * unless tools.json has an `about` for the argument. Throws if the two contain different tools.
 * @returns {Table}
 */
export function loadTable() {
    return joinTable(readJson('../generated/ZORNativePlugin.json'), readJson('../tools.json'));
}

/**
 * @param {any} api the interface in the JSON of thrift --gen json
 * @param {any} own the content of tools.json
 * @returns {Table}
 */
export function joinTable(api, own) {
    const functions = api.services[0].functions;
    const methods = functions.map((/** @type {any} */ f) => f.name);
    const acting = functions.filter((/** @type {any} */ f) => !own.gate.includes(f.name));
    requireSameTools(
        acting.map((/** @type {any} */ f) => f.name),
        Object.keys(own.tools),
    );
    return {
        tools: acting.map((/** @type {any} */ f) => tool(f, own)),
        groups: own.groups,
        records: Object.fromEntries(api.structs.map((/** @type {any} */ s) => [s.name, s.fields.map(field)])),
        methods,
        gate: own.gate,
    };
}

/** @param {string[]} methods @param {string[]} described */
function requireSameTools(methods, described) {
    const different = [
        ...methods.filter((name) => !described.includes(name)),
        ...described.filter((name) => !methods.includes(name)),
    ];
    if (different.length > 0)
        throw new Error(
            `The interface file and tools.json contain different tools: ${different.join(', ')}.`,
        );
}

/** @param {any} f @param {any} own @returns {Tool} */
function tool(f, own) {
    const details = own.tools[f.name];
    if (!own.groups[details.group]) throw new Error(`${f.name} has the unknown group ${details.group}.`);
    return {
        name: f.name,
        title: details.title,
        group: details.group,
        class: details.class,
        reason: details.reason,
        repeatable: Boolean(details.repeatable),
        loses: details.loses ?? [],
        losesWholeDisk: Boolean(details.losesWholeDisk),
        onScreen: details.onScreen,
        about: oneLine(f.doc),
        args: f.arguments.map((/** @type {any} */ a) => argument(a, own, details)),
        result: wireType(f.returnTypeId, f.returnType),
    };
}

/** @param {any} a @param {any} own @param {any} details those of its tool @returns {Argument} */
function argument(a, own, details) {
    const facts = own.arguments[a.name];
    if (!facts) throw new Error(`tools.json does not describe the argument ${a.name}.`);
    return { ...field(a), ...facts, ...details.arguments?.[a.name] };
}

/** @param {any} f @returns {Field} */
const field = (f) => ({ name: f.name, type: wireType(f.typeId, f.type), about: oneLine(f.doc) });

/** @param {string} id @param {any} detail @returns {WireType} */
function wireType(id, detail) {
    if (id === 'struct') return { record: detail.class };
    if (id === 'list') return { list: wireType(detail.elemTypeId, detail.elemType) };
    if (id === 'bool' || id === 'i32' || id === 'i64' || id === 'string') return id;
    throw new Error(`The gateway does not support the type ${id} of the interface.`);
}

/** @param {string | undefined} text */
const oneLine = (text) => (text ?? '').split(/\s+/).join(' ').trim();
