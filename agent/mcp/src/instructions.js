import { TASK_NOT_VALID, TASK_QUEUED } from './constants.js';

/** @import { Table, Tool } from './types.js' */

/**
 * The server's instructions: the facts that apply to all tools, so that no description repeats them.
 * @param {Table} table
 * @param {Tool[]} tools the offered ones
 */
export function instructions(table, tools) {
    const missing = Object.keys(table.groups).filter((name) => !tools.some((tool) => tool.group === name));
    const lines = [
        'These tools control the disk and partition manager on this computer. Read the inventory first: GetAllPartitionInfo shows the partitions and free regions of all disks in order, ListAllDisks the kind of each disk. Disks are identified by the number from ListAllDisks, partitions by drive letter.',
        'Sizes are in bytes. Answers contain 64-bit sizes as decimal strings; arguments are whole numbers or decimal strings.',
        `"${TASK_QUEUED}" means that the application accepted an order, never that the work is done: WaitForChange waits for the effect and describes it. "${TASK_NOT_VALID}" means that the application received no order. Guides and pages open on the user's screen without validation, and the user completes them.`,
        'Tools that act run one at a time, about two seconds apart; the gateway waits automatically. An unknown drive letter returns an empty record, an unknown disk an empty array.',
    ];
    if (missing.length > 0)
        lines.push(
            `Groups that are not offered (the user can add them with --tools in the gateway's configuration): ${missing.map((name) => `${name} (${table.groups[name].about})`).join('; ')}.`,
        );
    return lines.join('\n');
}
