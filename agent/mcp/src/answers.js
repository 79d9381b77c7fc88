import { causeOf } from './causes.js';
import { TASK_NOT_VALID, TASK_QUEUED } from './constants.js';
import { diskLine, partitionLine, partitionLines } from './inventory.js';

/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */
/** @import { Cause } from './checks/call.js' */
/** @import { HostError } from './errors.js' */
/** @import { CallToolResult } from '@modelcontextprotocol/server' */

/** @param {string} text @param {object} [content] @returns {CallToolResult} */
const result = (text, content) => ({
    content: [{ type: 'text', text }],
    ...(content && { structuredContent: /** @type {any} */ (content) }),
});

/** @param {string} text @param {object} [content] @returns {CallToolResult} */
export const failure = (text, content) => ({ ...result(text, content), isError: true });

/** @param {HostError} error */
export const failed = (error) => failure(error.message, error.detail);

/**
 * The answer for TASK_QUEUED. It warns the model that the work is not done yet, or that the user has to do it.
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {Facts} [facts] before the call
 * @param {boolean} [readsOffered] false if the options exclude the tools that read
 */
export function queuedAnswer(tool, args, facts, readsOffered = true) {
    const content = { answer: TASK_QUEUED, queued: true };
    if (tool.onScreen !== undefined)
        return result(
            `"${TASK_QUEUED}": the application opened a page for ${tool.name}. ${tool.onScreen} Nothing has been changed yet, and no result will be returned.` +
                ' Explain to the user what to do on the screen, and wait until the user has finished: the work does not start by itself, so polling the inventory does not help. WaitForChange then shows the effect.',
            { ...content, userContinues: true },
        );
    return result(
        `"${TASK_QUEUED}": the application accepted the order ${tool.name}. This does NOT mean that the work is done or will succeed: the application works independently, may ask the user, and does` +
            ` not report the end. ${howToSee(tool, args, facts, readsOffered)} Do not report success to the user before the inventory shows it.`,
        content,
    );
}

/** @param {Tool} tool @param {PlainRecord} args @param {Facts | undefined} facts @param {boolean} readsOffered */
function howToSee(tool, args, facts, readsOffered) {
    const reads = facts ? diskReads(facts) : namedReads(tool, args);
    const calls = reads.length > 0 ? reads.join(' and ') : 'ListAllDisks and GetAllPartitionInfo';
    const alternative = readsOffered ? `, or ${calls} after a while` : '';
    const effect = `To see the effect, call WaitForChange${alternative}.`;
    const source = facts?.namedDrives[0];
    const addsAfterDrive = tool.class === 'changes' && tool.args.some((arg) => arg.role === 'fileSystem');
    return addsAfterDrive && source
        ? `${effect} The new partition is the entry after ${source.letter}:. The application chooses its letter, which is the driveLetter of that entry.`
        : effect;
}

// The record of one partition can be older than the list: a letter that is no longer in use keeps its last record.
/** The reads of the disks that a call names, directly or through a drive. @param {Facts} facts */
const diskReads = (facts) => [
    ...new Set(
        [
            ...facts.namedDisks.map(({ disk }) => disk),
            ...facts.namedDrives.map(({ partition }) => partition),
        ].flatMap((record) => (record ? [`ListPartitionsOnDisk (diskIndex ${record.diskIndex})`] : [])),
    ),
];

/** The reads of the targets if the inventory is not known. @param {Tool} tool @param {PlainRecord} args */
const namedReads = (tool, args) =>
    tool.args.flatMap(({ name, role }) => {
        if (role === 'drive' && args[name] !== '')
            return [`GetPartitionInfo (driveLetter "${String(args[name]).slice(0, 1).toUpperCase()}")`];
        return role === 'disk' && Number(args[name]) >= 0
            ? [`ListPartitionsOnDisk (diskIndex ${args[name]})`]
            : [];
    });

/**
 * The answer for a call that the application would reject. Neither the application nor the user was asked.
 * @param {Tool} tool
 * @param {Cause} cause
 * @param {boolean} mayChange the effect of an open order can change the cause
 */
export function notCalledAnswer(tool, cause, mayChange) {
    const text = `${tool.name} was not called, and nothing has changed. ${cause.text}`;
    const next = ' An earlier order may still be waiting: call WaitForChange, then try again.';
    return failure(mayChange ? text + next : text, { called: false, queued: false, cause: cause.check });
}

/**
 * Any answer except TASK_QUEUED, with the inventory's data on the targets, and the cause if the inventory shows it.
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {string} answer
 * @param {Facts | undefined} facts undefined if the inventory could not be read
 */
export function rejectedAnswer(tool, args, answer, facts) {
    const cause = facts && answer === TASK_NOT_VALID ? causeOf(tool, args, facts) : undefined;
    const lines = [rejection(tool, answer)];
    if (cause) lines.push(`Cause: ${cause.text}`);
    else if (answer === TASK_NOT_VALID)
        lines.push(
            'The service does not report a reason, and the inventory shows none. Ask the user what the application shows.',
        );
    if (facts) lines.push(...targetLines(facts));
    return failure(lines.join('\n'), { answer, queued: false, ...(cause && { cause: cause.check }) });
}

/** @param {Tool} tool @param {string} answer */
function rejection(tool, answer) {
    if (answer === '')
        return `${tool.name} returned an empty answer: the application has no page for it. The application received no order.`;
    return `"${answer}": ${tool.name} was rejected. The application received no order, and nothing has changed.`;
}

/** The inventory's data on the disks and drives of a call. @param {Facts} facts */
export function targetLines(facts) {
    const letters = facts.partitions
        .map((p) => p.driveLetter.slice(0, 1).toUpperCase())
        .filter((letter) => /[A-Z]/.test(letter))
        .sort();
    return [
        ...facts.namedDisks
            .filter(({ index }) => index >= 0)
            .flatMap(({ arg, index, disk }) => {
                if (!disk)
                    return [
                        `${arg}: the inventory does not contain disk ${index}. Its disks: ${facts.disks.map((d) => d.diskIndex).join(', ') || '(empty)'}.`,
                    ];
                return [
                    `${arg}: ${diskLine(disk, facts.partitions)}`,
                    ...partitionLines(facts.partitions.filter((p) => p.diskIndex === index)).map(
                        (line) => `  ${line}`,
                    ),
                ];
            }),
        ...facts.namedDrives
            .filter(({ letter }) => letter)
            .map(({ arg, letter, partition }) =>
                partition
                    ? `${arg}: ${partitionLine(partition)}`
                    : `${arg}: the inventory does not contain drive ${letter}:. Its drives: ${letters.join(', ') || '(empty)'}.`,
            ),
    ];
}
