#include "host/machine/Fields.h"

namespace host {

#define FIELD(Record, name)                                                                                  \
    {                                                                                                        \
#name, &Record::name                                                                                 \
    }

const std::vector<Field<Disk>>& diskFields()
{
    static const std::vector<Field<Disk>> fields = {
        FIELD(Disk, diskInterface),
        FIELD(Disk, diskIndex),
        FIELD(Disk, size),
        FIELD(Disk, usedSize),
        FIELD(Disk, isGPT),
        FIELD(Disk, isUnInitialize),
        FIELD(Disk, isStorageSpace),
        FIELD(Disk, isDynamic),
        FIELD(Disk, readonly),
        FIELD(Disk, isOffline),
        FIELD(Disk, isBad),
        FIELD(Disk, isProtected),
        FIELD(Disk, isRemoveUsb),
        FIELD(Disk, isVHD),
        FIELD(Disk, isVMD),
        FIELD(Disk, isVirtualDisk),
        FIELD(Disk, isUSB),
        FIELD(Disk, isSSD),
        FIELD(Disk, bltState),
        FIELD(Disk, isLowSpace),
        FIELD(Disk, isOfflineBoot),
        FIELD(Disk, serialNO),
        FIELD(Disk, emptyPartitionCount),
    };
    return fields;
}

const std::vector<Field<Partition>>& partitionFields()
{
    static const std::vector<Field<Partition>> fields = {
        FIELD(Partition, unallocated),    FIELD(Partition, diskIndex),
        FIELD(Partition, partitionIndex), FIELD(Partition, size),
        FIELD(Partition, volumeSize),     FIELD(Partition, usedSize),
        FIELD(Partition, startSector),    FIELD(Partition, endSector),
        FIELD(Partition, dbrStartSector), FIELD(Partition, sectorSize),
        FIELD(Partition, clusterSize),    FIELD(Partition, isUnformattedType),
        FIELD(Partition, isBitLocker),    FIELD(Partition, readonly),
        FIELD(Partition, isHidden),       FIELD(Partition, isActive),
        FIELD(Partition, isSystem),       FIELD(Partition, isBoot),
        FIELD(Partition, defBoot),        FIELD(Partition, isPrimary),
        FIELD(Partition, isGPT),          FIELD(Partition, isStorageSpace),
        FIELD(Partition, isDynamic),      FIELD(Partition, isRemovable),
        FIELD(Partition, isVirtualDisk),  FIELD(Partition, isBad),
        FIELD(Partition, isOfflineBoot),  FIELD(Partition, isNeedSectorBySector),
        FIELD(Partition, isLowSpace),     FIELD(Partition, gptReserved),
        FIELD(Partition, gptEFI),         FIELD(Partition, gptRecovery),
        FIELD(Partition, partGUID),       FIELD(Partition, bltState),
        FIELD(Partition, driveLetter),    FIELD(Partition, label),
        FIELD(Partition, fsString),       FIELD(Partition, dynamicVolumeType),
    };
    return fields;
}

#undef FIELD

} // namespace host
