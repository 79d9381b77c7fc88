import pTimeout from 'p-timeout';

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
export const withTimeout = (promise, ms, timeoutError, signal) =>
    pTimeout(promise, {
        // The package rejects zero, which the remaining time of a deadline can be.
        milliseconds: Math.max(ms, Number.MIN_VALUE),
        fallback: () => Promise.reject(timeoutError()),
        signal,
    });
