#include "tests/host/MachineText.h"

#include "host/machine/MachineReader.h"

#include <gtest/gtest.h>

QByteArray machineText()
{
    return R"({
 "name": "test",
 "taskMilliseconds": 0,
 "toolbox": {"passwordReset": false},
 "smartErrors": [1],
 "disks": [
  {"diskIndex": 0, "size": 214748364800, "diskInterface": "NVMe", "isGPT": true, "isSSD": true, "partitions": [
    {"size": 104857600, "startSector": 2048, "fsString": "FAT32", "gptEFI": true, "isSystem": true, "usedSize": 1048576},
    {"size": 107374182400, "fsString": "NTFS", "driveLetter": "C", "label": "Windows", "usedSize": 53687091200, "isBoot": true, "defBoot": true},
    {"size": 53687091200, "fsString": "NTFS", "driveLetter": "D", "label": "Data", "usedSize": 10737418240},
    {"size": 10737418240, "unallocated": true}]},
  {"diskIndex": 1, "size": 3298534883328, "diskInterface": "SATA", "partitions": [
    {"size": 1073741824, "startSector": 2048, "unallocated": true},
    {"size": 1099511627776, "fsString": "NTFS", "driveLetter": "E", "usedSize": 1073741824},
    {"size": 2196875771904, "unallocated": true}]},
  {"diskIndex": 2, "size": 64023257088, "diskInterface": "USB", "isUSB": true, "isRemoveUsb": true, "partitions": [
    {"size": 63350767616, "startSector": 63, "fsString": "FAT32", "driveLetter": "F", "usedSize": 1024}]},
  {"diskIndex": 3, "size": 1099511627776, "isUnInitialize": true, "partitions": [
    {"size": 1099511627776, "unallocated": true}]},
  {"diskIndex": 4, "size": 1099511627776, "isGPT": true, "isOffline": true},
  {"diskIndex": 5, "size": 1073741824, "isGPT": true, "partitions": [{"size": 1073741824, "unallocated": true}]}
 ]})";
}

std::unique_ptr<host::Simulation> simulated(host::Machine machine)
{
    return std::make_unique<host::Simulation>(std::move(machine));
}

host::Machine testMachine()
{
    return machineOf(machineText());
}

host::Machine machineOf(const QByteArray& json)
{
    auto read = host::readMachine(json);
    if (const auto* error = std::get_if<host::MachineError>(&read)) {
        ADD_FAILURE() << error->text.toStdString();
        return host::Machine();
    }
    return std::get<host::Machine>(read);
}

QString errorOf(const QByteArray& json)
{
    const auto read = host::readMachine(json);
    const auto* error = std::get_if<host::MachineError>(&read);
    return error == nullptr ? QString() : error->text;
}

QString reasonOf(const host::Rejection& rejection)
{
    return rejection ? rejection->english() : QString();
}
