#include "host/udisks/PartitionTypes.h"

#include <QtCore/QMap>

namespace host {

namespace {

// Ordinary types and the types that hide them: FAT12, FAT16, NTFS and exFAT, FAT32.
const QMap<QString, QString>& hiddenTypes()
{
    static const QMap<QString, QString> types = {
        {QStringLiteral("0x01"), QStringLiteral("0x11")}, {QStringLiteral("0x04"), QStringLiteral("0x14")},
        {QStringLiteral("0x06"), QStringLiteral("0x16")}, {QStringLiteral("0x07"), QStringLiteral("0x17")},
        {QStringLiteral("0x0b"), QStringLiteral("0x1b")}, {QStringLiteral("0x0c"), QStringLiteral("0x1c")},
        {QStringLiteral("0x0e"), QStringLiteral("0x1e")}};
    return types;
}

} // namespace

bool isHiddenType(const QString& type)
{
    // Recovery partitions have a hidden type without an ordinary one.
    return type == QLatin1String("0x27") || !hiddenTypes().key(type).isEmpty();
}

QString hiddenType(const QString& type)
{
    return hiddenTypes().value(type);
}

} // namespace host
