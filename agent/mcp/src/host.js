import { HostError } from './errors.js';
import { HostFinder } from './finder.js';
import { Turn } from './turn.js';

/** @import { HostConnection } from './connection.js' */
/** @import { CallScope, Log, Options } from './types.js' */

// The host serves three connections at a time, and there may be other agents.
const mostConnections = 2;
const idleMs = 5000;

/** The host as the tools see it: connections are made when needed, kept for a while, and made anew when lost. */
export class Host {
    /** @param {Options} options @param {Log} log */
    constructor(options, log) {
        this.finder = new HostFinder(options, log);
        /** Kept connections, each with the timer that ends it. @type {Map<HostConnection, NodeJS.Timeout>} */
        this.idle = new Map();
        this.places = new Turn(mostConnections);
    }

    /**
     * Calls a method that may safely be called twice: when a kept connection turns out to be dead, a fresh one is made.
     * @param {string} method
     * @param {any[]} args
     * @param {CallScope} scope
     * @returns {Promise<any>}
     */
    async ask(method, args, scope) {
        const connection = await this.take(scope);
        try {
            return await this.use(connection, method, args, scope);
        } catch (error) {
            const worthAnother =
                error instanceof HostError &&
                error.kind === 'lost' &&
                connection.reused &&
                !scope.deadline.passed;
            if (!worthAnother) throw error;
        }
        return this.use(await this.takeFresh(scope), method, args, scope);
    }

    /**
     * A connection for the caller alone, to be given back with give().
     * @param {CallScope} scope
     * @returns {Promise<HostConnection>}
     */
    async take(scope) {
        await this.places.take(scope, noPlace);
        const [kept] = this.idle.keys();
        if (!kept) return this.connect(scope);
        this.forget(kept);
        kept.keepAlive(true);
        kept.reused = true;
        return kept;
    }

    /** @param {CallScope} scope */
    async takeFresh(scope) {
        this.close();
        return this.take(scope);
    }

    /** @param {HostConnection} connection an open one is kept for the next call, for a few seconds */
    give(connection) {
        this.places.leave();
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

    /** Ends the connections that nobody uses. */
    close() {
        for (const connection of [...this.idle.keys()]) connection.close();
    }

    /** @param {CallScope} scope */
    async connect(scope) {
        try {
            return await this.finder.connect(scope);
        } catch (error) {
            this.places.leave();
            throw error;
        }
    }

    /** @param {HostConnection} connection @param {string} method @param {any[]} args @param {CallScope} scope */
    async use(connection, method, args, scope) {
        try {
            return await connection.call(method, args, scope.deadline.left(), scope.signal);
        } catch (error) {
            // After an exception of the service the connection is in order; otherwise an answer may still come in.
            if (!(error instanceof HostError && error.kind === 'refused')) connection.close();
            throw error;
        } finally {
            this.give(connection);
        }
    }
}

const noPlace = () =>
    new HostError(
        'silent',
        'The disk manager has not answered earlier calls of this gateway yet. Nothing was done. Try again later.',
    );
