/** @import { PlainRecord } from './types.js' */

/** The same item in two snapshots; undefined where it does not exist. @typedef {[PlainRecord, PlainRecord] | [PlainRecord, undefined] | [undefined, PlainRecord]} Pair */
/** @typedef {(record: PlainRecord) => string} Key the empty string matches nothing */

/**
 * The disks by serial number; without one, by number.
 * @param {PlainRecord[]} before
 * @param {PlainRecord[]} after
 */
export const matchDisks = (before, after) =>
    matchBy(before, after, [
        // Disks that share a serial number are paired if nothing has moved.
        (disk) => JSON.stringify([disk.serialNumber, disk.diskIndex, disk.totalCapacity]),
        (disk) => disk.serialNumber,
        (disk) => (disk.serialNumber ? '' : String(disk.diskIndex)),
    ]);

/**
 * The partitions by GUID, then by the properties that an order can leave unchanged, on the same disk.
 * @param {PlainRecord[]} before
 * @param {PlainRecord[]} after
 * @param {Pair[]} disks
 */
export function matchPartitions(before, after, disks) {
    const place = diskOf(before, after, disks);
    const isPartition = (/** @type {PlainRecord} */ p) => !p.isUnallocated;
    /** @param {(p: PlainRecord) => unknown[]} values @returns {Key} */
    const onDisk = (values) => (p) => JSON.stringify([place.get(p), ...values(p)]);
    const byLetter = onDisk((p) => [letterOf(p)]);
    return matchBy(before.filter(isPartition), after.filter(isPartition), [
        (p) => p.partitionGuid,
        // A letter can move to another partition, so it is not compared first.
        onDisk((p) => [p.startSector, p.rawCapacity, p.label]),
        (p) => (letterOf(p) ? byLetter(p) : ''),
        onDisk((p) => [p.startSector]),
        onDisk((p) => [p.rawCapacity, p.label, p.fileSystemType]),
    ]);
}

/**
 * The unallocated regions: those with a common start or end on the same disk, or the only ones of a disk.
 * @param {PlainRecord[]} before
 * @param {PlainRecord[]} after
 * @param {Pair[]} disks
 */
export function matchRegions(before, after, disks) {
    const place = diskOf(before, after, disks);
    const isRegion = (/** @type {PlainRecord} */ p) => p.isUnallocated === true;
    return matchBy(before.filter(isRegion), after.filter(isRegion), [
        (p) => `${place.get(p)} ${p.startSector}`,
        (p) => `${place.get(p)} ${p.endSector}`,
        (p) => `${place.get(p)}`,
    ]);
}

/** The drive letter in upper case, empty for a partition without one. @param {PlainRecord} p @returns {string} */
export const letterOf = (p) => (/^[A-Za-z]/.test(p.driveLetter) ? p.driveLetter.slice(0, 1).toUpperCase() : '');

/**
 * Pairs the records with equal keys, one key function after another. A key that two records of one side share pairs
 * neither.
 * @param {PlainRecord[]} before
 * @param {PlainRecord[]} after
 * @param {Key[]} keys
 * @returns {Pair[]} in the order of after; then those that are gone
 */
function matchBy(before, after, keys) {
    /** @type {Map<PlainRecord, PlainRecord>} */
    const earlier = new Map();
    const left = new Set(before);
    for (const key of keys) {
        const candidates = byKey([...left], key);
        for (const [name, now] of byKey(
            after.filter((record) => !earlier.has(record)),
            key,
        )) {
            const was = candidates.get(name);
            if (!was || !now) continue;
            earlier.set(now, was);
            left.delete(was);
        }
    }
    return [
        ...after.map((now) => /** @type {Pair} */ ([earlier.get(now), now])),
        ...[...left].map((was) => /** @type {Pair} */ ([was, undefined])),
    ];
}

/** The records by key; undefined for a key of several records. @param {PlainRecord[]} records @param {Key} key */
function byKey(records, key) {
    /** @type {Map<string, PlainRecord | undefined>} */
    const found = new Map();
    for (const record of records) {
        const name = key(record);
        if (name) found.set(name, found.has(name) ? undefined : record);
    }
    return found;
}

/**
 * The disk of each entry, as the position of its pair: a disk can have another number in the second snapshot.
 * @param {PlainRecord[]} before
 * @param {PlainRecord[]} after
 * @param {Pair[]} disks
 */
function diskOf(before, after, disks) {
    const earlier = new Map(disks.map(([was], i) => [was?.diskIndex, i]));
    const later = new Map(disks.map(([, now], i) => [now?.diskIndex, i]));
    return new Map([
        ...before.map((p) => /** @type {const} */ ([p, earlier.get(p.diskIndex)])),
        ...after.map((p) => /** @type {const} */ ([p, later.get(p.diskIndex)])),
    ]);
}
