import assert from 'node:assert/strict';
import { test } from 'node:test';
import { loadTable } from '../src/table.js';
import { connect } from './support/client.js';
import { FakeService } from './support/fakeService.js';

/** @param {import('node:test').TestContext} t */
async function start(t) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    return connect(t, { args: ['--port', String(service.port)] });
}

/** @param {string} record */
const fieldCount = (record) => loadTable().records[record].length;

/** @param {any} answer */
const content = (answer) => JSON.parse(answer.contents[0].text);

test('Resources_AreTheDisksAndThePartitionsOfEach', async (t) => {
    const { client } = await start(t);
    assert.deepEqual(
        (await client.listResources()).resources.map((r) => r.uri),
        ['aibridge://disks', 'aibridge://disks/0/partitions', 'aibridge://disks/1/partitions'],
    );
    assert.deepEqual(
        (await client.listResourceTemplates()).resourceTemplates.map((r) => r.uriTemplate),
        ['aibridge://disks/{diskIndex}/partitions'],
    );
});

test('DisksResource_ContainsTheRecords', async (t) => {
    const { client } = await start(t);
    const { disks } = content(await client.readResource({ uri: 'aibridge://disks' }));
    assert.deepEqual(
        disks.map((/** @type {any} */ d) => [d.diskIndex, d.totalCapacity, Object.keys(d).length]),
        [
            [0, '500107862016', fieldCount('DiskInfo')],
            [1, '9223372036854775807', fieldCount('DiskInfo')],
        ],
    );
});

test('PartitionsResource_ContainsTheRecordsOfItsDisk', async (t) => {
    const { client } = await start(t);
    const { diskIndex, partitions } = content(
        await client.readResource({ uri: 'aibridge://disks/1/partitions' }),
    );
    assert.equal(diskIndex, 1);
    assert.deepEqual(
        partitions.map((/** @type {any} */ p) => [p.driveLetter, p.rawCapacity, Object.keys(p).length]),
        [
            ['E:', '9007199254740993', fieldCount('PartitionInfo')],
            ['', '1', fieldCount('PartitionInfo')],
        ],
    );
});

test('ResourceOfAnInvalidDisk_IsRejected', async (t) => {
    const { client } = await start(t);
    await assert.rejects(
        client.readResource({ uri: 'aibridge://disks/x/partitions' }),
        /does not identify a disk/,
    );
    await assert.rejects(client.readResource({ uri: 'aibridge://moons' }));
});
