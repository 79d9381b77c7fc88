import thrift from 'thrift';
import ZORNativePlugin from '../generated/ZORNativePlugin.js';
import { HostError } from './errors.js';
import { limited } from './time.js';

/** One open connection to the host. It carries one call at a time; the pool sees to that. */
export class HostConnection {
    /** @param {number} port on this computer */
    constructor(port) {
        this.port = port;
        this.open = true;
        /** It has served a call before, so the host may have gone since. */
        this.reused = false;
        /** @type {(() => void) | undefined} */
        this.onEnd = undefined;
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
                    'lost',
                    `The connection to the disk manager on port ${port} ended before it answered.`,
                ),
            ),
        );
        this.socket.once('data', (/** @type {Buffer} */ bytes) => this.recognise(bytes));
    }

    get socket() {
        return this.thrift.connection;
    }

    /**
     * Connects and asks Init, so that a connection that comes back belongs to the service and answers.
     * @param {number} port
     * @param {number} ms the longest that this may take
     * @param {AbortSignal} [signal]
     */
    static async to(port, ms, signal) {
        const connection = new HostConnection(port);
        const answered = await connection
            .call('Init', [], ms, signal)
            .catch((error) => (connection.close(), Promise.reject(error)));
        if (answered === true) return connection;
        connection.close();
        throw stranger(port);
    }

    /**
     * @param {string} method
     * @param {any[]} args as the generated client takes them
     * @param {number} ms the longest wait for the answer
     * @param {AbortSignal} [signal] stops the wait; the call itself cannot be taken back
     * @returns {Promise<any>}
     */
    async call(method, args, ms, signal) {
        if (this.ended) throw this.ended;
        /** @type {(error: HostError) => void} */
        let lost = () => {};
        const ended = new Promise((_, reject) => (lost = reject));
        ended.catch(() => {});
        this.waiting.add(lost);
        const answer = this.client[method](...args).catch((/** @type {any} */ error) =>
            Promise.reject(asHostError(error, method)),
        );
        try {
            return await limited(
                Promise.race([answer, ended]),
                ms,
                () => silent(this.port, method, ms),
                signal,
            );
        } finally {
            this.waiting.delete(lost);
        }
    }

    close() {
        this.end(new HostError('lost', 'The gateway closed the connection.'));
    }

    /** @param {HostError} why every call that still waits fails with it */
    end(why) {
        if (!this.open) return;
        this.open = false;
        this.ended = why;
        for (const lost of this.waiting) lost(why);
        this.waiting.clear();
        this.socket.destroy();
        this.onEnd?.();
    }

    /**
     * The first bytes tell the service from another program's server, which would leave the reader waiting.
     * @param {Buffer} bytes
     */
    recognise(bytes) {
        if (bytes[0] !== 0x80 || (bytes.length > 1 && bytes[1] !== 0x01)) this.end(stranger(this.port));
    }

    /** @param {boolean} yes false for an idle connection: it must not keep the process from ending */
    keepAlive(yes) {
        if (yes) this.socket.ref();
        else this.socket.unref();
    }
}

/** @param {number} port @param {string} method @param {number} ms */
function silent(port, method, ms) {
    const seconds = Math.round(ms / 100) / 10;
    return new HostError(
        'silent',
        `The program on port ${port} accepted the connection and did not answer ${method} within ${seconds} s. The disk manager may be` +
            ' hanging, or serving three other agents already (it serves three at a time), or the port belongs to another program.' +
            ' Ask the user to look at it, and try again later.',
    );
}

/** @param {number} port */
const stranger = (port) =>
    new HostError(
        'stranger',
        `The program that listens on port ${port} is not the disk manager's agent service. Ask the user for the right port (AGENT_NATIVE_PORT, or --port in the gateway's configuration).`,
    );

/** @param {any} error @param {number} port */
function connectFailed(error, port) {
    if (
        error?.code === 'ECONNREFUSED' ||
        error?.errors?.some((/** @type {any} */ e) => e.code === 'ECONNREFUSED')
    )
        return new HostError('absent', `Nothing listens on port ${port}.`);
    if (error?.code) return new HostError('lost', `The connection to port ${port} failed (${error.code}).`);
    return stranger(port);
}

/** @param {any} error @param {string} method */
function asHostError(error, method) {
    if (error instanceof HostError) return error;
    return new HostError(
        'refused',
        `The disk manager's service refused ${method}: ${error?.message ?? error}.`,
    );
}
