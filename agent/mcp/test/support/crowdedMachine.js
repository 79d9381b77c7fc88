// A machine with the obstacles that the included machines lack: full and mixed MBR tables, locked, protected, faulty,
// dynamic and unformatted drives.

const mib = 2 ** 20;
const gib = 1024 * mib;

/** @param {string} driveLetter @param {number} size @param {object} [more] */
const drive = (driveLetter, size, more = {}) => ({
    driveLetter,
    size,
    usedSize: size / 4,
    fsString: 'NTFS',
    label: `Drive ${driveLetter}`,
    clusterSize: 8,
    ...more,
});
/** @param {number} size */
const free = (size) => ({ unallocated: true, size });
/** @param {any[]} partitions of a disk that starts with 1 MiB of other data */
const placed = (partitions) => [{ ...partitions[0], startSector: 2048 }, ...partitions.slice(1)];

/** Replaces the disks of a machine file. @param {any} machine */
export function crowd(machine) {
    machine.disks = [
        {
            diskIndex: 0,
            size: 500 * gib,
            diskInterface: 'NVMe',
            isGPT: true,
            partitions: placed([
                drive('', 512 * mib, { fsString: 'FAT32', gptEFI: true, isSystem: true }),
                drive('C', 200 * gib, { isBoot: true, defBoot: true }),
                drive('D', 100 * gib, { bltState: 3 }),
                drive('E', 100 * gib, { usedSize: 90 * gib }),
                free(99 * gib),
            ]),
        },
        {
            diskIndex: 1,
            size: 200 * gib,
            diskInterface: 'SATA',
            partitions: placed([
                drive('F', 40 * gib, { isActive: true }),
                drive('G', 40 * gib),
                drive('H', 20 * gib, { isPrimary: false, fsString: 'FAT32' }),
                drive('I', 20 * gib, { isPrimary: false }),
                drive('J', 20 * gib, { isPrimary: false }),
                free(10 * gib),
                drive('K', 40 * gib, { readonly: true }),
            ]),
        },
        {
            diskIndex: 2,
            size: 120 * gib,
            diskInterface: 'SATA',
            partitions: placed([
                drive('L', 20 * gib),
                free(5 * gib),
                drive('M', 20 * gib, { fsString: 'RAW', usedSize: 0 }),
                drive('N', 20 * gib, { isHidden: true }),
                drive('O', 20 * gib, { fsString: 'EXT4' }),
                free(20 * gib),
            ]),
        },
        {
            diskIndex: 3,
            size: 120 * gib,
            diskInterface: 'SATA',
            isGPT: true,
            isDynamic: true,
            partitions: placed([drive('P', 60 * gib, { dynamicVolumeType: 3 }), free(59 * gib)]),
        },
        {
            diskIndex: 4,
            size: 64 * gib,
            diskInterface: 'USB',
            isUSB: true,
            isProtected: true,
            partitions: placed([drive('Q', 60 * gib, { fsString: 'exFAT' })]),
        },
        {
            diskIndex: 5,
            size: 80 * gib,
            diskInterface: 'SATA',
            isBad: true,
            isGPT: true,
            partitions: placed([drive('R', 60 * gib)]),
        },
        {
            diskIndex: 6,
            size: 30 * gib,
            diskInterface: 'USB',
            isUSB: true,
            partitions: placed([drive('S', 20 * gib, { fsString: 'FAT32', usedSize: gib })]),
        },
        { diskIndex: 7, size: 3000 * gib, diskInterface: 'SATA', isUnInitialize: true, partitions: [free(3000 * gib)] },
        { diskIndex: 8, size: 40 * gib, diskInterface: 'SATA', isOffline: true, isVirtualDisk: true, partitions: [] },
    ];
}
