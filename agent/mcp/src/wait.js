import { setTimeout as sleep } from 'node:timers/promises';
import { differences } from './difference.js';
import { readDisks, readPartitions } from './inventory.js';
import { letterOf } from './match.js';
import { canChange, ordersWithEffect, orderText, overwrittenDrives, shortWords, theOrders } from './orders.js';
import { sameHost } from './program.js';
import { Deadline } from './time.js';

/** @import { CallToolResult } from '@modelcontextprotocol/server' */
/** @import { Change, Snapshot } from './difference.js' */
/** @import { Cause } from './checks/call.js' */
/** @import { Host } from './host.js' */
/** @import { Facts } from './inventory.js' */
/** @import { Order } from './orders.js' */
/** @import { CallScope, HostId, Options, PlainRecord, Table, Tool } from './types.js' */

// Two reads per poll: frequent at first, because most orders take less than a second.
const firstPollMs = 200;
const longestPollMs = 2000;
const progressMs = 1000;
/** Seconds to wait: many clients abandon a call after 60 s without an answer. */
const limits = { default: 30, maximum: 600 };
const maxLines = 40;

/** The tool's entry in tools/list, without the annotations. */
export const waitTool = {
    name: 'WaitForChange',
    title: 'Wait for the effect of an order',
    description:
        'Call it after each queued order. Waits until the inventory differs from the one before the last order. Reports the differences since the open orders, with the unallocatedIndex of free regions, and the orders without an effect.',
    inputSchema: {
        type: 'object',
        properties: {
            seconds: {
                type: 'integer',
                minimum: 0,
                maximum: limits.maximum,
                description: `Limit; 0 compares once. Default: ${limits.default}, without an open order 0. Moves, wipes and clones take minutes to hours.`,
            },
        },
    },
    outputSchema: {
        type: 'object',
        properties: {
            changed: { type: 'boolean' },
            waitedSeconds: { type: 'number' },
            orders: { type: 'array', items: { type: 'string' } },
            withoutEffect: { type: 'array', items: { type: 'string' } },
            changes: { type: 'array', items: { type: 'object' } },
        },
        required: ['changed'],
    },
};

/** Compares the inventory with the one before each order. It reads only, and never uses the gate. */
export class ChangeWatch {
    /** @param {Host} host @param {Table} table @param {Options} options */
    constructor(host, table, options) {
        this.host = host;
        this.table = table;
        this.options = options;
        /** @type {Order[]} */
        this.orders = [];
        /** The inventory of the last report. @type {Snapshot | undefined} */
        this.reported = undefined;
        /** The host of these inventories. @type {HostId | undefined} */
        this.hostId = undefined;
    }

    /**
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {Snapshot} before the inventory before the call
     * @param {HostId | undefined} hostId
     */
    addOrder(tool, args, before, hostId) {
        this.belongTo(hostId);
        this.orders.push({ tool, args, before });
    }

    /** Discards the inventories of another host. @param {HostId | undefined} hostId @returns {Order[]} the discarded orders */
    belongTo(hostId) {
        const same = !this.hostId || !hostId || sameHost(this.hostId, hostId);
        const discarded = same ? [] : this.orders;
        if (!same) {
            this.orders = [];
            this.reported = undefined;
        }
        this.hostId = hostId ?? this.hostId;
        return discarded;
    }

    /** @param {CallScope} scope @returns {Promise<Snapshot>} */
    async read(scope) {
        // Each pair of reads has the time limit of a call; the limit of the whole wait is separate.
        scope.deadline = new Deadline(this.options.timeoutMs);
        const disks = await readDisks(this.host, this.table, scope);
        return { disks, partitions: await readPartitions(this.host, this.table, scope) };
    }

    /** True if the effect of an open order can change the cause of a rejection. @param {Cause} cause @param {Tool} tool @param {PlainRecord} args @param {Facts} facts */
    canChange(cause, tool, args, facts) {
        return this.orders.some((order) => canChange(order, cause, tool, args, facts));
    }

    /**
     * Waits until the inventory differs from the one before the last order, or until the limit. At the limit, effects of
     * earlier orders are reported. Orders without an effect remain open.
     * @param {number | undefined} given the limit in seconds; undefined: the default, without a wait if no order is open
     * @param {CallScope} scope
     * @returns {Promise<CallToolResult>}
     */
    async wait(given, scope) {
        const started = performance.now();
        const present = await this.read(scope);
        const discarded = this.belongTo(scope.host);
        if (discarded.length > 0) return otherHost(discarded);
        const orders = [...this.orders];
        const last = orders.at(-1)?.before ?? this.reported ?? present;
        const first = orders[0]?.before ?? last;
        const watched = overwrittenDrives(orders);
        const seconds = given ?? (orders.length > 0 ? limits.default : 0);
        const now = await this.untilChanged({ first, last, present, watched }, seconds, scope);
        const waited = Math.round((performance.now() - started) / 100) / 10;
        const changes = differences(first, now, watched);
        if (changes.length === 0 && differences(last, now, watched).length === 0)
            return unchanged(orders, waited, seconds > 0);
        const since = sinceText(orders, this.reported !== undefined);
        const open = this.report(orders, now);
        return changed({ orders, open, since, waited, changes });
    }

    /**
     * Closes the orders with an effect. The next report of the others begins with the inventory of this one.
     * @param {Order[]} orders
     * @param {Snapshot} now
     * @returns {Order[]} the orders that remain open
     */
    report(orders, now) {
        const closed = ordersWithEffect(orders, now);
        const open = orders.filter((order) => !closed.includes(order));
        for (const order of open) order.before = now;
        this.orders = this.orders.filter((order) => !closed.includes(order));
        this.reported = now;
        return open;
    }

    /**
     * @param {{ first: Snapshot, last: Snapshot, present: Snapshot, watched: (letter: string) => boolean }} inventories
     *     before the first and the last order, and of the first read
     * @param {number} seconds
     * @param {CallScope} scope
     */
    async untilChanged({ first, last, present, watched }, seconds, scope) {
        const limit = new Deadline(seconds * 1000);
        let now = present;
        let pause = firstPollMs;
        let reportedAt = performance.now();
        while (differences(last, now, watched).length === 0) {
            if (limit.passed && differences(first, now, watched).length === 0) return now;
            if (limit.passed) break;
            if (performance.now() - reportedAt >= progressMs) {
                const left = Math.round(limit.left() / 1000);
                scope.progress(`The inventory is unchanged; ${left} of ${seconds} s left.`);
                reportedAt = performance.now();
            }
            await sleep(Math.min(pause, limit.left()), undefined, { signal: scope.signal });
            pause = Math.min(pause * 1.5, longestPollMs);
            now = await this.read(scope);
        }
        // A second read is complete even if the inventory was replaced between the two lists of the first.
        return this.read(scope);
    }
}

/** @param {Order[]} orders @returns {CallToolResult} */
const otherHost = (orders) => ({
    ...answer(
        `The gateway is connected to another disk manager than for ${theOrders(orders)}. The effect cannot be compared: read the inventory, and ask the user.`,
        { changed: false, waitedSeconds: 0, ...orderData(orders, orders), changes: [] },
    ),
    isError: true,
});

/** @param {Order[]} orders all without an effect @param {number} waited @param {boolean} hasWaited */
function unchanged(orders, waited, hasWaited) {
    const result = `Unchanged after ${waited} s`;
    const none = 'No order of this gateway is waiting for a report.';
    const text =
        orders.length > 0
            ? `${result} since ${theOrders(orders)}. ${openText(orders)}`
            : `${hasWaited ? `${result}. ` : ''}${none}`;
    return answer(text, { changed: false, waitedSeconds: waited, ...orderData(orders, orders), changes: [] });
}

/** The state of orders without a visible effect, and the next step. @param {Order[]} orders */
function openText(orders) {
    const [subject, object] = orders.length === 1 ? ['The order', 'it'] : ['The orders', 'them'];
    const guide = orders.some(({ tool }) => tool.onScreen !== undefined) ? ', and a guide waits for the user' : '';
    return `${subject} may still be waiting or running, or may have failed${guide}. Call WaitForChange again, or ask the user what the application shows. Do not repeat ${object}.`;
}

/** @param {Order[]} orders @param {boolean} hasReport */
function sinceText(orders, hasReport) {
    if (orders.length > 0) return theOrders(orders);
    return hasReport ? 'the last report' : 'the start of this call';
}

/** @param {{ orders: Order[], open: Order[], since: string, waited: number, changes: Change[] }} report */
function changed({ orders, open, since, waited, changes }) {
    const shown = changes.slice(0, maxLines);
    const omitted = changes.length - shown.length;
    const lines = [
        `Changed within ${waited} s. Differences since ${since}:`,
        ...shown.map(({ words }) => `- ${words}`),
    ];
    if (omitted > 0) lines.push(`- ${omitted} more changes. The inventory shows all.`);
    if (changes.length === 0)
        lines.push('- The inventory is again as before the first of these orders.');
    if (open.length > 0)
        lines.push(`No visible effect yet: ${open.map(shortWords).join(', ')}. ${openText(open)}`);
    return answer(lines.join('\n'), {
        changed: true,
        waitedSeconds: waited,
        ...orderData(orders, open),
        changes: shown.map(structuredChange),
        ...(omitted > 0 && { omitted }),
    });
}

/** @param {Order[]} orders @param {Order[]} open */
const orderData = (orders, open) => ({
    orders: orders.map(orderText),
    withoutEffect: open.map(orderText),
});

/** @param {Change} change */
function structuredChange({ item, change, record, fields, unallocatedIndex }) {
    const letter = item === 'partition' ? letterOf(record) : '';
    /** @param {'was' | 'now'} side */
    const values = (side) => Object.fromEntries(fields.map((field) => [field.name, field[side]]));
    return {
        item,
        change,
        diskIndex: record.diskIndex,
        ...(letter && { driveLetter: letter }),
        ...(item === 'partition' && { label: record.label }),
        size: item === 'disk' ? record.totalCapacity : record.rawCapacity,
        ...(item === 'partition' && { freeSize: record.freeSize }),
        ...(unallocatedIndex !== undefined && { unallocatedIndex }),
        ...(fields.length > 0 && { was: values('was'), now: values('now') }),
    };
}

/** @param {string} text @param {object} content @returns {CallToolResult} */
const answer = (text, content) => ({
    content: [{ type: 'text', text }],
    structuredContent: /** @type {any} */ (content),
});
