import { diskOf, targetsOf } from './loss.js';
import { quoted, unquoted } from './quote.js';
import { displayed } from './size.js';

/** @import { Field, PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */

// More lines would hide the question's beginning or end in a small dialog.
const maxPartitions = 16;

const roles = {
    isCurrentBootPartition: 'contains the running Windows',
    isCurrentSystemPartition: 'boot partition of this machine',
    gptEfi: 'EFI system partition',
    gptRecovery: 'recovery partition',
    isBitlockerEncrypted: 'encrypted with BitLocker',
};

/**
 * The question to the user: the data that is lost, the target, the arguments, always in this order. Every text of a
 * disk or the model is quoted, so that it cannot form lines of its own.
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {Facts} facts
 * @param {string[]} changes differences from the target of an earlier question
 * @param {string} [doubt] a reason for which the application may reject the call
 */
export function questionText(tool, args, facts, changes, doubt) {
    const values = tool.args.map((arg) => `- ${arg.name}: ${argumentText(arg, args[arg.name])}`);
    return [
        ...lossLines(tool, facts),
        'Target:',
        ...targetLines(tool, facts),
        ...(changes.length > 0 ? ['Changed since the last question:', ...changes.map((line) => `- ${line}`)] : []),
        `Requested by an AI agent: ${tool.title} (${tool.name})`,
        ...values,
        ...(doubt === undefined ? [] : [`The application may reject this call: ${doubt}`]),
        'Is this the right target, and may this data be destroyed?',
    ].join('\n');
}

/** @param {Field} arg @param {unknown} value */
const argumentText = (arg, value) => (arg.type === 'string' ? quoted(value) : unquoted(value));

/** @param {Tool} tool @param {Facts} facts */
function lossLines(tool, facts) {
    const { lostDisks, lostDrives } = targetsOf(tool, facts);
    return [
        'Permanently lost if you agree:',
        ...lostDrives.map(
            (p) => `- Everything on ${driveName(p)} (${used(p)} used of ${displayed(p.displayRawCapacity)})`,
        ),
        ...lostDisks.flatMap((d) => diskLoss(d, facts)),
        `- Reason: ${tool.reason}`,
    ];
}

/** @param {PlainRecord} partition */
const used = (partition) => displayed(partition.displayUsedSize);

/** @param {PlainRecord} disk @param {Facts} facts */
function diskLoss(disk, facts) {
    const partitions = facts.partitions.filter((p) => p.diskIndex === disk.diskIndex && !p.isUnallocated);
    const omitted = partitions.length - maxPartitions;
    return [
        `- Everything on disk ${disk.diskIndex} (partitions: ${partitions.length})`,
        ...partitions.slice(0, maxPartitions).map((p) => `- ${capital(driveText(p))}`),
        ...(omitted > 0 ? [`- ${omitted} more partitions`] : []),
    ];
}

/** @param {Tool} tool @param {Facts} facts */
function targetLines(tool, facts) {
    const { lostDisks, lostDrives, otherDisks, otherDrives } = targetsOf(tool, facts);
    const containing = lostDrives.flatMap((p) => diskOf(p, facts) ?? []);
    return [
        ...lostDrives.map((p) => `- ${capital(driveText(p))}`),
        ...[...new Set([...lostDisks, ...containing])].map((d) => `- ${capital(diskText(d))}`),
        ...otherDrives.map((p) => `- Also involved: ${driveText(p)}`),
        ...otherDisks.map((d) => `- Also involved: ${diskText(d)}`),
    ];
}

/** @param {PlainRecord} p */
function driveName(p) {
    return /^[A-Za-z]/.test(p.driveLetter)
        ? `drive ${p.driveLetter.slice(0, 1).toUpperCase()}:`
        : 'partition without a letter:';
}

/** A drive with the properties that identify it. @param {PlainRecord} p */
export function driveText(p) {
    const found = Object.entries(roles).flatMap(([flag, role]) => (p[flag] === true ? [role] : []));
    return [
        `${driveName(p)} label ${quoted(p.label)}`,
        `file system ${quoted(p.fileSystemType)}`,
        `${displayed(p.displayRawCapacity)} (${p.rawCapacity} bytes)`,
        `starts at byte ${p.startingOffset} of disk ${p.diskIndex}`,
        ...found,
    ].join(', ');
}

/** A disk with the properties that identify it. @param {PlainRecord} d */
export const diskText = (d) =>
    `disk ${d.diskIndex}: ${displayed(d.displayTotalCapacity)} (${d.totalCapacity} bytes), interface ${quoted(d.diskLabel)}, ` +
    (d.serialNumber === '' ? 'without a serial number' : `serial number ${quoted(d.serialNumber)}`);

/** @param {string} text */
const capital = (text) => text.slice(0, 1).toUpperCase() + text.slice(1);
