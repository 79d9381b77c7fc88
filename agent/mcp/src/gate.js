import { setTimeout as sleep } from 'node:timers/promises';
import { Semaphore } from 'async-mutex';
import { OPERATION_IN_PROGRESS, TASK_NOT_VALID, TASKS_IN_EXECUTION } from './constants.js';
import { HostError } from './errors.js';
import { acquire } from './semaphore.js';
import { Deadline, withTimeout } from './time.js';

/** @import { CallScope, Log, Options } from './types.js' */
/** @import { Host } from './host.js' */
/** @import { HostConnection } from './connection.js' */

// PreProcessing rejects every call for this long after PostProcessing.
const pauseMs = 2000;
const retryMs = 250;
const progressMs = 1000;
// A tool without an answer blocks the next one for this many time limits, so that two tools never overlap.
const lateAnswerLimits = 10;

/** Runs the tools that act, one at a time: PreProcessing, the tool, PostProcessing. */
export class Gate {
    /** @param {Host} host @param {Options} options @param {Log} log */
    constructor(host, options, log) {
        this.host = host;
        this.options = options;
        this.log = log;
        this.running = new Semaphore(1);
        this.lastEnd = -Infinity;
        /** The tool without an answer so far. @type {string | undefined} */
        this.unanswered = undefined;
    }

    /**
     * @param {string} method
     * @param {any[]} args in the form of the generated client
     * @param {string} toolCalls argument of PreProcessing; the host may show it
     * @param {CallScope} scope
     * @param {(connection: HostConnection) => Promise<void>} [check] runs immediately before the tool; if it throws,
     * the tool is not called
     * @returns {Promise<string>} the tool's answer
     */
    async run(method, args, toolCalls, scope, check) {
        await acquire(this.running, scope, () => this.queueTimeout());
        /** @type {HostConnection | undefined} */
        let connection;
        try {
            connection = await this.pass(toolCalls, scope);
            if (check) await this.checked(connection, check(connection));
        } catch (error) {
            if (connection) this.end(connection);
            this.running.release();
            throw error;
        }
        const cycle = this.callAndReport(connection, method, args);
        return withTimeout(cycle, scope.deadline.left(), () =>
            unknownOutcome(
                `${method} was sent, but the disk manager did not answer within ${this.options.timeoutMs / 1000} s.`,
            ),
        );
    }

    /** Resolves when no tool is running, or after ms. @param {number} ms */
    async settled(ms) {
        const scope = {
            deadline: new Deadline(ms),
            signal: new AbortController().signal,
            progress: () => {},
        };
        await acquire(this.running, scope, () => new Error('A tool is still running.')).then(
            () => this.running.release(),
            () => {},
        );
    }

    /**
     * Retries PreProcessing until it allows the call, for two thirds of the time limit. Between the attempts it holds no
     * connection.
     * @param {string} toolCalls
     * @param {CallScope} scope
     * @returns {Promise<HostConnection>} the connection of the PreProcessing that allowed the call
     */
    async pass(toolCalls, scope) {
        const limit = scope.deadline.within((this.options.timeoutMs * 2) / 3);
        let reported = -Infinity;
        for (;;) {
            const wait = this.lastEnd + pauseMs - performance.now();
            if (wait > 0) {
                scope.progress('Waiting for the pause of two seconds after the last call to end.');
                await sleep(Math.min(wait, limit.left()), undefined, { signal: scope.signal });
            }
            const { connection, answer } = await this.attempt(toolCalls, scope);
            if (connection) return connection;
            if (answer.reasons !== OPERATION_IN_PROGRESS) throw gateRejection(answer);
            if (limit.left() <= retryMs) throw gateRejection(answer);
            if (performance.now() - reported >= progressMs) {
                scope.progress(
                    'Waiting for the disk manager: a dialog is open, or another call has just ended.',
                );
                reported = performance.now();
            }
            await sleep(retryMs, undefined, { signal: scope.signal });
        }
    }

    /**
     * Calls PreProcessing once, on a connection that stays open only if the call is allowed.
     * @param {string} toolCalls
     * @param {CallScope} scope
     */
    async attempt(toolCalls, scope) {
        const connection = await this.host.acquire(scope);
        let allowed = false;
        try {
            this.host.requireKnown();
            const answer = await connection.call(
                'PreProcessing',
                [toolCalls],
                scope.deadline.left(),
                scope.signal,
            );
            allowed = answer.allow;
            return { answer, connection: allowed ? connection : undefined };
        } finally {
            if (!allowed) this.host.release(connection);
        }
    }

    /**
     * Awaits the check. After a failure, PostProcessing ends the cycle that PreProcessing has begun.
     * @param {HostConnection} connection
     * @param {Promise<void>} check
     */
    async checked(connection, check) {
        try {
            await check;
        } catch (error) {
            await this.report(connection, TASK_NOT_VALID);
            throw error;
        }
    }

    /** @param {HostConnection} connection @param {string} answer of the tool */
    async report(connection, answer) {
        await connection
            .call('PostProcessing', [answer], this.options.timeoutMs)
            .catch((error) => this.log(`PostProcessing: ${error.message}`));
    }

    /** Begins the pause after a cycle. @param {HostConnection} connection */
    end(connection) {
        this.lastEnd = performance.now();
        this.host.release(connection);
    }

    /**
     * From here on the call cannot be cancelled: PostProcessing follows even if the client disconnects.
     * @param {HostConnection} connection
     * @param {string} method
     * @param {any[]} args
     */
    async callAndReport(connection, method, args) {
        this.unanswered = method;
        try {
            const answer = await connection.call(method, args, this.options.timeoutMs * lateAnswerLimits);
            await this.report(connection, answer);
            return answer;
        } catch (error) {
            throw error instanceof HostError && error.kind !== 'exception'
                ? unknownOutcome(
                      `${method} was sent, but the disk manager closed the connection before it answered.`,
                  )
                : error;
        } finally {
            this.unanswered = undefined;
            this.end(connection);
            this.running.release();
        }
    }

    queueTimeout() {
        const cause = this.unanswered
            ? `The disk manager has not answered the earlier call ${this.unanswered} yet.`
            : 'Earlier calls of this gateway have not ended yet.';
        return new HostError(
            'timeout',
            `${cause} Tools that act run one at a time, so this call was not sent. Try again later, or ask the user to check the application.`,
        );
    }
}

/** @param {string} event a sentence */
const unknownOutcome = (event) =>
    new HostError(
        'disconnected',
        `${event} Whether it accepted the order is unknown. Do NOT simply repeat the call: WaitForChange shows` +
            ' whether the order had an effect. Ask the user what the application shows.',
    );

/** @param {{ allow: boolean, reasons: string | null }} answer */
function gateRejection(answer) {
    const detail = { allow: false, reasons: answer.reasons ?? '' };
    if (answer.reasons === OPERATION_IN_PROGRESS)
        return new HostError(
            'busy',
            `Not called: "${answer.reasons}" A dialog is still open in the disk manager. Ask the user to close it, then call the tool again.`,
            detail,
        );
    if (answer.reasons === TASKS_IN_EXECUTION)
        return new HostError(
            'busy',
            `Not called: "${answer.reasons}" The disk manager is executing earlier tasks, which can take long. Inform the user,` +
                ' call WaitForChange, then call the tool again; an immediate retry will not help.',
            detail,
        );
    if (!answer.reasons)
        return new HostError(
            'busy',
            'Not called: the service is not connected to an application. Ask the user to restart the disk manager.',
            detail,
        );
    return new HostError('busy', `Not called: "${answer.reasons}"`, detail);
}
