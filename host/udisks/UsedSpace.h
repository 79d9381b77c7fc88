#pragma once

#include "host/udisks/BlockDevices.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace host {

/// The space of a file system, in bytes.
struct UsedSpace
{
    qint64 usedBytes = 0;
    int clusterBytes = 0;
};

/// A read-only program that reports the space of a file system.
struct UsedSpaceTool
{
    QString program; ///< without a folder
    QStringList arguments;
    /// The result of the output in English; empty if the output has another form.
    std::optional<UsedSpace> (*parse)(const QString& output);
    /// The program reads the device from its standard input.
    bool readsDevice = true;
};

/// The tool for a device; empty if its content is unknown, or if no tool reports its space.
std::optional<UsedSpaceTool> usedSpaceTool(const BlockDevice& device);

} // namespace host
