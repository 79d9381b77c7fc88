// Preloaded into the conformance suite on Node 20: the suite imports fs.globSync, which Node 22 added. The scenarios for
// servers do not call it, so the replacement only has to exist.
import fs from 'node:fs';
import { register } from 'node:module';

const shim = `export * from 'node:fs'; export { default } from 'node:fs';
export function globSync() { throw new Error('fs.globSync needs Node 22.'); }`;
const hook = `export const resolve = (name, context, next) =>
    name === 'fs' && context.parentURL?.includes('/@modelcontextprotocol/conformance/')
        ? { url: 'data:text/javascript,' + ${JSON.stringify(encodeURIComponent(shim))}, shortCircuit: true }
        : next(name, context);`;

if (!('globSync' in fs)) register(`data:text/javascript,${encodeURIComponent(hook)}`, import.meta.url);
