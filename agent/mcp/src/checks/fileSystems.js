const kib = 1024n;
const mib = 1024n * kib;
const gib = 1024n * mib;
const tib = 1024n * gib;
const maxClusters = 2n ** 32n - 1n;

/**
 * The limits of a file system. Sizes and clusters are in bytes. `label` is the maximum length in UTF-16 code units.
 * @typedef {object} FileSystem
 * @property {string} name
 * @property {bigint} smallest
 * @property {bigint} largestCreated existing volumes can be larger
 * @property {bigint} largest
 * @property {number} label
 * @property {bigint} smallestCluster
 * @property {bigint} largestCluster
 * @property {bigint} clusters maximum number of clusters
 * @property {string} invalidInLabel
 */

const fatLabel = '*?/\\|.,;:+=<>[]"';
const fat = {
    smallest: 4n * mib,
    largestCreated: 4n * gib,
    largest: 4n * gib,
    label: 11,
    smallestCluster: 512n,
    largestCluster: 64n * kib,
    clusters: 65524n,
    invalidInLabel: fatLabel,
};
const ntfs = {
    smallest: 8n * mib,
    largestCreated: 256n * tib,
    largest: 256n * tib,
    label: 32,
    smallestCluster: 512n,
    largestCluster: 2n * mib,
    clusters: maxClusters,
    invalidInLabel: '',
};
const ext = {
    ...ntfs,
    smallest: 4n * mib,
    largestCreated: 16n * tib,
    largest: 16n * tib,
    label: 16,
    smallestCluster: 1024n,
    largestCluster: 64n * kib,
};

/** @type {FileSystem[]} */
export const fileSystems = [
    { name: 'NTFS', ...ntfs },
    { name: 'FAT', ...fat },
    { name: 'FAT16', ...fat },
    {
        name: 'FAT32',
        ...fat,
        smallest: 33n * mib,
        largestCreated: 32n * gib,
        largest: 2n * tib,
        clusters: 2n ** 28n - 12n,
    },
    { name: 'exFAT', ...ntfs, smallest: 4n * mib, label: 11 },
    { name: 'EXT2', ...ext },
    { name: 'EXT3', ...ext },
    { name: 'EXT4', ...ext },
];

/** @param {string} name in any case @returns {FileSystem | undefined} */
export const fileSystemNamed = (name) =>
    fileSystems.find((one) => one.name.toLowerCase() === String(name).toLowerCase());

/** @param {FileSystem} kind @param {bigint} size @returns {bigint} */
export function defaultCluster(kind, size) {
    let cluster = firstCluster(kind, size);
    while (cluster < kind.largestCluster && size / cluster > kind.clusters) cluster *= 2n;
    return cluster;
}

/** @param {FileSystem} kind @param {bigint} size */
function firstCluster(kind, size) {
    if (kind.name.startsWith('FAT'))
        return size <= 8n * gib ? 4n * kib : size <= 16n * gib ? 8n * kib : size <= 32n * gib ? 16n * kib : 32n * kib;
    if (kind.name === 'exFAT') return size <= 256n * mib ? 4n * kib : size <= 32n * gib ? 32n * kib : 128n * kib;
    return 4n * kib;
}
