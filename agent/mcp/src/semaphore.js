import { withTimeout } from './time.js';

/** @import { Semaphore } from 'async-mutex' */
/** @import { CallScope } from './types.js' */

/**
 * Acquires the semaphore, in the order of the requests. The caller releases it.
 * @param {Semaphore} semaphore
 * @param {CallScope} scope
 * @param {() => Error} timeoutError error for a deadline that passes first
 */
export async function acquire(semaphore, scope, timeoutError) {
    if (semaphore.isLocked()) scope.progress('Waiting for an earlier call to end.');
    const acquired = semaphore.acquire();
    try {
        await withTimeout(acquired, scope.deadline.left(), timeoutError, scope.signal);
    } catch (error) {
        // A waiter cannot leave the queue early, so it releases as soon as it acquires.
        acquired.then(([, release]) => release());
        throw error;
    }
}
