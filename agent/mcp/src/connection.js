import thrift from 'thrift';
import ZORNativePlugin from '../generated/ZORNativePlugin.js';
import { HostError } from './errors.js';
import { withTimeout } from './time.js';

/** A connection to the host, for one call at a time. */
export class HostConnection {
    /** @param {number} port on this computer */
    constructor(port) {
        this.port = port;
        this.open = true;
        /** @type {HostError | undefined} */
        this.ended = undefined;
        /** @type {Set<(error: HostError) => void>} */
        this.waiting = new Set();
        this.thrift = thrift.createConnection('localhost', port, {
            transport: thrift.TBufferedTransport,
            protocol: thrift.TBinaryProtocol,
        });
        this.client = thrift.createClient(ZORNativePlugin, this.thrift);
        this.thrift.on('error', (/** @type {any} */ error) => this.end(connectFailed(error, port)));
        this.thrift.on('close', () =>
            this.end(
                new HostError(
                    'disconnected',
                    `The connection to the disk manager on port ${port} closed before the answer arrived.`,
                ),
            ),
        );
        this.socket.once('data', (/** @type {Buffer} */ bytes) => this.checkProtocol(bytes));
    }

    get socket() {
        return this.thrift.connection;
    }

    /**
     * Connects and calls Init, which verifies that the service is on this port and answers.
     * @param {number} port
     * @param {number} ms time limit
     * @param {AbortSignal} [signal]
     */
    static async to(port, ms, signal) {
        const connection = new HostConnection(port);
        const answered = await connection
            .call('Init', [], ms, signal)
            .catch((error) => (connection.close(), Promise.reject(error)));
        if (answered === true) return connection;
        connection.close();
        throw wrongService(port);
    }

    /**
     * @param {string} method
     * @param {any[]} args in the form of the generated client
     * @param {number} ms time limit for the answer
     * @param {AbortSignal} [signal] ends the wait; the call itself cannot be cancelled
     * @returns {Promise<any>}
     */
    async call(method, args, ms, signal) {
        if (this.ended) throw this.ended;
        /** @type {(error: HostError) => void} */
        let disconnect = () => {};
        const ended = new Promise((_, reject) => (disconnect = reject));
        ended.catch(() => {});
        this.waiting.add(disconnect);
        const answer = this.client[method](...args).catch((/** @type {any} */ error) =>
            Promise.reject(asHostError(error, method)),
        );
        try {
            return await withTimeout(
                Promise.race([answer, ended]),
                ms,
                () => timeout(this.port, method, ms),
                signal,
            );
        } finally {
            this.waiting.delete(disconnect);
        }
    }

    close() {
        this.end(new HostError('disconnected', 'The gateway closed the connection.'));
    }

    /** @param {HostError} error every waiting call fails with it */
    end(error) {
        if (!this.open) return;
        this.open = false;
        this.ended = error;
        for (const disconnect of this.waiting) disconnect(error);
        this.waiting.clear();
        this.socket.destroy();
    }

    /**
     * The first bytes identify the protocol. With another protocol, the reader would never complete a message.
     * @param {Buffer} bytes
     */
    checkProtocol(bytes) {
        if (bytes[0] !== 0x80 || (bytes.length > 1 && bytes[1] !== 0x01)) this.end(wrongService(this.port));
    }
}

/** @param {number} port @param {string} method @param {number} ms */
function timeout(port, method, ms) {
    const seconds = Math.round(ms / 100) / 10;
    return new HostError(
        'timeout',
        `The program on port ${port} accepted the connection but did not answer ${method} within ${seconds} s. The disk manager may be` +
            ' hanging or already serving three other agents (its maximum), or the port may belong to another program.' +
            ' Ask the user to check, and try again later.',
    );
}

/** @param {number} port */
const wrongService = (port) =>
    new HostError(
        'wrongService',
        `The program that listens on port ${port} is not the disk manager's agent service. Ask the user for the right port (AGENT_NATIVE_PORT, or --port in the gateway's configuration).`,
    );

/** @param {any} error @param {number} port */
function connectFailed(error, port) {
    if (
        error?.code === 'ECONNREFUSED' ||
        error?.errors?.some((/** @type {any} */ e) => e.code === 'ECONNREFUSED')
    )
        return new HostError('unreachable', `No program listens on port ${port}.`);
    if (error?.code)
        return new HostError('disconnected', `The connection to port ${port} failed (${error.code}).`);
    return wrongService(port);
}

/** @param {any} error @param {string} method */
function asHostError(error, method) {
    if (error instanceof HostError) return error;
    return new HostError(
        'exception',
        `The disk manager's service answered ${method} with an exception: ${error?.message ?? error}.`,
    );
}
