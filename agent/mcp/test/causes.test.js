// The causes that the gateway finds in the inventory, compared with the reasons of the sandbox's own rules.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { checks } from '../src/causes.js';
import { loadTable } from '../src/table.js';
import { crowd } from './support/crowdedMachine.js';
import { outcomes } from './support/refusals.js';

/** @typedef {import('./support/refusals.js').Outcome} Outcome */

/** The checks that find each reason of the sandbox; several if the reason does not distinguish them. @type {Array<[RegExp, string[]]>} */
const expected = [
    [/^Disk \d+ does not exist\.$|^The disk does not exist\.$|^It seems that disk%?\d+ is not exist$/, ['absentDisk']],
    [/^No drive has the letter/, ['absentDrive']],
    [/^The drive does not exist\.$/, ['absentDrive']],
    [/^The (target|source) does not exist\.$/, ['absentDisk', 'absentDrive']],
    [/is not os disk$/, ['notSystemDisk', 'absentDisk']],
    [/^The guide names no target\.$/, ['absentDisk', 'absentDrive', 'noPlace', 'sourceLocked']],
    [/^createBootMediaEnabled$/, ['usbNeeded', 'absentDisk', 'absentDrive']],
    [/^Boot media cannot be created/, ['usbNeeded', 'absentDisk', 'absentDrive']],
    [/^isDiskIndexValid$/, ['absentDisk', 'diskUnreadable']],
    [/^Task NotValid$/, ['disabled', 'absentDisk', 'noEntries', 'virtual']],
    [/^The disk cannot be written to\.$/, ['diskNotWritable']],
    [/^The drive cannot be written to\.$/, ['driveNotWritable']],
    [/^The (disk|drive) holds the running system\.$/, ['runningSystem']],
    [/^The drive is locked by BitLocker\.$/, ['locked']],
    [/^The drive has no readable file system\.$/, ['noFileSystem']],
    [/^The disk has no partition table\.$/, ['noTable']],
    [/^The disk is dynamic\.$/, ['dynamic']],
    [/^The erase count must be positive\.$/, ['passes']],
    [/^The data does not fit into that size\.$/, ['belowUsed']],
    [/^The free space after the drive is too small\.$/, ['noSpaceAfter']],
    [/^An MBR disk cannot use space beyond 2 TiB\.$/, ['mbrLimit']],
    [/does not support that size\.$/, ['fileSystemSize']],
    [/^The clusters are too small/, ['clusterCount']],
    [/^The cluster size is not supported\.$/, ['cluster']],
    [/^The drive cannot have that file system\./, ['fileSystemUnsuitable']],
    [/cannot be created in that size\.$/, ['fileSystemCreated']],
    [/^The file system ".*" cannot be created\.$/, ['fileSystemUnknown']],
    [/^The label is too long\.$/, ['labelLength']],
    [/^The label contains an invalid character\.$/, ['labelCharacter']],
    [/^The drive does not have that much free space\.$/, ['freeSpace']],
    [/^The partition table is full\.$/, ['tableFull']],
    [/^All drive letters are in use\.$/, ['letters']],
    [/^The free region does not exist\.$/, ['noRegion']],
    [/^The free region is too small\.$/, ['regionTooSmall']],
    [/^Both drives must be on the same disk\.$|^The target must be another drive/, ['otherDisk', 'absentDrive']],
    [/^The second drive cannot be deleted\.$/, ['secondDrive']],
    [/^The second drive has no readable file system\.$/, ['secondNoFileSystem']],
    [/^The target has no readable file system\.$/, ['targetNoFileSystem']],
    [/^The drives are not adjacent\.$/, ['notAdjacent']],
    [/^The size must be at least one mebibyte\.$/, ['oneMebibyte']],
    [/^A partition in between cannot be moved\.$/, ['notMovable']],
    [/^The disk has no space to take\.$/, ['noGiver']],
    [/^The running system needs its drive letter\.$/, ['systemLetter']],
    [/^The new letter is not a drive letter, or is already in use\.$/, ['letterInUse']],
    [/^Only an inactive primary drive/, ['active']],
    [/^The drive is already hidden\.$/, ['hidden']],
    [/^The drive already has that type/, ['entryType']],
    [/^The computer starts from the drive\.$/, ['startsFrom']],
    [/^The drive is not adjacent to the other logical/, ['notNextToLogical']],
    [/^The drive is between logical drives\.$/, ['betweenLogical']],
    [/^The disk has partitions\.$/, ['hasPartitions']],
    [/^The partition table must be GPT or MBR\.$/, ['style']],
    [/^The partition table cannot hold that many/, ['count']],
    [/^The disk is online\.$/, ['online']],
    [/^The drive is not on a USB disk\.$/, ['notUsb']],
    [/^No other disk has room for the data\.$/, ['noRoom']],
    [/^The source disk cannot be read\.$/, ['sourceUnreadable']],
    [/^The source disk is empty\.$/, ['sourceEmpty']],
    [/^The source cannot be cloned onto itself\.$/, ['ontoItself']],
    [/^The destination cannot be written to\.$/, ['targetNotWritable']],
    [/^The destination holds the running system\.$/, ['targetSystem']],
    [/^The destination is too small\.$/, ['targetTooSmall']],
    [/^The disk is already a GPT disk\.$/, ['alreadyGpt']],
    [/^The disk is already an MBR disk\.$/, ['alreadyMbr']],
    [/^The disk is already a basic disk\.$/, ['alreadyBasic']],
    [/^The disk is already a dynamic disk\.$/, ['alreadyDynamic']],
    [/^A USB disk cannot be dynamic\.$/, ['usbDynamic']],
    [/^A volume spans several disks\.$/, ['spans']],
    [/^The disk has no room for the partition table\.$/, ['noTableRoom']],
    [/which an MBR disk cannot address\.$/, ['beyondMbr']],
    [/^The drive already has that file system\.$/, ['sameFileSystem']],
    [/^The running system needs its file system\.$/, ['systemFileSystem']],
    [/^A GPT disk has no MBR to rebuild\.$/, ['gptHasNoMbr']],
    [/^The disk is already aligned\.$/, ['aligned']],
    [/^The drive is not encrypted\.$/, ['notEncrypted']],
];

/** @param {string} reason */
const checksFor = (reason) => expected.find(([pattern]) => pattern.test(reason))?.[1] ?? [];

/** @param {Outcome} outcome @returns {'accepted' | 'right' | 'unknown' | 'wrong'} */
function verdict({ reason, cause }) {
    // A possible cause is reported only after a rejection.
    if (reason === '') return cause?.certain ? 'wrong' : 'accepted';
    if (cause === undefined) return 'unknown';
    return checksFor(reason).includes(cause.check) ? 'right' : 'wrong';
}

// On a system whose root folder has no drive letter, the guide of this tool gets no source, whatever the machine.
const withoutSource = /^CloneOSDataFromCurrent /;

const machines = [
    { machine: 'desktop', perTool: 6 },
    { machine: 'laptop', perTool: 4 },
    { machine: 'server', perTool: 4 },
    { machine: 'desktop', change: crowd, perTool: 16 },
];

test('Causes_AreTheSandboxsReasonsForAtLeastNineInTenRejectionsAndNeverWrong', async (t) => {
    const scores = { accepted: 0, right: 0, unknown: 0, wrong: 0 };
    const wrong = [];
    const found = new Set();
    for (const machine of machines)
        for (const outcome of await outcomes(t, machine)) {
            if (withoutSource.test(outcome.call)) continue;
            const result = verdict(outcome);
            scores[result]++;
            if (result === 'right') found.add(outcome.cause?.check);
            if (result === 'wrong') wrong.push(outcome);
        }
    const rejected = scores.right + scores.unknown + scores.wrong;
    t.diagnostic(`${rejected} rejections, ${found.size} causes: ${JSON.stringify(scores)}`);
    assert.deepEqual(wrong, []);
    assert.ok(rejected >= 150, `${rejected} rejections`);
    assert.ok(scores.right >= 0.9 * rejected, JSON.stringify(scores));
    assert.ok(scores.accepted >= 50, 'The checks must not reject everything.');
    assert.ok(found.size >= 50, [...found].join(', '));
});

test('Checks_ExistForEveryToolWithATargetAndOnlyForTools', () => {
    const { tools } = loadTable();
    const withTarget = tools.filter(
        (tool) =>
            tool.class !== 'reads' && tool.args.some((arg) => arg.role === 'drive' || arg.role === 'disk'),
    );
    assert.deepEqual(
        Object.keys(checks).sort(),
        [...withTarget.map((tool) => tool.name), 'MigrateSystemDriveData'].sort(),
    );
});
