import { partitionOf } from '../inventory.js';
import { sizeWords } from '../size.js';

/** @import { PlainRecord, Tool } from '../types.js' */
/** @import { Facts } from '../inventory.js' */

/**
 * The reason why a call is rejected.
 * @typedef {object} Cause
 * @property {string} check name of the check
 * @property {string} text a sentence with the figures
 * @property {boolean} certain false if the application can have other limits: it is called, and the cause is reported
 *     only if it rejects the call
 */

/** @typedef {(call: Call) => Cause | undefined} Check */

/** A call with the inventory from immediately before. The parts of a check may rely on the checks before it. */
export class Call {
    /** @param {Tool} tool @param {PlainRecord} args @param {Facts} facts */
    constructor(tool, args, facts) {
        this.tool = tool;
        this.args = args;
        this.facts = facts;
    }

    /** The partition of a drive letter argument; the first such argument by default. @param {string} [name] @returns {PlainRecord | undefined} */
    partition(name = this.tool.args.find((arg) => arg.role === 'drive')?.name ?? '') {
        return partitionOf(this.facts.partitions, this.letter(name));
    }

    /** @param {string} name an argument */
    letter(name) {
        return String(this.args[name] ?? '').slice(0, 1).toUpperCase();
    }

    /** The existing partition of the first drive letter. @returns {PlainRecord} */
    get drive() {
        return /** @type {PlainRecord} */ (this.partition());
    }

    /** The disk of the first disk argument, otherwise of the drive. @returns {PlainRecord} */
    get disk() {
        const name = this.tool.args.find((arg) => arg.role === 'disk')?.name;
        const index = name === undefined ? this.drive.diskIndex : Number(this.args[name]);
        return /** @type {PlainRecord} */ (this.diskOf(index));
    }

    /** @param {number} index @returns {PlainRecord | undefined} */
    diskOf(index) {
        return this.facts.disks.find((disk) => disk.diskIndex === index);
    }

    /** Partitions and unallocated regions of a disk, in order. @param {PlainRecord} disk */
    entries(disk) {
        return this.facts.partitions.filter((p) => p.diskIndex === disk.diskIndex);
    }

    /** @param {string} name an argument @returns {bigint} */
    bytes(name) {
        return BigInt(this.args[name]);
    }
}

/** @param {string} check @param {string} text @returns {Cause} */
export const cause = (check, text) => ({ check, text, certain: true });

/** A limit that another application may not have. @param {string} check @param {string} text @returns {Cause} */
export const possibleCause = (check, text) => ({ check, text, certain: false });

/** The first cause that one of the checks finds. @param {Check[]} checks @returns {Check} */
export const firstOf = (...checks) => (call) => {
    for (const check of checks) {
        const found = check(call);
        if (found) return found;
    }
    return undefined;
};

/** A size in words: "300.00 GB (322122547200 bytes)". @param {bigint} bytes */
export function sizeText(bytes) {
    const words = sizeWords(bytes);
    return words.includes('byte') ? words : `${words} (${bytes} bytes)`;
}

/** "C:". @param {PlainRecord} partition */
export const letterOf = (partition) => `${partition.driveLetter.slice(0, 1).toUpperCase()}:`;
