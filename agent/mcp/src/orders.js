import { differences } from './difference.js';
import { letterOf } from './match.js';

/** @import { Change, Snapshot } from './difference.js' */
/** @import { Cause } from './checks/call.js' */
/** @import { Facts } from './inventory.js' */
/** @import { Argument, PlainRecord, Tool } from './types.js' */

/**
 * An accepted order whose effect has not been reported. `before` is the inventory before the call, or that of a later
 * report without an effect of this order.
 * @typedef {{ tool: Tool, args: PlainRecord, before: Snapshot }} Order
 */
/** @typedef {{ name: string, role: Argument['role'], value: string }} Target */

/** The tools with one visible effect: another difference of the same drive is not theirs. @type {Record<string, string>} */
const effectFields = {
    ResizePartition: 'rawCapacity',
    ResizePartitionRelative: 'rawCapacity',
    ChangePartitionClusterSize: 'clusterSize',
    ChangePartitionDriveLetter: 'driveLetter',
    ChangePartitionLabel: 'label',
    SetPartitionHidden: 'isHidden',
    SetPartitionActive: 'isActive',
};

/** The checks that the effect of a waiting order can satisfy: they depend on the layout, letters and file systems. */
export const temporaryChecks = new Set([
    'absentDrive',
    'belowUsed',
    'betweenLogical',
    'beyondMbr',
    'dynamic',
    'freeSpace',
    'hasPartitions',
    'letterInUse',
    'letters',
    'mbrLimit',
    'noFileSystem',
    'noPlace',
    'noRegion',
    'noSpaceAfter',
    'noTable',
    'noTableRoom',
    'notAdjacent',
    'notNextToLogical',
    'regionTooSmall',
    'tableFull',
    'targetTooSmall',
]);

/** The disks and drives that a call names. @param {Tool} tool @param {PlainRecord} args @returns {Target[]} */
const targets = (tool, args) =>
    tool.args
        .filter(({ role }) => role === 'drive' || role === 'disk')
        .map(({ name, role }) => ({
            name,
            role,
            value: role === 'drive' ? String(args[name]).slice(0, 1).toUpperCase() : String(args[name]),
        }));

/** The targets without those that the application or the user chooses. @param {Order} order */
const namedTargets = ({ tool, args }) =>
    targets(tool, args).filter(({ role, value }) => (role === 'drive' ? value !== '' : Number(value) >= 0));

/** For the data of an answer: "FormatPartition driveLetter=H". @param {Order} order */
export const orderText = ({ tool, args }) =>
    [tool.name, ...targets(tool, args).map(({ name, value }) => `${name}=${value}`)].join(' ');

/** @param {Order} order @param {(target: Target) => string} show */
function withTargets(order, show) {
    const shown = namedTargets(order).map(show).join(', ');
    return shown ? `${order.tool.name} (${shown})` : order.tool.name;
}

/** "FormatPartition (driveLetter H)". @param {Order} order */
const orderWords = (order) => withTargets(order, ({ name, value }) => `${name} ${value}`);

/** "FormatPartition (H:)". @param {Order} order */
export const shortWords = (order) =>
    withTargets(order, ({ role, value }) => (role === 'drive' ? `${value}:` : `disk ${value}`));

/** "the order A", "the orders A, B". @param {Order[]} orders */
export const theOrders = (orders) =>
    `the ${orders.length === 1 ? 'order' : 'orders'} ${orders.map(orderWords).join(', ')}`;

/**
 * The drives whose content the orders replace: there every change of the used space is an effect.
 * @param {Order[]} orders
 */
export function overwrittenDrives(orders) {
    const letters = orders
        .flatMap(({ tool, args }) =>
            targets(tool, args).filter(({ name, role }) => role === 'drive' && tool.loses.includes(name)),
        )
        .map(({ value }) => value);
    return (/** @type {string} */ letter) => letters.includes(letter);
}

/**
 * The orders whose disks (with their partitions and regions) or drives show a difference. An order that opened a page,
 * or that names no target, can also have an effect elsewhere: there a difference on a disk that no other order explains
 * counts.
 * @param {Order[]} orders from the earliest to the latest
 * @param {Snapshot} now
 * @returns {Order[]}
 */
export function ordersWithEffect(orders, now) {
    const watched = overwrittenDrives(orders);
    // A later order can undo an effect, so every inventory since the order counts.
    const all = orders.map((order, i) => ({
        order,
        changes: [...orders.slice(i + 1).map(({ before }) => before), now].flatMap((later) =>
            differences(order.before, later, watched),
        ),
    }));
    const explained = new Set(
        all.flatMap(({ order, changes }) => changes.filter((change) => affects(order, change)).map(diskOf)),
    );
    return all
        .filter(({ order, changes }) =>
            changes.some(
                (change) => affects(order, change) || (isOpenEnded(order) && !explained.has(diskOf(change))),
            ),
        )
        .map(({ order }) => order);
}

/** @param {Order} order */
const isOpenEnded = (order) => order.tool.onScreen !== undefined || namedTargets(order).length === 0;

/** The disk of a difference, as numbered before it. @param {Change} change @returns {number} */
const diskOf = ({ was, record }) => (was ?? record).diskIndex;

/** @param {Order} order @param {Change} change */
function affects(order, change) {
    const field = effectFields[order.tool.name];
    if (field && change.change === 'changed' && !change.fields.some(({ name }) => name === field)) return false;
    const letters = change.item === 'partition' ? [change.was, change.record].map((p) => p && letterOf(p)) : [];
    return namedTargets(order).some(({ role, value }) =>
        role === 'drive' ? letters.includes(value) : Number(value) === diskOf(change),
    );
}

/**
 * True if the effect of an order can change the cause of a rejection: both name the same disk or letter.
 * @param {Order} order
 * @param {Cause} cause
 * @param {Tool} tool the rejected call
 * @param {PlainRecord} args
 * @param {Facts} facts
 */
export function canChange(order, cause, tool, args, facts) {
    if (!temporaryChecks.has(cause.check)) return false;
    const letters = lettersOf(tool, args, ['drive', 'newLetter']);
    const names = (/** @type {Argument['role'][]} */ ...roles) =>
        lettersOf(order.tool, order.args, roles).some((letter) => letters.includes(letter));
    // Only a new letter makes an absent drive appear.
    if (cause.check === 'absentDrive') return names('newLetter');
    const disks = disksOf(tool, args, facts.partitions);
    return (
        names('drive', 'newLetter') ||
        disksOf(order.tool, order.args, order.before.partitions).some((disk) => disks.includes(disk))
    );
}

/** @param {Tool} tool @param {PlainRecord} args @param {Argument['role'][]} roles */
const lettersOf = (tool, args, roles) =>
    tool.args
        .filter(({ role }) => roles.includes(role))
        .map(({ name }) => String(args[name]).slice(0, 1).toUpperCase())
        .filter(Boolean);

/** The disks that a call names, directly or through a drive. @param {Tool} tool @param {PlainRecord} args @param {PlainRecord[]} partitions */
const disksOf = (tool, args, partitions) =>
    targets(tool, args).flatMap(({ role, value }) =>
        role === 'disk'
            ? [Number(value)].filter((index) => index >= 0)
            : partitions.filter((p) => value !== '' && letterOf(p) === value).map((p) => Number(p.diskIndex)),
    );
