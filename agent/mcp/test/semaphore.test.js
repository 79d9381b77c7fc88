import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Semaphore } from 'async-mutex';
import { acquire } from '../src/semaphore.js';
import { Deadline, withTimeout } from '../src/time.js';

/** @param {{ ms?: number, signal?: AbortSignal, progress?: (message: string) => void }} [options] */
const scope = ({ ms = 60000, signal = new AbortController().signal, progress = () => {} } = {}) => ({
    deadline: new Deadline(ms),
    signal,
    progress,
});
const timeoutError = () => new Error('timeout');

test('Waiters_AcquireInTheOrderOfTheirRequestsAndReportProgress', async () => {
    const semaphore = new Semaphore(1);
    /** @type {string[]} */
    const events = [];
    const progress = () => void events.push('waits');
    await acquire(semaphore, scope({ progress }), timeoutError);
    const waiters = ['first', 'second'].map((name) =>
        acquire(semaphore, scope({ progress }), timeoutError).then(() => {
            events.push(name);
            semaphore.release();
        }),
    );
    semaphore.release();
    await Promise.all(waiters);
    assert.deepEqual(events, ['waits', 'waits', 'first', 'second']);
});

test('WaiterAfterATimeout_DoesNotKeepTheSemaphore', async () => {
    const semaphore = new Semaphore(1);
    await acquire(semaphore, scope(), timeoutError);
    await assert.rejects(acquire(semaphore, scope({ ms: 1 }), timeoutError), /^Error: timeout$/);
    semaphore.release();
    await acquire(semaphore, scope(), timeoutError);
});

test('CancelledWaiter_DoesNotKeepTheSemaphore', async () => {
    const semaphore = new Semaphore(1);
    await acquire(semaphore, scope(), timeoutError);
    const client = new AbortController();
    const waiter = acquire(semaphore, scope({ signal: client.signal }), timeoutError);
    client.abort(new Error('cancelled'));
    await assert.rejects(waiter, /^Error: cancelled$/);
    semaphore.release();
    await acquire(semaphore, scope(), timeoutError);
});

test('PassedDeadline_EndsTheWaitWithTheError', async () => {
    const deadline = new Deadline(0);
    assert.equal(deadline.left(), 0);
    await assert.rejects(withTimeout(new Promise(() => {}), deadline.left(), timeoutError), /^Error: timeout$/);
    assert.equal(await withTimeout(Promise.resolve(1), deadline.left(), timeoutError), 1);
});

test('RejectionAfterATimeout_IsHandled', async () => {
    /** @type {(error: Error) => void} */
    let fail = () => {};
    const late = new Promise((_, reject) => (fail = reject));
    await assert.rejects(withTimeout(late, 1, timeoutError), /^Error: timeout$/);
    fail(new Error('late'));
    // An unhandled rejection would end the test's process.
    await new Promise((resolve) => setImmediate(resolve));
});
