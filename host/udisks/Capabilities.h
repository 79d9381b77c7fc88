#pragma once

#include "host/machine/Rejection.h"
#include "host/udisks/DiskService.h"

#include <QtCore/QMap>

#include <functional>

namespace host {

/// The file systems that the disk service can create, resize and check with the tools of this computer. Types
/// are those of the service, such as "vfat".
class Capabilities
{
public:
    /// Asks the service and calls @p done. A missing reply means that the type is not supported.
    static void read(DiskService& service, const std::function<void(const Capabilities&)>& done);

    Rejection formatRejection(const QString& type) const;
    Rejection resizeRejection(const QString& type) const;
    Rejection checkRejection(const QString& type) const;

private:
    QMap<QString, QString> formatTools_; ///< the missing tool; empty if the type can be created
    QMap<QString, QString> resizeTools_;
    QMap<QString, QString> checkTools_;
};

} // namespace host
