/** A point in time by which something must have ended. */
export class Deadline {
    /** @param {number} ms from now */
    constructor(ms) {
        this.limitMs = ms;
        this.at = performance.now() + ms;
    }

    /** Milliseconds that are left, never negative. */
    left() {
        return Math.max(0, this.at - performance.now());
    }

    get passed() {
        return this.left() === 0;
    }

    /**
     * A deadline in ms from now, or this one where it comes first.
     * @param {number} ms
     */
    within(ms) {
        return ms < this.left() ? new Deadline(ms) : this;
    }
}

/**
 * The promise's outcome, or the error that late() makes when the limit passes or the signal says stop first.
 * @template T
 * @param {Promise<T>} promise
 * @param {number} ms
 * @param {() => Error} late
 * @param {AbortSignal} [signal]
 * @returns {Promise<T>}
 */
export function limited(promise, ms, late, signal) {
    return new Promise((resolve, reject) => {
        const end = () => {
            clearTimeout(timer);
            signal?.removeEventListener('abort', stop);
        };
        const stop = () => (end(), reject(signal?.reason ?? new Error('cancelled')));
        const timer = setTimeout(() => (end(), reject(late())), ms);
        if (signal?.aborted) return stop();
        signal?.addEventListener('abort', stop, { once: true });
        promise.then(
            (value) => (end(), resolve(value)),
            (error) => (end(), reject(error)),
        );
    });
}

/**
 * Waits, unless the signal says stop first.
 * @param {number} ms
 * @param {AbortSignal} [signal]
 * @returns {Promise<void>}
 */
export function pause(ms, signal) {
    return new Promise((resolve, reject) => {
        if (signal?.aborted) return reject(signal.reason);
        const stop = () => (clearTimeout(timer), reject(signal?.reason));
        const timer = setTimeout(() => (signal?.removeEventListener('abort', stop), resolve()), ms);
        signal?.addEventListener('abort', stop, { once: true });
    });
}
