import { TASK_NOT_VALID, TASK_QUEUED } from './constants.js';

/** @import { Table, Tool } from './types.js' */

/**
 * The server's instructions: the facts that apply to all offered tools, so that no description repeats them. They advise
 * only tools that are offered.
 * @param {Table} table
 * @param {Tool[]} tools the offered ones
 * @param {boolean} [readOnly]
 */
export function instructions(table, tools, readOnly = false) {
    const reads = tools.some((tool) => tool.class === 'reads');
    const missing = Object.keys(table.groups).filter((name) => !tools.some((tool) => tool.group === name));
    const lines = [
        'These tools control the disk and partition manager on this computer.',
        reads
            ? 'Read the inventory first: GetAllPartitionInfo shows the partitions and free regions of all disks in order, ListAllDisks the kind of each disk. An unknown drive letter returns an empty record, an unknown disk an empty array.'
            : 'Read the inventory first, from the resource aibridge://disks.',
        'Disks are identified by their number in the inventory, partitions by drive letter. Sizes are in bytes; in texts, 1 GB is 1024^3 bytes. Answers contain 64-bit sizes as decimal strings; arguments are whole numbers or decimal strings.',
    ];
    lines.push(planLine);
    if (tools.some((tool) => tool.class !== 'reads')) lines.push(...actingLines);
    else lines.push('WaitForChange waits until the inventory changes, and describes the change.');
    if (readOnly)
        lines.push(
            'The gateway runs with --read-only: no offered tool can change anything. Only the user can remove that option.',
        );
    if (missing.length > 0 && !readOnly)
        lines.push(
            `Groups that are not offered (the user can add them with --tools in the gateway's configuration): ${missing.map((name) => `${name} (${table.groups[name].about})`).join('; ')}.`,
        );
    return lines.join('\n');
}

const planLine = 'PlanCall checks a call without making it: whether it can work, what is lost, what opens.';
const actingLines = [
    `"${TASK_QUEUED}" means that the application accepted an order, never that the work is done: WaitForChange waits for the effect and describes it. "${TASK_NOT_VALID}" means that the application received no order. Guides and pages open on the user's screen, and the user completes them.`,
    'Tools that act run one at a time, about two seconds apart; the gateway waits automatically.',
];
