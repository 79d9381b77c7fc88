import { TASK_NOT_VALID, TASK_QUEUED } from './constants.js';

/** @import { Table, Tool } from './types.js' */

/**
 * What the model is told once, so that no tool has to repeat it.
 * @param {Table} table
 * @param {Tool[]} tools the ones that are offered
 */
export function instructions(table, tools) {
    const missing = Object.keys(table.groups).filter((name) => !tools.some((tool) => tool.group === name));
    const lines = [
        'These tools drive the disk and partition manager that runs on this computer. Read the inventory first (ListAllDisks, ListPartitionsOnDisk); disks go by the number that ListAllDisks reports, partitions by drive letter.',
        'Sizes are bytes. Answers give 64-bit sizes as decimal texts; arguments may be whole numbers or decimal texts.',
        `"${TASK_QUEUED}" means that the application took an order, never that the work is done: look at the inventory again. "${TASK_NOT_VALID}" means that nothing was handed over. Guides and pages open on the user's screen, validate nothing before they open, and the user finishes there.`,
        'Tools that act run one at a time, about two seconds apart; the gateway waits by itself. An unknown drive letter reads as an empty record, an unknown disk as an empty list.',
    ];
    if (missing.length > 0)
        lines.push(
            `Not offered now (the user can add groups with --tools in the gateway's configuration): ${missing.map((name) => `${name} (${table.groups[name].about})`).join('; ')}.`,
        );
    return lines.join('\n');
}
