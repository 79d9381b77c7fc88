import { createHash, randomBytes } from 'node:crypto';
import {
    CLIENT_CAPABILITIES_META_KEY,
    createRequestStateCodec,
    inputRequired,
    inputResponse,
    SdkError,
    SdkErrorCode,
} from '@modelcontextprotocol/server';

/** @import { McpServer, ServerContext } from '@modelcontextprotocol/server' */
/** @import { HostId, Options, PlainRecord, Progress, Tool } from './types.js' */
/** @import { Identity } from './target.js' */

// Clients end a call after a time of their own, often 60 s, unless they receive progress.
const progressMs = 2000;
// A late answer is recognised for this long.
const stateSeconds = 24 * 3600;
const maxQuestions = 100;

/**
 * A question to the user, and the target that it described.
 * @typedef {object} Question
 * @property {string} call fingerprint of the tool and its arguments
 * @property {HostId} host
 * @property {Identity} identity
 * @property {string} message
 * @property {number} expires in the time of performance.now()
 */

/** @typedef {'yes' | 'no' | 'cancelled' | 'late' | 'invalid'} Verdict the user's answer, or its absence */

/** Questions to the user before a tool that destroys data, if the client supports them. One answer allows one call. */
export class Consent {
    /** @param {Options} options */
    constructor(options) {
        this.options = options;
        /** Questions without an answer so far. @type {Map<string, Question>} */
        this.open = new Map();
        this.codec = createRequestStateCodec({ key: randomBytes(32), ttlSeconds: stateSeconds });
    }

    /** @param {Tool} tool @param {McpServer} server @param {ServerContext} context */
    needed(tool, server, context) {
        return tool.class === 'destroys' && !this.options.yes && canAsk(server, context);
    }

    /**
     * The user's answer that the client sends with a repeated call; undefined if there is no open question about it.
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {ServerContext} context
     * @returns {{ verdict: Verdict, question: Question } | undefined}
     */
    answerTo(tool, args, context) {
        const view = inputResponse(context.mcpReq.inputResponses, 'confirm');
        const nonce = /** @type {{ nonce: string } | undefined} */ (context.mcpReq.requestState())?.nonce ?? '';
        const question = this.open.get(nonce);
        this.open.delete(nonce);
        if (!question || view.kind === 'missing' || question.call !== fingerprint(tool, args)) return undefined;
        if (performance.now() > question.expires) return { verdict: 'late', question };
        return { verdict: view.kind === 'elicit' ? verdictOf(view) : 'invalid', question };
    }

    /**
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {HostId} host
     * @param {Identity} identity
     * @param {string} message
     * @returns {Question}
     */
    question(tool, args, host, identity, message) {
        const expires = performance.now() + this.options.askTimeoutMs;
        return { call: fingerprint(tool, args), host, identity, message, expires };
    }

    /**
     * The answer that makes a client of the new protocol ask the user and repeat the call.
     * @param {Question} question
     */
    async request(question) {
        const nonce = randomBytes(12).toString('hex');
        this.open.set(nonce, question);
        for (const [oldest] of this.open) if (this.open.size > maxQuestions) this.open.delete(oldest);
        return inputRequired({
            inputRequests: { confirm: inputRequired.elicit(form(question.message)) },
            requestState: await this.codec.mint({ nonce }),
        });
    }

    /**
     * Asks the user through a client of the old protocol, whose call stays open and receives progress.
     * @param {Question} question
     * @param {ServerContext} context
     * @param {Progress} progress
     * @returns {Promise<Verdict>}
     */
    async ask(question, context, progress) {
        const report = () => progress("Waiting for the user's answer.");
        report();
        const timer = setInterval(report, progressMs);
        try {
            const answer = await context.mcpReq.send(
                { method: 'elicitation/create', params: { mode: 'form', ...form(question.message) } },
                { timeout: this.options.askTimeoutMs, signal: context.mcpReq.signal },
            );
            return verdictOf(answer);
        } catch (error) {
            if (context.mcpReq.signal.aborted) throw error;
            return error instanceof SdkError && error.code === SdkErrorCode.RequestTimeout
                ? 'late'
                : 'invalid';
        } finally {
            clearInterval(timer);
        }
    }
}

/** True for a protocol in which the client repeats the call with the answer. @param {ServerContext} context */
export const repeatsCalls = (context) => context.mcpReq.envelope !== undefined;

/** @param {{ action: string, content?: any }} answer @returns {Verdict} */
function verdictOf({ action, content }) {
    if (action === 'accept' && typeof content?.confirm === 'boolean') return content.confirm ? 'yes' : 'no';
    if (action === 'decline') return 'no';
    return action === 'cancel' ? 'cancelled' : 'invalid';
}

/** @param {string} message */
const form = (message) => ({
    message,
    requestedSchema: {
        type: /** @type {const} */ ('object'),
        properties: {
            confirm: {
                type: /** @type {const} */ ('boolean'),
                title: 'Yes, destroy this data',
                default: false,
            },
        },
        required: ['confirm'],
    },
});

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
