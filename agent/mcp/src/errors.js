/** @typedef {'unreachable' | 'wrongService' | 'timeout' | 'disconnected' | 'busy' | 'exception' | 'invalid' | 'replaced'} Kind */

/**
 * A call that failed. The message is for the model: the failure and the next step.
 *
 * - unreachable: no program listens on the port
 * - wrongService: another program listens on the port
 * - timeout: no answer within the time limit
 * - disconnected: the connection closed before the answer
 * - busy: the gate did not allow the call
 * - exception: the service answered with an exception message
 * - replaced: the host is another one than before; nothing was sent
 * - invalid: the arguments do not fit the tool; nothing was sent
 */
export class HostError extends Error {
    /**
     * @param {Kind} kind
     * @param {string} message
     * @param {object} [detail] the client receives it as structured content
     */
    constructor(kind, message, detail) {
        super(message);
        this.kind = kind;
        this.detail = detail;
    }
}
