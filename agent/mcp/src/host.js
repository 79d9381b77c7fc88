import { Semaphore } from 'async-mutex';
import { HostError } from './errors.js';
import { HostFinder } from './finder.js';
import { acquire } from './semaphore.js';

/** @import { HostConnection } from './connection.js' */
/** @import { CallScope, Log, Options } from './types.js' */

// The host serves three connections at a time; one remains for other agents.
const maxConnections = 2;

/**
 * The calls to the host. Every connection is closed after its use: the host serves only three at a time, and another
 * gateway may be waiting.
 */
export class Host {
    /** @param {Options} options @param {Log} log */
    constructor(options, log) {
        this.finder = new HostFinder(options, log);
        /** @type {Set<HostConnection>} */
        this.open = new Set();
        this.connections = new Semaphore(maxConnections);
    }

    /**
     * @param {string} method
     * @param {any[]} args
     * @param {CallScope} scope
     * @returns {Promise<any>}
     */
    async ask(method, args, scope) {
        const connection = await this.acquire(scope);
        try {
            return await connection.call(method, args, scope.deadline.left(), scope.signal);
        } finally {
            this.release(connection);
        }
    }

    /**
     * A connection for the caller alone, until release().
     * @param {CallScope} scope
     * @returns {Promise<HostConnection>}
     */
    async acquire(scope) {
        await acquire(this.connections, scope, noConnection);
        try {
            const connection = await this.finder.connect(scope);
            this.open.add(connection);
            return connection;
        } catch (error) {
            this.connections.release();
            throw error;
        }
    }

    /** @param {HostConnection} connection */
    release(connection) {
        this.open.delete(connection);
        connection.close();
        this.connections.release();
    }

    /** Throws unless an answer has stated which host the gateway is connected to. */
    requireKnown() {
        if (this.finder.notice)
            throw new HostError('replaced', 'Not called: the gateway is now connected to a different application.');
    }

    /** Closes all connections. */
    close() {
        for (const connection of this.open) connection.close();
    }
}

const noConnection = () =>
    new HostError(
        'timeout',
        'The disk manager has not answered earlier calls of this gateway yet. This call was not sent. Try again later.',
    );
