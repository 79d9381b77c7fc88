// The parts of the protocol that are the same for every client.

// The lists are fixed while the gateway runs, so it never announces a change of one.
export const capabilities = { tools: { listChanged: false }, resources: { listChanged: false } };

const hourMs = 3600000;

/**
 * Times for which a client may keep an answer. The inventory can change at any time; the lists of tools and templates
 * depend on the gateway's options only. The list of resources contains the disks.
 * @type {import('@modelcontextprotocol/server').ServerOptions['cacheHints']}
 */
export const cacheHints = {
    'server/discover': { ttlMs: hourMs, cacheScope: 'private' },
    'tools/list': { ttlMs: hourMs, cacheScope: 'private' },
    'resources/templates/list': { ttlMs: hourMs, cacheScope: 'private' },
    'resources/list': { ttlMs: 0, cacheScope: 'private' },
    'resources/read': { ttlMs: 0, cacheScope: 'private' },
};
