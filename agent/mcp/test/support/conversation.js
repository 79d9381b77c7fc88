import { connect, text } from './client.js';
import { startHost, zorcall } from './sandbox.js';

/** @import { TestContext } from 'node:test' */

/**
 * A request of a user: the machine, the calls of a model, and the end state.
 * @typedef {object} UserRequest
 * @property {string} name name of its test
 * @property {string} goal the user's words
 * @property {(machine: any) => void} [change] edits the desktop machine
 * @property {string[]} [hostArgs] further options of the host
 * @property {string[]} [groups] offered groups besides the default ones
 * @property {(model: Conversation) => Promise<unknown>} calls
 * @property {number} mostCalls the limit of the calls
 * @property {(end: Inventory, model: Conversation) => void} check asserts the end state
 */

/** @typedef {{ disks: any[], partitions: any[] }} Inventory read without the gateway */

/** The calls of one model with their answers. */
export class Conversation {
    /**
     * @param {import('@modelcontextprotocol/client').Client} client
     * @param {string[]} hostLog
     * @param {() => Promise<unknown>} think runs before each call
     */
    constructor(client, hostLog, think) {
        this.client = client;
        this.hostLog = hostLog;
        this.think = think;
        /** @type {Array<{ name: string, args: any, text: string, content: any, isError: boolean }>} */
        this.made = [];
        /** The questions that the user answered. @type {string[]} */
        this.questions = [];
    }

    /** @param {string} name @param {Record<string, any>} [args] */
    async call(name, args = {}) {
        await this.think();
        const answer = await this.client.callTool(
            { name, arguments: args },
            { timeout: 600000, onprogress: () => {}, resetTimeoutOnProgress: true },
        );
        const entry = {
            name,
            args,
            text: text(answer),
            content: /** @type {any} */ (answer.structuredContent),
            isError: answer.isError === true,
        };
        this.made.push(entry);
        return entry;
    }
}

/** The inventory as zorcall reads it. @param {number} port @returns {Promise<Inventory>} */
export async function inventoryOf(port) {
    const read = async (/** @type {string} */ name) => JSON.parse((await zorcall(port, name))[0]);
    return { disks: await read('ListAllDisks'), partitions: await read('GetAllPartitionInfo') };
}

/**
 * Carries out a request on a host of its own, and checks the end state.
 * @param {TestContext} t
 * @param {UserRequest} request
 * @param {{ speed?: string, think?: () => Promise<unknown> }} [options]
 */
export async function carryOut(t, request, { speed = '20', think = async () => {} } = {}) {
    const host = await startHost(t, {
        change: request.change ?? (() => {}),
        args: ['--speed', speed, ...(request.hostArgs ?? [])],
    });
    const groups = ['inventory', 'partitions', 'disks', ...(request.groups ?? [])];
    /** @type {Conversation | undefined} */
    let model = undefined;
    const { client } = await connect(t, {
        args: ['--port', String(host.port), '--tools', groups.join(',')],
        elicit: ({ message }) => {
            model?.questions.push(message);
            return { action: 'accept', content: { confirm: true } };
        },
    });
    model = new Conversation(client, host.log, think);
    await request.calls(model);
    request.check(await inventoryOf(host.port), model);
    return model;
}
