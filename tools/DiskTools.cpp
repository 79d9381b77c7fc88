// Tools of the partition page that take a disk, and tools that open one of its pages for a drive.
#include "tools/ZorHandle.h"

#include "platform/Platform.h"

void CZorHandle::OpenDiskLayoutEditor(std::string& answer, int32_t diskIndex)
{
    runDiskTask(answer, FunOpenDiskLayoutEditor, diskIndex);
}

void CZorHandle::DeleteAllPartitions(std::string& answer, int32_t diskIndex)
{
    runDiskTask(answer, FunDeleteAllPartitions, diskIndex);
}

void CZorHandle::InitializeDiskToGpt(std::string& answer, int32_t diskIndex)
{
    runDiskTask(answer, FunInitializeDiskToGpt, diskIndex);
}

void CZorHandle::InitializeDiskToMbr(std::string& answer, int32_t diskIndex)
{
    runDiskTask(answer, FunInitializeDiskToMbr, diskIndex);
}

void CZorHandle::WipeDisk(std::string& answer, int32_t diskIndex, int32_t eraseCount)
{
    ResetParams();
    setParam(QStringLiteral("diskIndex"), QVariant(diskIndex));
    setParam(QStringLiteral("eraseCount"), QVariant(eraseCount));
    RunTask(answer, FunWipeDisk);
}

void CZorHandle::AutoCreatePartitions(std::string& answer, int32_t diskIndex, int32_t partitionCount,
                                      const std::string& GptOrMbr)
{
    ResetParams();
    setParam(QStringLiteral("diskIndex"), QVariant(diskIndex));
    setParam(QStringLiteral("partitionCount"), QVariant(partitionCount));
    setParam(QStringLiteral("GptOrMbr"), GptOrMbr);
    RunTask(answer, FunAutoCreatePartitions);
}

void CZorHandle::DiskBringOnline(std::string& answer, int32_t diskIndex)
{
    runDiskTask(answer, FunDiskBringOnline, diskIndex);
}

void CZorHandle::LowLevelFormat(std::string& answer, int32_t diskIndex)
{
    runDiskTask(answer, FunLowLevelFormat, diskIndex);
}

void CZorHandle::SmartSpaceAdjustment(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunSmartSpaceAdjustment, driveLetter);
}

void CZorHandle::OpenPartitionLayoutEditor(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunOpenPartitionLayoutEditor, driveLetter);
}

void CZorHandle::EjectUsb(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunEjectUsb, driveLetter);
}

void CZorHandle::MigrateSystemDriveData(std::string& answer)
{
    // Sends the whole path where other tools send a letter; its first byte passes the letter check.
    runLetterTask(answer, FunMigrateSystemDriveData,
                  QString::fromLocal8Bit(upperSystemDirectory()).toStdString());
}
