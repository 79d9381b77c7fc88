import { createHash, randomBytes } from 'node:crypto';
import {
    CLIENT_CAPABILITIES_META_KEY,
    createRequestStateCodec,
    inputRequired,
    inputResponse,
} from '@modelcontextprotocol/server';
import { questionText } from './question.js';

/** @import { McpServer, ServerContext } from '@modelcontextprotocol/server' */
/** @import { Options, PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */

/** Asks the user before a tool that destroys data, if the client supports it. One answer allows one call. */
export class Consent {
    /** @param {Options} options */
    constructor(options) {
        this.options = options;
        /** Questions without an answer so far. @type {Set<string>} */
        this.open = new Set();
        this.codec = createRequestStateCodec({
            key: randomBytes(32),
            ttlSeconds: Math.ceil(options.askTimeoutMs / 1000),
        });
    }

    /** @param {Tool} tool @param {McpServer} server @param {ServerContext} context */
    needed(tool, server, context) {
        return tool.class === 'destroys' && !this.options.yes && canAsk(server, context);
    }

    /**
     * The user's answer to this call; 'unasked' before the question.
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {ServerContext} context
     * @returns {'unasked' | 'yes' | 'no'}
     */
    answer(tool, args, context) {
        const view = inputResponse(context.mcpReq.inputResponses, 'confirm');
        const state = /** @type {{ call: string, nonce: string } | undefined} */ (
            context.mcpReq.requestState()
        );
        if (
            view.kind === 'missing' ||
            !state ||
            !this.open.delete(state.nonce) ||
            state.call !== fingerprint(tool, args)
        )
            return 'unasked';
        return view.kind === 'elicit' && view.action === 'accept' && view.content?.confirm === true
            ? 'yes'
            : 'no';
    }

    /**
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {Facts} facts
     */
    async question(tool, args, facts) {
        const nonce = randomBytes(12).toString('hex');
        this.open.add(nonce);
        setTimeout(() => this.open.delete(nonce), this.options.askTimeoutMs).unref();
        const confirm = {
            type: /** @type {const} */ ('boolean'),
            title: 'Yes, destroy this data',
            default: false,
        };
        return inputRequired({
            inputRequests: {
                confirm: inputRequired.elicit({
                    message: questionText(tool, args, facts),
                    requestedSchema: { type: 'object', properties: { confirm }, required: ['confirm'] },
                }),
            },
            requestState: await this.codec.mint({ call: fingerprint(tool, args), nonce }),
        });
    }
}

/** @param {McpServer} server @param {ServerContext} context */
function canAsk(server, context) {
    const envelope = /** @type {Record<string, any> | undefined} */ (context.mcpReq.envelope);
    const capabilities = envelope?.[CLIENT_CAPABILITIES_META_KEY] ?? server.server.getClientCapabilities();
    const elicitation = capabilities?.elicitation;
    // A client without modes supports forms: the protocol added the modes later.
    return elicitation !== undefined && (elicitation.form !== undefined || elicitation.url === undefined);
}

/** @param {Tool} tool @param {PlainRecord} args */
const fingerprint = (tool, args) =>
    createHash('sha256')
        .update(JSON.stringify([tool.name, tool.args.map((arg) => String(args[arg.name]))]))
        .digest('hex');
