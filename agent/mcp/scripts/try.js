// A small example client: starts the gateway, lists its tools, reads, checks a call, changes data and has a call
// rejected.
//
//     AGENT_NATIVE_PORT=N node scripts/try.js
import { fileURLToPath } from 'node:url';
import { Client } from '@modelcontextprotocol/client';
import { getDefaultEnvironment, StdioClientTransport } from '@modelcontextprotocol/client/stdio';

const program = fileURLToPath(new URL('../bin/aibridge-mcp.js', import.meta.url));
const env = {
    ...getDefaultEnvironment(),
    ...(process.env.AGENT_NATIVE_PORT && { AGENT_NATIVE_PORT: process.env.AGENT_NATIVE_PORT }),
};
const client = new Client({ name: 'try', version: '1' }, { capabilities: { elicitation: {} } });
let agree = false;
client.setRequestHandler('elicitation/create', async (request) => {
    console.log(`\nquestion> ${request.params.message}\nuser>  ${agree ? 'yes' : 'no'}`);
    return agree ? { action: 'accept', content: { confirm: true } } : { action: 'decline' };
});

/** @param {string} title */
const chapter = (title) => console.log(`\n--- ${title}`);

/** @param {string} name @param {Record<string, any>} [args] @returns {Promise<any>} */
async function call(name, args = {}) {
    console.log(`\nmodel> ${name} ${JSON.stringify(args)}`);
    const result = await client.callTool(
        { name, arguments: args },
        { onprogress: ({ message }) => console.log(`       (${message})`) },
    );
    for (const part of result.content)
        if (part.type === 'text') console.log(part.text.replace(/^/gm, '       '));
    return result.structuredContent;
}

/** The first GPT disk with an unallocated region of at least size bytes, otherwise 0. @param {any[]} disks @param {any[]} partitions @param {bigint} size */
const diskWithRegion = (disks, partitions, size) =>
    partitions.find((p) => p.isUnallocated && disks[p.diskIndex]?.isGpt && BigInt(p.rawCapacity) >= size)
        ?.diskIndex ?? 0;

await client.connect(
    new StdioClientTransport({ command: process.execPath, args: [program], env, stderr: 'ignore' }),
);
chapter('The offered tools');
console.log(
    `${client.getServerVersion()?.title}: ${(await client.listTools()).tools.map((tool) => tool.name).join(', ')}`,
);

chapter('The inventory');
const { disks } = await call('ListAllDisks');
const { partitions } = await call('GetAllPartitionInfo');

chapter('Create a partition. PlanCall checks the call; "Task Queued" does not mean done: WaitForChange shows the effect.');
const diskIndex = diskWithRegion(disks, partitions, 10737418240n);
const create = {
    diskIndex,
    capacity: '10737418240',
    fileSystem: 'NTFS',
    label: 'Agent',
    unallocatedIndex: -1,
};
await call('PlanCall', { tool: 'CreatePartition', arguments: create });
await call('CreatePartition', create);
await call('WaitForChange');

chapter('Format a partition: the user declines first, then agrees.');
const letter =
    partitions
        .filter((/** @type {any} */ p) => /^[D-Z]/.test(p.driveLetter ?? ''))
        .at(-1)
        ?.driveLetter.slice(0, 1) ?? 'D';
const format = { driveLetter: letter, fileSystem: 'NTFS', label: 'Fresh', clusterSize: 0, quickFormat: true };
await call('FormatPartition', format);
agree = true;
await call('FormatPartition', format);
await call('WaitForChange');

chapter('A drive that does not exist: rejected, with the data of the inventory.');
// Q, or the last one, because a new partition receives the first.
const used = new Set(partitions.map((/** @type {any} */ p) => p.driveLetter?.slice(0, 1)));
const missing = [...'QZYXWVUTSRPONMLKJIHGFEDCBA'].find((candidate) => !used.has(candidate)) ?? '?';
await call('ChangePartitionLabel', { driveLetter: missing, newLabel: 'x' });
await client.close();
chapter('End of the conversation');
