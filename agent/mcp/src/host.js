import { Semaphore } from 'async-mutex';
import { HostError } from './errors.js';
import { HostFinder } from './finder.js';
import { acquire } from './semaphore.js';

/** @import { HostConnection } from './connection.js' */
/** @import { CallScope, Log, Options } from './types.js' */

// The host serves three connections at a time; one remains for other agents.
const maxConnections = 2;
const idleMs = 5000;

/** A pool of connections to the host. They are opened on demand, kept for a few seconds, and replaced when closed. */
export class Host {
    /** @param {Options} options @param {Log} log */
    constructor(options, log) {
        this.finder = new HostFinder(options, log);
        /** Idle connections, each with the timer that closes it. @type {Map<HostConnection, NodeJS.Timeout>} */
        this.idle = new Map();
        this.connections = new Semaphore(maxConnections);
    }

    /**
     * Calls a method that may safely be called twice: if an idle connection turns out to be closed, it retries once.
     * @param {string} method
     * @param {any[]} args
     * @param {CallScope} scope
     * @returns {Promise<any>}
     */
    async ask(method, args, scope) {
        const connection = await this.acquire(scope);
        try {
            return await this.use(connection, method, args, scope);
        } catch (error) {
            const retry =
                error instanceof HostError &&
                error.kind === 'disconnected' &&
                connection.reused &&
                !scope.deadline.passed;
            if (!retry) throw error;
        }
        return this.use(await this.acquireFresh(scope), method, args, scope);
    }

    /**
     * A connection for the caller alone, until release() returns it to the pool.
     * @param {CallScope} scope
     * @returns {Promise<HostConnection>}
     */
    async acquire(scope) {
        await acquire(this.connections, scope, noConnection);
        const [idle] = this.idle.keys();
        if (!idle) return this.connect(scope);
        this.forget(idle);
        idle.keepAlive(true);
        idle.reused = true;
        return idle;
    }

    /** @param {CallScope} scope */
    async acquireFresh(scope) {
        this.close();
        return this.acquire(scope);
    }

    /** @param {HostConnection} connection */
    release(connection) {
        this.connections.release();
        if (!connection.open) return;
        connection.keepAlive(false);
        connection.onEnd = () => this.forget(connection);
        this.idle.set(connection, setTimeout(() => connection.close(), idleMs).unref());
    }

    /** @param {HostConnection} connection */
    forget(connection) {
        clearTimeout(this.idle.get(connection));
        this.idle.delete(connection);
    }

    /** Closes the idle connections. */
    close() {
        for (const connection of [...this.idle.keys()]) connection.close();
    }

    /** @param {CallScope} scope */
    async connect(scope) {
        try {
            return await this.finder.connect(scope);
        } catch (error) {
            this.connections.release();
            throw error;
        }
    }

    /** @param {HostConnection} connection @param {string} method @param {any[]} args @param {CallScope} scope */
    async use(connection, method, args, scope) {
        try {
            return await connection.call(method, args, scope.deadline.left(), scope.signal);
        } catch (error) {
            // After an exception message the connection is usable; otherwise a late answer may still arrive.
            if (!(error instanceof HostError && error.kind === 'exception')) connection.close();
            throw error;
        } finally {
            this.release(connection);
        }
    }
}

const noConnection = () =>
    new HostError(
        'timeout',
        'The disk manager has not answered earlier calls of this gateway yet. This call was not sent. Try again later.',
    );
