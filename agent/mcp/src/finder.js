import { HostConnection } from './connection.js';
import { HostError } from './errors.js';

/** @import { CallScope, Log, Options } from './types.js' */

// Another program may accept the connection and never answer. A configured port has more time, because the host may be
// slow.
const probeMs = 1000;
const configuredPortMs = 10000;

/** Finds the port of the host: the configured port, otherwise the last one that worked, otherwise a search. */
export class HostFinder {
    /** @param {Options} options @param {Log} log */
    constructor(options, log) {
        this.options = options;
        this.log = log;
        /** @type {number | undefined} */
        this.last = undefined;
    }

    /**
     * A connection to the host. Throws a HostError with the next step.
     * @param {CallScope} scope
     */
    async connect(scope) {
        const { port } = this.options;
        const connection = port === undefined ? await this.search(scope) : await this.tryPort(port, scope);
        if (this.last !== connection.port) this.log(`the disk manager answers on port ${connection.port}`);
        this.last = connection.port;
        return connection;
    }

    /** @param {number} port @param {CallScope} scope */
    async tryPort(port, scope) {
        try {
            return await HostConnection.to(
                port,
                scope.deadline.within(configuredPortMs).left(),
                scope.signal,
            );
        } catch (error) {
            if (!(error instanceof HostError) || error.kind !== 'unreachable') throw error;
            throw unreachable(
                `No program listens on port ${port} of this computer, which ${this.options.portSource} specifies.`,
            );
        }
    }

    /** @param {CallScope} scope */
    async search({ deadline, signal }) {
        const { searchFrom, searchCount } = this.options;
        const all = Array.from({ length: searchCount }, (_, i) => searchFrom + i);
        const ports =
            this.last === undefined ? all : [this.last, ...all.filter((port) => port !== this.last)];
        let timeouts = 0;
        for (const port of ports) {
            if (signal.aborted) throw signal.reason;
            if (deadline.passed) break;
            try {
                return await HostConnection.to(port, deadline.within(probeMs).left(), signal);
            } catch (error) {
                if (!(error instanceof HostError)) throw error;
                if (error.kind === 'timeout') timeouts++;
            }
        }
        const hint =
            timeouts > 0
                ? ` ${timeouts} of them accepted the connection but did not answer, as a hanging disk manager does.`
                : '';
        throw unreachable(
            `No port from ${searchFrom} to ${searchFrom + searchCount - 1} of this computer belongs to its agent service.${hint}`,
        );
    }
}

/** @param {string} reason a sentence */
const unreachable = (reason) =>
    new HostError(
        'unreachable',
        `The disk manager is not running or not reachable. ${reason} The call was not sent. Ask the user to start it, then call the tool again; this gateway needs no restart.`,
    );
