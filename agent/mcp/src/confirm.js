import { failure, targetLines } from './answers.js';
import { causeOf } from './causes.js';
import { repeatsCalls } from './consent.js';
import { factsAbout } from './inventory.js';
import { questionText } from './question.js';
import { changesBetween, identityOf, TargetChanged } from './target.js';

/** @import { CallToolResult, InputRequiredResult, ServerContext } from '@modelcontextprotocol/server' */
/** @import { HostId, PlainRecord, Tool } from './types.js' */
/** @import { Gateway } from './gateway.js' */
/** @import { Question, Verdict } from './consent.js' */
/** @import { Facts } from './inventory.js' */

const maxQuestions = 3;

/**
 * Calls a tool after the user has agreed to its target. If the target has changed since, asks again.
 * @param {Gateway} gateway
 * @param {{ tool: Tool, args: PlainRecord, wire: any[], context: ServerContext }} call
 * @returns {Promise<CallToolResult | InputRequiredResult>}
 */
export async function callConfirmed(gateway, call) {
    const { tool, args, wire, context } = call;
    let answer = gateway.consent.answerTo(tool, args, context);
    /** @type {string[]} */
    let changes = [];
    for (let questions = 0; ; questions++) {
        if (!answer) {
            if (questions === maxQuestions) return keepsChanging(tool);
            const asked = await ask(gateway, call, changes);
            if ('result' in asked) return asked.result;
            answer = asked;
        }
        const { verdict, question } = answer;
        if (verdict !== 'yes') return notCalled(tool, verdict, gateway.options.askTimeoutMs);
        try {
            const scope = { ...gateway.scope(context), host: question.host };
            return await gateway.act(tool, args, wire, scope, (facts) => requireTarget(question, facts));
        } catch (error) {
            if (!(error instanceof TargetChanged)) throw error;
            changes = error.changes;
            answer = undefined;
        }
    }
}

/**
 * @param {Gateway} gateway
 * @param {{ tool: Tool, args: PlainRecord, context: ServerContext }} call
 * @param {string[]} changes since the last question
 * @returns {Promise<{ result: CallToolResult | InputRequiredResult } | { verdict: Verdict, question: Question }>}
 */
async function ask(gateway, { tool, args, context }, changes) {
    const scope = gateway.scope(context);
    const facts = await factsAbout(gateway.host, gateway.table, tool, args, scope);
    gateway.host.requireKnown();
    const absent = absentTarget(tool, facts);
    if (absent) return { result: missingTarget(tool, facts, changes, absent) };
    const rejected = gateway.impossible(tool, args, facts);
    if (rejected) return { result: rejected };
    const doubt = causeOf(tool, args, facts)?.text;
    const message = questionText(tool, args, facts, changes, doubt);
    const host = /** @type {HostId} */ (scope.host);
    const question = gateway.consent.question(tool, args, host, identityOf(facts), message);
    if (repeatsCalls(context)) return { result: await gateway.consent.request(question) };
    return { verdict: await gateway.consent.ask(question, context, scope.progress), question };
}

/** Throws TargetChanged if the target differs from that of the question. @param {Question} question @param {Facts} facts */
function requireTarget(question, facts) {
    const changes = changesBetween(question.identity, identityOf(facts));
    if (changes.length > 0) throw new TargetChanged(changes);
}

/** The cause if an argument names a disk or drive that the inventory does not contain. @param {Tool} tool @param {Facts} facts */
function absentTarget(tool, facts) {
    const automatic = (/** @type {string} */ name) => tool.args.find((arg) => arg.name === name)?.automatic;
    if (facts.namedDisks.some(({ arg, index, disk }) => !disk && index !== automatic(arg))) return 'absentDisk';
    return facts.namedDrives.some(({ letter, partition }) => letter !== '' && !partition) ? 'absentDrive' : undefined;
}

/** @param {Tool} tool @param {Facts} facts @param {string[]} changes since the last question @param {string} cause */
const missingTarget = (tool, facts, changes, cause) =>
    failure(
        [
            changes.length > 0
                ? `The target no longer exists. ${tool.name} was not called, and nothing was done.`
                : `The target does not exist. ${tool.name} was not called, the user was not asked, and nothing was done.`,
            ...targetLines(facts),
        ].join('\n'),
        { called: false, queued: false, cause },
    );

/** @param {Tool} tool */
const keepsChanging = (tool) =>
    failure(
        `The target changed during each of ${maxQuestions} questions. ${tool.name} was not called, and nothing was done. Read the inventory again.`,
        { called: false, cause: 'changed' },
    );

/** @param {Tool} tool @param {Exclude<Verdict, 'yes'>} verdict @param {number} askTimeoutMs */
function notCalled(tool, verdict, askTimeoutMs) {
    const nothing = `${tool.name} was not called, and nothing was done.`;
    const texts = {
        no: `The user answered no. ${nothing} Do not call it again unless the user requests it.`,
        cancelled: `The user closed the question without an answer. ${nothing} Ask the user how to continue before you call it again.`,
        late: `The user did not answer within ${askTimeoutMs / 1000} s. ${nothing} The user may be away: call it again only when the user is present.`,
        invalid: `The client returned no valid answer from the user. ${nothing} Ask the user how to continue.`,
    };
    return failure(texts[verdict], { called: false, cause: verdict });
}
