// An agent's request on a real disk: an image that UDisks2 changes. Independent programs read the result from the file.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { connect } from './support/client.js';
import { Conversation } from './support/conversation.js';
import { tableOf, verified, withImageHost } from './support/diskImage.js';

const mib = 1024 ** 2;

/**
 * An order and its effect, which the answer of WaitForChange describes.
 * @param {Conversation} model
 * @param {string} name
 * @param {Record<string, any>} args
 * @param {RegExp} effect
 */
async function carryOut(model, name, args, effect) {
    const order = await model.call(name, args);
    assert.ok(!order.isError, order.text);
    const change = await model.call('WaitForChange', { seconds: 120 });
    assert.match(change.text, effect);
}

/** @param {number} unallocatedIndex @param {number} size in MiB @param {string} fileSystem @param {string} label */
const partition = (unallocatedIndex, size, fileSystem, label) => ({
    diskIndex: 0,
    capacity: String(size * mib),
    fileSystem,
    label,
    unallocatedIndex,
});

test('ThirdPartitionInTheSpaceOfAShrunkOne_IsFoundByIndependentPrograms', async (t) => {
    await withImageHost(t, 1024 * mib, async (image, host) => {
        const { client } = await connect(t, {
            args: ['--port', String(host.port), '--tools', 'inventory,partitions,disks'],
            elicit: () => ({ action: 'accept', content: { confirm: true } }),
        });
        const model = new Conversation(client, host.log, async () => {});
        const { disks } = (await model.call('ListAllDisks')).content;
        assert.deepEqual([disks.length, disks[0].isUninitialized], [1, true]);

        await carryOut(model, 'InitializeDiskToGpt', { diskIndex: 0 }, /partition table GPT/);
        await carryOut(model, 'CreatePartition', partition(0, 400, 'NTFS', 'Data'), /New: D: "Data", NTFS/);
        await carryOut(model, 'CreatePartition', partition(0, 400, 'EXT4', 'Files'), /New: E: "Files", EXT4/);
        const shrink = { driveLetter: 'D', newPartitionCapacity: String(250 * mib) };
        await carryOut(model, 'ResizePartition', shrink, /D: size 250(\.00)? MB/);
        await carryOut(model, 'CreatePartition', partition(0, 150, 'NTFS', 'Third'), /New: F: "Third", NTFS/);

        const { label, partitions } = tableOf(image);
        assert.equal(label, 'gpt');
        assert.deepEqual(
            partitions.map((/** @type {any} */ entry) => verified(image, entry)),
            [
                [1, 250, 'ntfs', 'Data'],
                [251, 150, 'ntfs', 'Third'],
                [401, 400, 'ext4', 'Files'],
            ],
        );
    });
});
