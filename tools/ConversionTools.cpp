#include "tools/ConversionTask.h"
#include "tools/Reply.h"
#include "tools/ZorHandle.h"

void CZorHandle::ConvertDiskToGpt(std::string& answer, int32_t diskIndex)
{
    answer = reply(queueDiskConversion(bridge, ConvertToGpt, diskIndex));
}

void CZorHandle::ConvertDiskToMbr(std::string& answer, int32_t diskIndex)
{
    answer = reply(queueDiskConversion(bridge, ConvertToMbr, diskIndex));
}

void CZorHandle::ConvertDiskToDynamic(std::string& answer, int32_t diskIndex)
{
    answer = reply(queueDiskConversion(bridge, ConvertToDynamic, diskIndex));
}

void CZorHandle::ConvertDiskToBasic(std::string& answer, int32_t diskIndex)
{
    answer = reply(queueDiskConversion(bridge, ConvertToBasic, diskIndex));
}

void CZorHandle::ConvertPartitionToFat(std::string& answer, const std::string& driveLetter)
{
    answer = reply(queuePartitionConversion(bridge, ConvertToFat, QString::fromStdString(driveLetter)));
}

void CZorHandle::ConvertPartitionToExfat(std::string& answer, const std::string& driveLetter)
{
    answer = reply(queuePartitionConversion(bridge, ConvertToExfat, QString::fromStdString(driveLetter)));
}

void CZorHandle::ConvertPartitionToNtfs(std::string& answer, const std::string& driveLetter)
{
    answer = reply(queuePartitionConversion(bridge, ConvertToNtfs, QString::fromStdString(driveLetter)));
}
