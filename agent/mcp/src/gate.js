import { OPERATION_IN_PROGRESS, TASKS_IN_EXECUTION } from './constants.js';
import { HostError } from './errors.js';
import { Turn } from './turn.js';
import { Deadline, limited, pause } from './time.js';

/** @import { CallScope, Log, Options } from './types.js' */
/** @import { Host } from './host.js' */
/** @import { HostConnection } from './connection.js' */

// The host refuses for this long after the end of a call.
const paceMs = 2000;
const askAgainMs = 250;
const reportMs = 1000;
// The answer that nobody waits for any more is waited for this many call limits, so that no second tool overlaps.
const lateAnswerLimits = 10;

/** Runs the tools that act, one at a time: PreProcessing, the tool, PostProcessing. */
export class Gate {
    /** @param {Host} host @param {Options} options @param {Log} log */
    constructor(host, options, log) {
        this.host = host;
        this.options = options;
        this.log = log;
        this.turn = new Turn();
        this.lastEnd = -Infinity;
        /** The tool that the host has not answered yet. @type {string | undefined} */
        this.unanswered = undefined;
    }

    /**
     * @param {string} method
     * @param {any[]} args as the generated client takes them
     * @param {string} toolCalls what PreProcessing is told; the user sees it
     * @param {CallScope} scope
     * @returns {Promise<string>} the tool's answer
     */
    async run(method, args, toolCalls, scope) {
        await this.turn.take(scope, () => this.waitsTooLong());
        /** @type {HostConnection} */
        let connection;
        try {
            await this.pass(toolCalls, scope);
            connection = await this.host.take(scope);
        } catch (error) {
            this.turn.leave();
            throw error;
        }
        const cycle = this.callAndReport(connection, method, args);
        return limited(cycle, scope.deadline.left(), () =>
            unknownOutcome(method, `did not answer within ${this.options.timeoutMs / 1000} s`),
        );
    }

    /** Resolves when no call is under way, at the latest after ms. @param {number} ms */
    async settled(ms) {
        const scope = {
            deadline: new Deadline(ms),
            signal: new AbortController().signal,
            progress: () => {},
        };
        await this.turn
            .take(scope, () => new Error('still busy'))
            .then(
                () => this.turn.leave(),
                () => {},
            );
    }

    /** Waits until PreProcessing says yes, for at most two thirds of the call's limit. @param {string} toolCalls @param {CallScope} scope */
    async pass(toolCalls, scope) {
        const limit = scope.deadline.within((this.options.timeoutMs * 2) / 3);
        let reported = -Infinity;
        for (;;) {
            const wait = this.lastEnd + paceMs - performance.now();
            if (wait > 0) {
                scope.progress('Waiting out the pause of two seconds after the last call.');
                await pause(Math.min(wait, limit.left()), scope.signal);
            }
            const answer = await this.host.ask('PreProcessing', [toolCalls], scope);
            if (answer.allow) return;
            if (answer.reasons !== OPERATION_IN_PROGRESS) throw saidNo(answer);
            if (limit.left() <= askAgainMs) throw saidNo(answer);
            if (performance.now() - reported >= reportMs) {
                scope.progress(
                    'Waiting for the disk manager: a dialog is open there, or another call has just ended.',
                );
                reported = performance.now();
            }
            await pause(askAgainMs, scope.signal);
        }
    }

    /**
     * From here on the call cannot be taken back: the host gets its PostProcessing even when the client has gone.
     * @param {HostConnection} connection
     * @param {string} method
     * @param {any[]} args
     */
    async callAndReport(connection, method, args) {
        this.unanswered = method;
        try {
            const answer = await connection.call(method, args, this.options.timeoutMs * lateAnswerLimits);
            await connection
                .call('PostProcessing', [answer], this.options.timeoutMs)
                .catch((error) => this.log(`PostProcessing of ${method}: ${error.message}`));
            return answer;
        } catch (error) {
            connection.close();
            throw error instanceof HostError && error.kind !== 'refused'
                ? unknownOutcome(method, 'ended the connection before it answered')
                : error;
        } finally {
            this.unanswered = undefined;
            this.lastEnd = performance.now();
            this.host.give(connection);
            this.turn.leave();
        }
    }

    waitsTooLong() {
        const earlier = this.unanswered
            ? `has not answered the earlier call ${this.unanswered} yet`
            : 'is still carrying earlier calls of this gateway';
        return new HostError(
            'silent',
            `Nothing was done: the disk manager ${earlier}, and tools that act run one at a time. Try again later, or ask the user to look at the application.`,
        );
    }
}

/** @param {string} method @param {string} what */
const unknownOutcome = (method, what) =>
    new HostError(
        'lost',
        `${method} was sent, and the disk manager ${what}. Whether it took the order is not known. Do NOT simply repeat the call: look first` +
            ' with GetPartitionInfo or ListPartitionsOnDisk, and ask the user what the application shows.',
    );

/** @param {{ allow: boolean, reasons: string | null }} answer */
function saidNo(answer) {
    const detail = { allow: false, reasons: answer.reasons ?? '' };
    if (answer.reasons === OPERATION_IN_PROGRESS)
        return new HostError(
            'busy',
            `Not called: "${answer.reasons}" A dialog has stayed open in the disk manager. Ask the user to close it, then call the tool again.`,
            detail,
        );
    if (answer.reasons === TASKS_IN_EXECUTION)
        return new HostError(
            'busy',
            `Not called: "${answer.reasons}" The disk manager is carrying out earlier work, which can take long. Tell the user, look at the` +
                ' inventory to see how far it is, and call the tool again later; calling it again at once will not help.',
            detail,
        );
    if (!answer.reasons)
        return new HostError(
            'busy',
            'Not called: the service runs, but there is no application behind it. Ask the user to start the disk manager anew.',
            detail,
        );
    return new HostError('busy', `Not called: "${answer.reasons}"`, detail);
}
