import assert from 'node:assert/strict';
import { test } from 'node:test';
import { connect } from './support/client.js';
import { FakeService } from './support/fakeService.js';

/** @param {import('node:test').TestContext} t */
async function start(t) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    return connect(t, { args: ['--port', String(service.port)] });
}

/** @param {any} answer */
const content = (answer) => JSON.parse(answer.contents[0].text);

test('Resources_ListTheDisksAndThePartitionsOfEach', async (t) => {
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

test('DisksResource_HoldsTheRecords', async (t) => {
    const { client } = await start(t);
    const { disks } = content(await client.readResource({ uri: 'aibridge://disks' }));
    assert.deepEqual(
        disks.map((/** @type {any} */ d) => [d.diskIndex, d.totalCapacity, Object.keys(d).length]),
        [
            [0, '500107862016', 29],
            [1, '9223372036854775807', 29],
        ],
    );
});

test('PartitionsResource_HoldsTheRecordsOfItsDisk', async (t) => {
    const { client } = await start(t);
    const { diskIndex, partitions } = content(
        await client.readResource({ uri: 'aibridge://disks/1/partitions' }),
    );
    assert.equal(diskIndex, 1);
    assert.deepEqual(
        partitions.map((/** @type {any} */ p) => [p.driveLetter, p.rawCapacity, Object.keys(p).length]),
        [
            ['E:', '9007199254740993', 46],
            ['', '1', 46],
        ],
    );
});

test('ResourceOfNoDisk_IsRefused', async (t) => {
    const { client } = await start(t);
    await assert.rejects(client.readResource({ uri: 'aibridge://disks/x/partitions' }), /names no disk/);
    await assert.rejects(client.readResource({ uri: 'aibridge://moons' }));
});
