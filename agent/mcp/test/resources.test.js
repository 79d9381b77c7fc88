import assert from 'node:assert/strict';
import { test } from 'node:test';
import { loadTable } from '../src/table.js';
import { connect } from './support/client.js';
import { FakeService } from './support/fakeService.js';

/** @param {import('node:test').TestContext} t @param {boolean} [modern] */
async function start(t, modern = false) {
    const service = new FakeService();
    await service.start();
    t.after(() => service.stop());
    return { service, ...(await connect(t, { modern, args: ['--port', String(service.port)] })) };
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

/** @param {Awaited<ReturnType<typeof start>>} connection */
async function checkMissingResources({ client }) {
    const rejection = (/** @type {string} */ uri) =>
        client.readResource({ uri }).then(
            () => assert.fail(uri),
            (error) => error,
        );
    for (const [uri, message] of /** @type {Array<[string, RegExp]>} */ ([
        ['aibridge://disks/x/partitions', /does not identify a disk/],
        ['aibridge://disks/-1/partitions', /does not identify a disk/],
        ['aibridge://disks/2147483648/partitions', /does not identify a disk/],
        ['aibridge://disks/7/partitions', /The inventory contains no disk 7/],
        ['aibridge://moons', /moons/],
    ])) {
        const error = await rejection(uri);
        // INVALID_PARAMS, the code of the newest revision for a missing resource.
        assert.equal(error.code, -32602, `${uri}: ${error.code} ${error.message}`);
        assert.match(error.message, message);
    }
    assert.ok((await rejection(`aibridge://disks/${'9'.repeat(1000000)}/partitions`)).message.length < 1000);
}

for (const modern of [false, true])
    test(`MissingOrMalformedResource_ReturnsTheProtocolsError${modern ? '' : 'OfTheOlderRevision'}`, async (t) => {
        await checkMissingResources(await start(t, modern));
    });

test('DiskWithoutPartitions_IsAnEmptyResource', async (t) => {
    const { service, client } = await start(t);
    service.answer.ListPartitionsOnDisk = () => [];
    assert.deepEqual(content(await client.readResource({ uri: 'aibridge://disks/1/partitions' })), {
        diskIndex: 1,
        partitions: [],
    });
});
