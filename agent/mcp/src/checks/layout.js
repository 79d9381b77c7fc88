// Positions on a disk, from the records of the inventory. Sizes and offsets are in bytes.

/** @import { PlainRecord } from '../types.js' */

export const mebibyte = 2n ** 20n;
/** The bytes that an MBR partition table can address. */
export const mbrLimit = 2n ** 41n;
export const mbrEntries = 4;
export const gptEntries = 128;
const gptTailSectors = 33n;

/** @param {PlainRecord} p */
export const sizeOf = (p) => BigInt(p.rawCapacity);
/** @param {PlainRecord} p */
export const startOf = (p) => BigInt(p.startingOffset);
/** @param {PlainRecord} p */
export const endOf = (p) => startOf(p) + sizeOf(p);
/** @param {PlainRecord} p */
export const sectorOf = (p) => BigInt(p.sectorSize || 512);

/** @param {bigint} bytes */
export const alignedDown = (bytes) => (bytes / mebibyte) * mebibyte;
/** @param {bigint} bytes */
export const alignedUp = (bytes) => alignedDown(bytes + mebibyte - 1n);

/** The first byte after the space that partitions can use. @param {PlainRecord} disk @param {PlainRecord[]} entries */
export function usableEnd(disk, entries) {
    const sector = entries.length > 0 ? sectorOf(entries[0]) : 512n;
    return (BigInt(disk.totalCapacity) / sector) * sector - (disk.isGpt ? gptTailSectors * sector : 0n);
}

/** The end and size of a new partition in an unallocated region. @param {PlainRecord} disk @param {PlainRecord[]} entries @param {PlainRecord} region @param {bigint} capacity */
export function newSpan(disk, entries, region, capacity) {
    const aligned = alignedUp(startOf(region));
    const begin = aligned > mebibyte ? aligned : mebibyte;
    const limit = usableEnd(disk, entries);
    const end = endOf(region) < limit ? endOf(region) : limit;
    const wanted = capacity < end - begin ? capacity : end - begin;
    const size = wanted > 0n ? (wanted / sectorOf(region)) * sectorOf(region) : 0n;
    return { end: begin + size, size };
}

/** Bytes of unallocated space directly after a partition. @param {PlainRecord[]} entries @param {PlainRecord} partition */
export function freeAfter(entries, partition) {
    const next = entries.find((p) => p.isUnallocated && startOf(p) === endOf(partition));
    return next ? sizeOf(next) : 0n;
}

/** @param {PlainRecord[]} entries @param {number} place */
export const partitionBefore = (entries, place) =>
    entries.slice(0, place).findLast((p) => !p.isUnallocated);
/** @param {PlainRecord[]} entries @param {number} place */
export const partitionAfter = (entries, place) => entries.slice(place + 1).find((p) => !p.isUnallocated);

/**
 * The kind of a new partition between two others; undefined if the partition table is full.
 * @param {PlainRecord} disk
 * @param {PlainRecord[]} entries
 * @param {PlainRecord | undefined} before
 * @param {PlainRecord | undefined} after
 * @returns {'primary' | 'logical' | undefined}
 */
export function kindBetween(disk, entries, before, after) {
    const { primaries, logicals } = entryCounts(entries);
    if (disk.isGpt) return primaries + logicals < gptEntries ? 'primary' : undefined;
    if (before?.isLogical && after?.isLogical) return 'logical';
    // All logical drives share one entry.
    if (primaries + (logicals > 0 ? 1 : 0) < mbrEntries) return 'primary';
    return before?.isLogical || after?.isLogical ? 'logical' : undefined;
}

/** @param {PlainRecord[]} entries */
export function entryCounts(entries) {
    const partitions = entries.filter((p) => !p.isUnallocated);
    const logicals = partitions.filter((p) => p.isLogical).length;
    return { primaries: partitions.length - logicals, logicals };
}

/** True if no partition is between two others. @param {PlainRecord[]} entries @param {PlainRecord} one @param {PlainRecord} other */
export function areNeighbours(entries, one, other) {
    const [low, high] = startOf(one) < startOf(other) ? [one, other] : [other, one];
    return !entries.some((p) => !p.isUnallocated && startOf(p) > startOf(low) && startOf(p) < startOf(high));
}

/**
 * True if a partition ends beyond the limit of MBR after `bytes` have moved from one partition to another.
 * @param {PlainRecord[]} entries
 * @param {number} from
 * @param {number} to
 * @param {bigint} bytes
 */
export function givingExceedsMbr(entries, from, to, bytes) {
    const shift = from < to ? -bytes : bytes;
    const last = Math.max(from, to);
    return entries.some((p, i) => {
        if (p.isUnallocated) return false;
        const moved = i > Math.min(from, to) && i <= last ? startOf(p) + shift : startOf(p);
        const change = i === to ? bytes : i === from ? -bytes : 0n;
        return moved + sizeOf(p) + change > mbrLimit;
    });
}
