import { readFileSync } from 'node:fs';

/** @import { Field, Table, Tool, WireType } from './types.js' */

/** @param {string} path */
const readJson = (path) => JSON.parse(readFileSync(new URL(path, import.meta.url), 'utf8'));

/**
 * The table of the tools: the Thrift compiler's JSON of the interface file (names, arguments, comments) joined with
 * tools.json (title, group, class). Throws if the two contain different tools.
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
    const phrases = own.commonPhrases.map((/** @type {string} */ phrase) =>
        withConstants(phrase, api.constants),
    );
    return {
        tools: acting.map((/** @type {any} */ f) => tool(f, own, phrases)),
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

/**
 * @param {any} f
 * @param {any} own
 * @param {string[]} phrases those of own.commonPhrases
 * @returns {Tool}
 */
function tool(f, own, phrases) {
    const details = own.tools[f.name];
    if (!own.groups[details.group]) throw new Error(`${f.name} has the unknown group ${details.group}.`);
    return {
        name: f.name,
        title: details.title,
        group: details.group,
        class: details.class,
        repeatable: Boolean(details.repeatable),
        about: withoutCommonPhrases(f.doc, phrases),
        args: f.arguments
            .map(field)
            .map((/** @type {Field} */ a) => ({ ...a, about: withoutCommonPhrases(a.about, phrases) })),
        result: wireType(f.returnTypeId, f.returnType),
    };
}

/**
 * The phrase with each {NAME} replaced by the value of that constant of the interface.
 * @param {string} phrase
 * @param {Array<{ name: string, value: string }>} constants
 */
export const withConstants = (phrase, constants) =>
    constants.reduce((text, { name, value }) => text.replaceAll(`{${name}}`, value), phrase);

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

/**
 * A comment without the phrases that the server's instructions contain, and without the value of a missing argument,
 * because the gateway requires all arguments.
 * @param {string} text
 * @param {string[]} phrases
 */
function withoutCommonPhrases(text, phrases) {
    let short = oneLine(text).replace(/ ?Absent: [^.]*\./, '');
    for (const phrase of phrases) short = short.replace(phrase, '');
    return oneLine(short).replace(/ ([.;,])/g, '$1');
}
