import { setTimeout as sleep } from 'node:timers/promises';
import { differences } from './difference.js';
import { readDisks, readPartitions } from './inventory.js';
import { letterOf } from './match.js';
import { sameHost } from './program.js';
import { Deadline } from './time.js';

/** @import { CallToolResult } from '@modelcontextprotocol/server' */
/** @import { Change, Snapshot } from './difference.js' */
/** @import { Host } from './host.js' */
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
        'Call it after each queued order. Watches the inventory until it differs from the inventory before the last order, at most `seconds`, and answers with the differences since the orders not yet reported: sizes, letters, free regions with their unallocatedIndex. No other read is needed to verify an order.',
    inputSchema: {
        type: 'object',
        properties: {
            seconds: {
                type: 'integer',
                minimum: 0,
                maximum: limits.maximum,
                description: `Limit; 0 compares once. Default: ${limits.default}. Large moves, wipes and clones take minutes to hours.`,
            },
        },
    },
    outputSchema: {
        type: 'object',
        properties: {
            changed: { type: 'boolean' },
            waitedSeconds: { type: 'number' },
            orders: { type: 'array', items: { type: 'string' } },
            changes: { type: 'array', items: { type: 'object' } },
            omitted: { type: 'integer' },
        },
        required: ['changed', 'waitedSeconds', 'orders', 'changes'],
    },
};

/** An accepted order whose effect has not been reported. @typedef {{ text: string, tool: Tool, args: PlainRecord, before: Snapshot }} Order */

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
        this.orders.push({ text: orderText(tool, args), tool, args, before });
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

    /**
     * Waits until the inventory differs from the one before the last order, or until the limit.
     * @param {number} seconds
     * @param {CallScope} scope
     * @returns {Promise<CallToolResult>}
     */
    async wait(seconds, scope) {
        const started = performance.now();
        const present = await this.read(scope);
        const discarded = this.belongTo(scope.host);
        if (discarded.length > 0) return otherHost(discarded);
        const orders = [...this.orders];
        const last = orders.at(-1)?.before ?? this.reported ?? present;
        const first = orders[0]?.before ?? last;
        const watched = overwrittenDrives(orders);
        const now = await this.untilChanged(last, present, watched, seconds, scope);
        const waited = Math.round((performance.now() - started) / 100) / 10;
        if (differences(last, now, watched).length === 0) return unchanged(orders, waited);
        this.orders = this.orders.filter((order) => !orders.includes(order));
        this.reported = now;
        return changed(orders, waited, differences(first, now, watched), now);
    }

    /**
     * @param {Snapshot} before
     * @param {Snapshot} now the first read
     * @param {(letter: string) => boolean} watched
     * @param {number} seconds
     * @param {CallScope} scope
     */
    async untilChanged(before, now, watched, seconds, scope) {
        const limit = new Deadline(seconds * 1000);
        let pause = firstPollMs;
        let reportedAt = performance.now();
        while (differences(before, now, watched).length === 0) {
            if (limit.passed) return now;
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

/** The limit of a call in seconds. @param {PlainRecord} args */
export const secondsOf = (args) => args.seconds ?? limits.default;

/** @param {Tool} tool @param {PlainRecord} args */
const orderText = (tool, args) =>
    [tool.name, ...targets(tool, args).map(({ name, value }) => `${name}=${value}`)].join(' ');

/** The disks and drives that a call names. @param {Tool} tool @param {PlainRecord} args */
const targets = (tool, args) =>
    tool.args
        .filter((arg) => arg.role === 'drive' || arg.role === 'disk')
        .map(({ name, role }) => ({
            name,
            role,
            value: role === 'drive' ? String(args[name]).slice(0, 1).toUpperCase() : String(args[name]),
        }));

/**
 * The drives whose content the orders replace: there every change of the used space is an effect.
 * @param {Order[]} orders
 */
function overwrittenDrives(orders) {
    const letters = orders
        .flatMap(({ tool, args }) =>
            targets(tool, args).filter(({ name, role }) => role === 'drive' && tool.loses.includes(name)),
        )
        .map(({ value }) => value);
    return (/** @type {string} */ letter) => letters.includes(letter);
}

/** @param {Order[]} orders @returns {CallToolResult} */
const otherHost = (orders) => ({
    ...answer(
        `The gateway is connected to another disk manager than for ${orderTexts(orders).join(', ')}. The effect cannot be compared: read the inventory, and ask the user.`,
        { changed: false, waitedSeconds: 0, orders: orderTexts(orders), changes: [] },
    ),
    isError: true,
});

/** @param {Order[]} orders @param {number} waited @returns {CallToolResult} */
function unchanged(orders, waited) {
    const meaning =
        orders.length > 0
            ? 'The order may still be waiting or running, or may have failed, and a guide waits for the user. Call WaitForChange again, or ask the user what the application shows. Do not repeat the order.'
            : 'This gateway has given no order whose effect is unreported.';
    const text = `Unchanged after ${waited} s${since(orders)}. ${meaning}`;
    return answer(text, { changed: false, waitedSeconds: waited, orders: orderTexts(orders), changes: [] });
}

/** @param {Order[]} orders @param {number} waited @param {Change[]} all @param {Snapshot} now @returns {CallToolResult} */
function changed(orders, waited, all, now) {
    const shown = all.slice(0, maxLines);
    const omitted = all.length - shown.length;
    const lines = [`Changed after ${waited} s${since(orders)}:`, ...shown.map(({ words }) => `- ${words}`)];
    if (omitted > 0) lines.push(`- ${omitted} more changes. The inventory shows all.`);
    if (all.length === 0)
        lines.push('- The inventory is again as before the first of these orders.');
    return answer(lines.join('\n'), {
        changed: true,
        waitedSeconds: waited,
        orders: orderTexts(orders),
        changes: shown.map(structuredChange),
        ...(omitted > 0 && { omitted }),
    });
}

/** @param {Order[]} orders */
const orderTexts = (orders) => orders.map(({ text }) => text);

/** @param {Order[]} orders */
const since = (orders) => (orders.length > 0 ? ` since ${orderTexts(orders).join(', ')}` : '');

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
