/** @typedef {'absent' | 'stranger' | 'silent' | 'lost' | 'busy' | 'refused' | 'invalid'} Kind */

/**
 * A call that could not be carried out, in words for the model: what happened and what to do about it.
 *
 * - absent: nothing listens where the host should be
 * - stranger: another program listens there
 * - silent: the host took the connection or the call, and did not answer in time
 * - lost: the connection ended before the answer
 * - busy: the gate said no
 * - refused: the host answered with an exception
 * - invalid: the arguments are not what the tool takes; nothing was sent
 */
export class HostError extends Error {
    /**
     * @param {Kind} kind
     * @param {string} message
     * @param {object} [detail] goes to the client as structured content
     */
    constructor(kind, message, detail) {
        super(message);
        this.kind = kind;
        this.detail = detail;
    }
}
