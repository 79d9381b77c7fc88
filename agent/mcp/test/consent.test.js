// A consent is valid only for the target that the question described, on the host that it was read from.
import assert from 'node:assert/strict';
import { createConnection, createServer } from 'node:net';
import { test } from 'node:test';
import { Client } from '@modelcontextprotocol/client';
import { InMemoryTransport } from '@modelcontextprotocol/server';
import { TASK_NOT_VALID } from '../src/constants.js';
import { Gateway } from '../src/gateway.js';
import { HostConnection } from '../src/connection.js';
import { readOptions } from '../src/options.js';
import { connect, text } from './support/client.js';
import { disks, FakeService, int64, partitions } from './support/fakeService.js';
import { startHost, zorcall } from './support/sandbox.js';

const yes = { action: 'accept', content: { confirm: true } };
const no = { action: 'decline' };
/** @param {string} driveLetter */
const format = (driveLetter) => ({
    name: 'FormatPartition',
    arguments: { driveLetter, fileSystem: 'NTFS', label: 'x', clusterSize: 0, quickFormat: true },
});
const wipe = { name: 'WipeDisk', arguments: { diskIndex: 1, eraseCount: 1 } };
const read = { name: 'ListAllDisks', arguments: {} };
const label = { name: 'ChangePartitionLabel', arguments: { driveLetter: 'E', newLabel: 'x' } };

/** @param {number} port @param {string} letter @returns {Promise<any>} */
const drive = async (port, letter) =>
    JSON.parse((await zorcall(port, 'GetAllPartitionInfo'))[0]).find((/** @type {any} */ p) =>
        p.driveLetter.startsWith(letter),
    );

for (const modern of [false, true]) {
    const era = modern ? 'OnTheNewProtocol' : 'OnTheOldProtocol';

    test(`LettersThatMoveWhileTheUserThinks_${era}_CauseANewQuestionInsteadOfTheWrongFormat`, async (t) => {
        const host = await startHost(t, { args: ['--speed', 'instant'] });
        /** @type {string[]} */
        const asked = [];
        const { client } = await connect(t, {
            modern,
            args: ['--port', String(host.port)],
            elicit: async ({ message }) => {
                asked.push(message);
                if (asked.length > 1) return no;
                await zorcall(host.port, 'ChangePartitionDriveLetter', 'driveLetter=H', 'newDriveLetter=Q');
                await zorcall(host.port, 'ChangePartitionDriveLetter', 'driveLetter=G', 'newDriveLetter=H');
                return yes;
            },
        });
        const answer = await client.callTool(format('H'));
        assert.ok(answer.isError, text(answer));
        assert.equal(asked.length, 2);
        assert.match(asked[0], /Drive H: label "STICK"/);
        assert.match(asked[1], /Changed since the last question:\n/);
        assert.match(asked[1], /- drive H: label was "STICK", is now "Scratch"/);
        assert.match(asked[1], /Drive H: label "Scratch"/);
        assert.equal((await drive(host.port, 'H')).label, 'Scratch');
        assert.equal((await drive(host.port, 'H')).fileSystemType, 'NTFS');
        assert.ok(!host.log.some((line) => line.includes('order FormatPartition')), host.log.join('\n'));
    });
}

/** A program that passes connections on to a host. @param {import('node:test').TestContext} t @param {number} hostPort @param {number} [port] */
async function relay(t, hostPort, port = 0) {
    const server = createServer((socket) => {
        const host = createConnection(hostPort, '127.0.0.1');
        for (const end of [socket, host]) end.on('error', () => {});
        socket.pipe(host).pipe(socket);
        socket.on('close', () => host.destroy());
        host.on('close', () => socket.destroy());
    });
    await new Promise((resolve, reject) =>
        server.once('error', reject).listen(port, '127.0.0.1', () => resolve(undefined)),
    );
    t.after(() => server.close());
    return /** @type {import('node:net').AddressInfo} */ (server.address()).port;
}

/** Two consecutive ports that lead to two hosts, so that the search examines no other program. @param {import('node:test').TestContext} t @param {number[]} ports */
async function consecutive(t, [first, second]) {
    for (let i = 0; i < 50; i++) {
        const port = await relay(t, first);
        if (await relay(t, second, port + 1).catch(() => undefined)) return port;
    }
    throw new Error('No two consecutive ports are free.');
}

/**
 * A gateway in this process, which searches for the host in a range of ports.
 * @param {import('node:test').TestContext} t
 * @param {{ from: number, count?: number, timeoutMs?: number, elicit?: (params: any) => any }} options
 */
async function searching(t, { from, count = 2, timeoutMs = 3000, elicit = () => assert.fail('asked') }) {
    const gateway = new Gateway({ ...readOptions([], {}, []), searchFrom: from, searchCount: count, timeoutMs });
    const client = new Client({ name: 'test', version: '1' }, { capabilities: { elicitation: {} } });
    client.setRequestHandler('elicitation/create', async (request) => elicit(request.params));
    const [ours, theirs] = InMemoryTransport.createLinkedPair();
    await gateway.server().connect(theirs);
    await client.connect(ours);
    t.after(async () => (await client.close(), await gateway.close()));
    return client;
}

test('FirstHostThatIsFullAfterTheAnswer_DoesNotMoveTheDeletionToTheSecondHost', async (t) => {
    const hosts = [await startHost(t), await startHost(t)];
    const from = await consecutive(
        t,
        hosts.map((host) => host.port),
    );
    const client = await searching(t, {
        from,
        elicit: async () => {
            // The gateway's own connections have to end before others can take all three slots.
            for (let i = 0; i < 3; i++) {
                const other = await HostConnection.to(hosts[0].port, 30000);
                t.after(() => other.close());
            }
            return yes;
        },
    });
    const answer = await client.callTool({ name: 'DeletePartition', arguments: { driveLetter: 'E' } });
    assert.ok(answer.isError, text(answer));
    assert.match(text(answer), /did not answer Init/);
    for (const host of hosts)
        assert.ok(!host.log.some((line) => line.includes('order')), host.log.join('\n'));
    assert.ok(await drive(hosts[1].port, 'E'));
});

/** @param {import('node:test').TestContext} t @param {number} [port] */
async function startService(t, port) {
    const service = new FakeService();
    await service.start(port);
    t.after(() => service.stop());
    return service;
}

/** The first question about a call after a change during the first, and the calls that followed. @param {import('node:test').TestContext} t @param {any} call @param {(service: FakeService) => void} change */
async function askedAgain(t, call, change) {
    const service = await startService(t);
    /** @type {string[]} */
    const asked = [];
    const { client } = await connect(t, {
        args: ['--port', String(service.port)],
        elicit: ({ message }) => {
            asked.push(message);
            if (asked.length > 1) return no;
            change(service);
            return yes;
        },
    });
    const answer = await client.callTool(call);
    assert.ok(answer.isError, text(answer));
    return { asked, service };
}

/** @param {number} index of the fake's records @param {object} fields */
const partitionWith = (index, fields) => (/** @type {FakeService} */ service) => {
    service.answer.GetAllPartitionInfo = () =>
        partitions().map((p, i) => (i === index ? Object.assign(p, fields) : p));
};
/** @param {object} fields of disk 1 */
const diskWith = (fields) => (/** @type {FakeService} */ service) => {
    service.answer.ListAllDisks = () =>
        disks().map((d) => (d.diskIndex === 1 ? Object.assign(d, fields) : d));
};
const guid = '{0b5d4f00-0000-4000-8000-00000000000a}';
const driveChanges = {
    Label: [partitionWith(2, { label: 'Other' }), 'drive E: label was "Dätà", is now "Other"'],
    Size: [
        partitionWith(2, { rawCapacity: int64(4096) }),
        'drive E: size was 9007199254740993 bytes, is now 4096 bytes',
    ],
    StartSector: [partitionWith(2, { startSector: int64(4096) }), 'drive E: start sector was 2048, is now 4096'],
    PartitionGuid: [
        partitionWith(2, { partitionGuid: guid }),
        `drive E: partition GUID was "", is now "${guid}"`,
    ],
    FileSystem: [
        partitionWith(2, { fileSystemType: 'NTFS' }),
        'drive E: file system was "exFAT", is now "NTFS"',
    ],
    DiskSerialNumber: [
        diskWith({ serialNumber: 'SN-2' }),
        'drive E: serial number was "SN-1", is now "SN-2"',
    ],
    DiskSize: [
        diskWith({ totalCapacity: int64(4096) }),
        'drive E: disk size was 9223372036854775807 bytes, is now 4096 bytes',
    ],
};
for (const [name, [change, statement]] of /** @type {Array<[string, [any, string]]>} */ (
    Object.entries(driveChanges)
))
    test(`Changed${name}_VoidsTheConsentAndIsStatedInANewQuestion`, async (t) => {
        const { asked, service } = await askedAgain(t, format('E'), change);
        assert.equal(asked.length, 2);
        assert.ok(!asked[0].includes('Changed since'));
        assert.ok(asked[1].includes(`Changed since the last question:\n- ${statement}`), asked[1]);
        assert.ok(!service.names().includes('FormatPartition'));
    });

test('DriveThatHasGone_VoidsTheConsentWithoutANewQuestion', async (t) => {
    const { asked, service } = await askedAgain(t, format('E'), partitionWith(2, { driveLetter: '' }));
    assert.equal(asked.length, 1);
    assert.ok(!service.names().includes('FormatPartition'));
});

test('ChangedDiskOrPartitionOnIt_VoidsTheConsentForTheDisk', async (t) => {
    for (const [change, statement] of /** @type {Array<[any, string]>} */ ([
        [diskWith({ serialNumber: 'SN-2' }), 'disk 1: serial number was "SN-1", is now "SN-2"'],
        [partitionWith(2, { label: 'Other' }), 'disk 1: partitions are different'],
        [partitionWith(3, { isUnallocated: false, driveLetter: 'Z:' }), 'disk 1: partitions are different'],
    ])) {
        const { asked, service } = await askedAgain(t, wipe, change);
        assert.equal(asked.length, 2);
        assert.ok(asked[1].includes(`Changed since the last question:\n- ${statement}`), asked[1]);
        assert.ok(!service.names().includes('WipeDisk'));
    }
});

test('DiskWithoutAUniqueSerialNumber_IsIdentifiedByItsIndexAndSize', async (t) => {
    for (const serialNumber of ['', 'SN-0']) {
        const service = await startService(t);
        diskWith({ serialNumber })(service);
        let questions = 0;
        const { client } = await connect(t, {
            args: ['--port', String(service.port)],
            elicit: () => {
                questions++;
                if (questions > 1) return no;
                // Disk 1 gets the number 2; the partition on it keeps its letter.
                const change = (/** @type {any[]} */ all) =>
                    all.map((r) => (r.diskIndex === 1 ? Object.assign(r, { diskIndex: 2 }) : r));
                service.answer.ListAllDisks = () =>
                    change(disks()).map((d) => (d.diskIndex === 2 ? Object.assign(d, { serialNumber }) : d));
                service.answer.GetAllPartitionInfo = () => change(partitions());
                return yes;
            },
        });
        assert.ok((await client.callTool(format('E'))).isError);
        assert.equal(questions, 2);
    }
});

test('DriveOnADiskWithAnotherNumberAndTheSameSerialNumber_KeepsTheConsent', async (t) => {
    const { service, asked } = await unchanged(t, (fake) => {
        const change = (/** @type {any[]} */ all) =>
            all.map((r) => (r.diskIndex === 1 ? Object.assign(r, { diskIndex: 2 }) : r));
        fake.answer.ListAllDisks = () => change(disks());
        fake.answer.GetAllPartitionInfo = () => change(partitions());
    });
    assert.equal(asked, 1);
    assert.ok(service.names().includes('FormatPartition'));
});

test('ChangedUsedSpace_KeepsTheConsent', async (t) => {
    const { service, asked } = await unchanged(t, partitionWith(2, { usedSize: int64(1), displayUsedSize: '1' }));
    assert.equal(asked, 1);
    assert.ok(service.names().includes('FormatPartition'));
});

/** @param {import('node:test').TestContext} t @param {(service: FakeService) => void} change */
async function unchanged(t, change) {
    const service = await startService(t);
    let asked = 0;
    const { client } = await connect(t, {
        args: ['--port', String(service.port)],
        elicit: () => (asked++, change(service), yes),
    });
    const answer = await client.callTool(format('E'));
    assert.ok(!answer.isError, text(answer));
    return { service, asked };
}

test('Target_IsReadAgainBetweenPreProcessingAndTheTool', async (t) => {
    const { service } = await unchanged(t, (fake) => (fake.calls.length = 0));
    const names = service.names().filter((name) => name !== 'Init');
    assert.deepEqual(
        names.slice(names.indexOf('PreProcessing')),
        ['PreProcessing', 'ListAllDisks', 'GetAllPartitionInfo', 'FormatPartition', 'PostProcessing'],
    );
});

test('TargetThatChangesAfterPreProcessing_EndsTheGatesCycleWithoutTheTool', async (t) => {
    const { service } = await askedAgain(t, format('E'), (fake) => {
        fake.calls.length = 0;
        const allow = fake.answer.PreProcessing;
        fake.answer.PreProcessing = () => (partitionWith(2, { label: 'Other' })(fake), allow());
    });
    assert.deepEqual(service.calls.find((call) => call.method === 'PostProcessing')?.args, [TASK_NOT_VALID]);
    assert.ok(!service.names().includes('FormatPartition'));
});

test('TargetThatChangesDuringEveryQuestion_EndsWithoutTheTool', async (t) => {
    const service = await startService(t);
    let asked = 0;
    const { client } = await connect(t, {
        args: ['--port', String(service.port)],
        elicit: () => (partitionWith(2, { label: `label ${++asked}` })(service), yes),
    });
    const answer = await client.callTool(format('E'), { timeout: 120000 });
    assert.ok(answer.isError);
    assert.match(text(answer), /changed during each of 3 questions\. FormatPartition was not called/);
    assert.equal(asked, 3);
    assert.ok(!service.names().includes('FormatPartition'));
});

for (const modern of [false, true])
    test(`HostThatIsReplacedWhileTheUserThinks_${modern ? 'OnTheNewProtocol' : 'OnTheOldProtocol'}_ReceivesNoCall`, async (t) => {
        const first = await startService(t);
        const port = first.port;
        /** @type {FakeService | undefined} */
        let second;
        const { client } = await connect(t, {
            modern,
            args: ['--port', String(port)],
            elicit: async () => (await first.stop(), (second = await startService(t, port)), yes),
        });
        const answer = await client.callTool(format('E'));
        assert.ok(answer.isError);
        assert.match(text(answer), /another disk manager than when this call began/);
        assert.deepEqual(second?.names(), ['Init']);
    });

/**
 * A client that has read from one host, which has ended; the search finds the second one next.
 * @param {import('node:test').TestContext} t
 */
async function movedToAnotherHost(t) {
    const first = await startService(t);
    const second = await startService(t);
    const from = await consecutive(t, [first.port, second.port]);
    const client = await searching(t, { from });
    assert.ok(!(await client.callTool(read)).isError);
    await first.stop();
    return { client, second, from };
}

test('ActingToolAfterAChangeOfHost_IsNotCalledUntilAnAnswerHasStatedTheChange', async (t) => {
    const { client, second, from } = await movedToAnotherHost(t);
    const answer = await client.callTool(label);
    assert.ok(answer.isError);
    const notice = `The gateway is now connected to another disk manager: on port ${from + 1}, before on port ${from}.`;
    assert.ok(text(answer).includes(notice), text(answer));
    assert.ok(!second.names().includes('ChangePartitionLabel') && !second.names().includes('PreProcessing'));
    const next = await client.callTool(label);
    assert.ok(!next.isError, text(next));
    assert.ok(!text(next).includes('another disk manager'));
    assert.ok(second.names().includes('ChangePartitionLabel'));
});

test('ReadAfterARestartOfTheHost_IsAnsweredWithANotice', async (t) => {
    const first = await startService(t);
    const { client } = await connect(t, { args: ['--port', String(first.port)] });
    assert.ok(!(await client.callTool(read)).isError);
    const port = first.port;
    await first.stop();
    await startService(t, port);
    const answer = await client.callTool(read);
    assert.ok(!answer.isError);
    assert.match(
        text(answer),
        /The gateway is now connected to another disk manager: on port \d+, where the program has been restarted or replaced\. .*consents are void/,
    );
    assert.doesNotMatch(text(await client.callTool(read)), /another disk manager/);
});

test('DestroyingToolAfterAChangeOfHost_IsNotAskedAboutUntilAnAnswerHasStatedTheChange', async (t) => {
    const { client } = await movedToAnotherHost(t);
    assert.match(text(await client.callTool(format('E'))), /Not called: the gateway is now connected to a different application\..*another disk manager/s);
});
