import { HostConnection } from './connection.js';
import { HostError } from './errors.js';
import { listenerOn, sameHost } from './program.js';

/** @import { CallScope, HostId, Log, Options } from './types.js' */

// Another program may accept the connection and never answer. A host that has answered before has more time: three other
// programs may be using its connections, or it may be slow. So has a configured port.
const probeMs = 1000;
const knownHostMs = 10000;

/** Finds the host: on the configured port, otherwise on the last port that worked, otherwise by a search. */
export class HostFinder {
    /** @param {Options} options @param {Log} log */
    constructor(options, log) {
        this.options = options;
        this.log = log;
        /** The host of the last connection. @type {HostId | undefined} */
        this.last = undefined;
        /** The change of host that no answer has stated so far. @type {string | undefined} */
        this.notice = undefined;
    }

    /**
     * A connection to the host: to the one of the call if it has one, because a call does not continue on another host.
     * Throws a HostError with the next step.
     * @param {CallScope} scope
     */
    async connect(scope) {
        const connection = await this.open(scope);
        const found = { port: connection.port, program: await listenerOn(connection.port) };
        if (scope.host && !sameHost(scope.host, found)) {
            connection.close();
            throw replaced(found.port);
        }
        scope.host = found;
        this.remember(found);
        return connection;
    }

    /** @param {CallScope} scope */
    open(scope) {
        const { port } = this.options;
        if (port !== undefined) return this.tryPort(port, scope);
        return scope.host ? this.tryBound(scope.host.port, scope) : this.search(scope);
    }

    /** @param {HostId} found */
    remember(found) {
        const { last } = this;
        this.last = found;
        if (last && sameHost(last, found)) return;
        this.log(`the disk manager answers on port ${found.port}`);
        if (last) this.notice = hostChange(last, found);
    }

    /** The change of host for the next answer, once. */
    takeNotice() {
        const { notice } = this;
        this.notice = undefined;
        return notice;
    }

    /** @param {number} port @param {CallScope} scope */
    async tryPort(port, scope) {
        try {
            return await HostConnection.to(port, scope.deadline.within(knownHostMs).left(), scope.signal);
        } catch (error) {
            if (!(error instanceof HostError) || error.kind !== 'unreachable') throw error;
            throw unreachable(
                `No program listens on port ${port} of this computer, which ${this.options.portSource} specifies.`,
            );
        }
    }

    /** @param {number} port @param {CallScope} scope */
    async tryBound(port, scope) {
        try {
            return await HostConnection.to(port, scope.deadline.within(knownHostMs).left(), scope.signal);
        } catch (error) {
            if (!(error instanceof HostError) || error.kind !== 'unreachable') throw error;
            throw unreachable(`The disk manager on port ${port}, on which this call began, has ended.`);
        }
    }

    /** @param {CallScope} scope */
    async search({ deadline, signal }) {
        const { searchFrom, searchCount } = this.options;
        const last = this.last?.port;
        const all = Array.from({ length: searchCount }, (_, i) => searchFrom + i);
        const ports = last === undefined ? all : [last, ...all.filter((port) => port !== last)];
        let timeouts = 0;
        for (const port of ports) {
            if (signal.aborted) throw signal.reason;
            if (deadline.passed) break;
            try {
                const ms = port === last ? knownHostMs : probeMs;
                return await HostConnection.to(port, deadline.within(ms).left(), signal);
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

/** @param {number} port */
const replaced = (port) =>
    new HostError(
        'replaced',
        `Not called: port ${port} belongs to another disk manager than when this call began. Nothing was done. Read the inventory again before you repeat the call.`,
    );

/** @param {HostId} before @param {HostId} now */
function hostChange(before, now) {
    const place =
        before.port === now.port
            ? `on port ${now.port}, where the program has been restarted or replaced.`
            : `on port ${now.port}, before on port ${before.port}.`;
    return `The gateway is now connected to another disk manager: ${place} Disk numbers and letters of earlier answers may be invalid, and earlier consents are void. Read the inventory again.`;
}
