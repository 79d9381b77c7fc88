import { limited } from './time.js';

/** @import { CallScope } from './types.js' */

/** So many at a time, in the order of asking. */
export class Turn {
    /** @param {number} seats */
    constructor(seats = 1) {
        this.free = seats;
        /** @type {Array<() => void>} */
        this.queue = [];
    }

    /**
     * Resolves when it is the caller's turn, who then has to leave().
     * @param {CallScope} scope
     * @param {() => Error} late what to fail with when the deadline passes first
     */
    async take(scope, late) {
        if (this.free > 0) return void this.free--;
        scope.progress('Waiting for an earlier call to end.');
        /** @type {() => void} */
        let enter = () => {};
        const turn = new Promise((resolve) => (enter = () => resolve(undefined)));
        this.queue.push(enter);
        try {
            await limited(turn, scope.deadline.left(), late, scope.signal);
        } catch (error) {
            if (this.queue.includes(enter)) this.queue = this.queue.filter((one) => one !== enter);
            else this.leave();
            throw error;
        }
    }

    leave() {
        const next = this.queue.shift();
        if (next) next();
        else this.free++;
    }
}
