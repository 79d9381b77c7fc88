import { once } from 'node:events';
import { setTimeout as sleep } from 'node:timers/promises';

/** The end of a time limit. */
export class Deadline {
    /** @param {number} ms from now */
    constructor(ms) {
        this.at = performance.now() + ms;
    }

    /** Remaining milliseconds, never negative. */
    left() {
        return Math.max(0, this.at - performance.now());
    }

    get passed() {
        return this.left() === 0;
    }

    /**
     * A deadline in ms from now, or this one if it is earlier.
     * @param {number} ms
     */
    within(ms) {
        return ms < this.left() ? new Deadline(ms) : this;
    }
}

/**
 * Settles as the promise does, unless the time limit or the signal ends the wait first.
 * @template T
 * @param {Promise<T>} promise
 * @param {number} ms
 * @param {() => Error} timeoutError
 * @param {AbortSignal} [signal]
 * @returns {Promise<T>}
 */
export async function withTimeout(promise, ms, timeoutError, signal) {
    const settled = new AbortController();
    const { signal: stop } = settled;
    const waits = [
        promise,
        sleep(ms, undefined, { signal: stop }).then(() => Promise.reject(timeoutError())),
    ];
    if (signal) waits.push(aborted(signal, stop));
    try {
        return await Promise.race(waits);
    } finally {
        settled.abort();
    }
}

/** @param {AbortSignal} signal @param {AbortSignal} stop @returns {Promise<never>} */
async function aborted(signal, stop) {
    if (!signal.aborted) await once(signal, 'abort', { signal: stop });
    throw signal.reason;
}
