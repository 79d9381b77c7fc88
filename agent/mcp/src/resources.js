import { ResourceNotFoundError, ResourceTemplate } from '@modelcontextprotocol/server';
import { readDisks, readPartitions } from './inventory.js';

/** @import { McpServer, ServerContext } from '@modelcontextprotocol/server' */
/** @import { CallScope, Table } from './types.js' */
/** @import { Host } from './host.js' */

const mimeType = 'application/json';
// Clients list resources at start, so a hanging host must not delay them.
const listMs = 2000;
// Characters of a URI that an error repeats.
const maxUri = 100;

/**
 * Registers the inventory as resources: the disks, and the partitions of each disk.
 * @param {McpServer} server
 * @param {Host} host
 * @param {Table} table
 * @param {(context?: ServerContext) => CallScope} scopeOf
 */
export function offerResources(server, host, table, scopeOf) {
    /** @param {CallScope} scope */
    const disks = (scope) => readDisks(host, table, scope);

    server.registerResource(
        'disks',
        'aibridge://disks',
        { title: 'All disks', description: 'Every disk of the inventory, as DiskInfo records.', mimeType },
        async (uri, context) => document(uri, { disks: await disks(scopeOf(context)) }),
    );

    // Without a host the list is empty; reading a resource reports the failure.
    /** @param {ServerContext} [context] */
    const numbers = async (context) => {
        const scope = scopeOf(context);
        /** @type {import('./types.js').PlainRecord[]} */
        const found = await disks({ ...scope, deadline: scope.deadline.within(listMs) }).catch(() => []);
        return found.map((disk) => disk.diskIndex);
    };
    const template = new ResourceTemplate('aibridge://disks/{diskIndex}/partitions', {
        list: async (context) => ({
            resources: (await numbers(context)).map((index) => ({
                uri: `aibridge://disks/${index}/partitions`,
                name: `disk-${index}-partitions`,
                title: `Partitions of disk ${index}`,
                mimeType,
            })),
        }),
        complete: {
            diskIndex: async (value) =>
                (await numbers()).map(String).filter((index) => index.startsWith(value)),
        },
    });
    const about = {
        title: 'Partitions of a disk',
        description: 'Partitions and unallocated regions of a disk, as PartitionInfo records.',
        mimeType,
    };
    server.registerResource('partitions', template, about, async (uri, { diskIndex }, context) => {
        const index = Number(diskIndex);
        if (!/^\d{1,10}$/.test(String(diskIndex)) || index > 0x7fffffff)
            throw new ResourceNotFoundError(uri.href.slice(0, maxUri), 'The URI does not identify a disk.');
        const scope = scopeOf(context);
        const found = await readPartitions(host, table, scope, index);
        // The service returns an empty list for an unknown disk.
        if (found.length === 0 && !(await disks(scope)).some((d) => d.diskIndex === index))
            throw new ResourceNotFoundError(uri.href, `The inventory contains no disk ${index}.`);
        return document(uri, { diskIndex: index, partitions: found });
    });
}

/** @param {URL} uri @param {object} content */
const document = (uri, content) => ({
    contents: [{ uri: uri.href, mimeType, text: JSON.stringify(content) }],
});
