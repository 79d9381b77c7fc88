import { HostConnection } from './connection.js';
import { HostError } from './errors.js';

/** @import { CallScope, Log, Options } from './types.js' */

// A program that is not ours may take a connection and say nothing: the search gives it this long, a port that was
// named longer, since there the host may be slow.
const probeMs = 1000;
const namedPortMs = 10000;

/** Finds the port of the host: the one that was said, else the last one that worked, else a search. */
export class HostFinder {
    /** @param {Options} options @param {Log} log */
    constructor(options, log) {
        this.options = options;
        this.log = log;
        /** @type {number | undefined} */
        this.last = undefined;
    }

    /**
     * A connection to the host, or a HostError that says what to do.
     * @param {CallScope} scope
     */
    async connect(scope) {
        const said = this.options.port;
        const connection = said === undefined ? await this.search(scope) : await this.atSaidPort(said, scope);
        if (this.last !== connection.port) this.log(`the disk manager answers on port ${connection.port}`);
        this.last = connection.port;
        return connection;
    }

    /** @param {number} port @param {CallScope} scope */
    async atSaidPort(port, scope) {
        try {
            return await HostConnection.to(port, scope.deadline.within(namedPortMs).left(), scope.signal);
        } catch (error) {
            if (!(error instanceof HostError) || error.kind !== 'absent') throw error;
            throw absent(
                `nothing answers on port ${port} of this computer, which ${this.options.portSaidBy} names`,
            );
        }
    }

    /** @param {CallScope} scope */
    async search({ deadline, signal }) {
        const { searchFrom, searchCount } = this.options;
        const all = Array.from({ length: searchCount }, (_, i) => searchFrom + i);
        const ports =
            this.last === undefined ? all : [this.last, ...all.filter((port) => port !== this.last)];
        let silentPorts = 0;
        for (const port of ports) {
            if (signal.aborted) throw signal.reason;
            if (deadline.passed) break;
            try {
                return await HostConnection.to(port, deadline.within(probeMs).left(), signal);
            } catch (error) {
                if (!(error instanceof HostError)) throw error;
                if (error.kind === 'silent') silentPorts++;
            }
        }
        const silence =
            silentPorts > 0
                ? `; ${silentPorts} of them took the connection without a word, which is how a hanging disk manager looks`
                : '';
        throw absent(
            `no port from ${searchFrom} to ${searchFrom + searchCount - 1} of this computer belongs to its agent service${silence}`,
        );
    }
}

/** @param {string} why */
const absent = (why) =>
    new HostError(
        'absent',
        `The disk manager is not running or cannot be reached: ${why}. Nothing was done. Ask the user to start it, and call the tool again then; no restart of this gateway is needed.`,
    );
