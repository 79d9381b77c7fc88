#include "host/objects/DiskText.h"

#include <QtCore/QLocale>

namespace host {

namespace {

struct DiskFlag
{
    bool Disk::*member;
    const char* text;
};

struct EntryFlag
{
    bool Partition::*member;
    const char* text;
};

constexpr DiskFlag kDiskFlags[] = {{&Disk::isOffline, "Offline"},    {&Disk::isBad, "Bad"},
                                   {&Disk::readonly, "Read-only"},   {&Disk::isProtected, "Protected"},
                                   {&Disk::isDynamic, "Dynamic"},    {&Disk::isStorageSpace, "Storage space"},
                                   {&Disk::isVirtualDisk, "Virtual"}};

constexpr EntryFlag kEntryFlags[] = {{&Partition::isBoot, "Boot"},
                                     {&Partition::isSystem, "System"},
                                     {&Partition::gptEFI, "EFI"},
                                     {&Partition::gptReserved, "Reserved"},
                                     {&Partition::gptRecovery, "Recovery"},
                                     {&Partition::isActive, "Active"},
                                     {&Partition::isHidden, "Hidden"},
                                     {&Partition::readonly, "Read-only"},
                                     {&Partition::isBad, "Bad"},
                                     {&Partition::isLowSpace, "Low space"}};

// By bltState; the first says nothing.
constexpr const char* kBitLocker[] = {"", "BitLocker", "BitLocker unlocked", "BitLocker locked"};
constexpr int kBitLockerStates = 4;

QString letterText(const Partition& entry)
{
    const QString letter = letterOf(entry.driveLetter);
    return letter.isEmpty() ? QString() : letter + QLatin1Char(':');
}

QString nameWithoutLetter(const Partition& entry)
{
    if (!entry.label.isEmpty())
        return entry.label;
    if (entry.gptEFI)
        return QStringLiteral("EFI system");
    if (entry.gptReserved)
        return QStringLiteral("Reserved");
    return entry.gptRecovery ? QStringLiteral("Recovery") : QString();
}

QString fileSystemText(const Partition& entry)
{
    if (!entry.fsString.isEmpty())
        return entry.fsString;
    return entry.gptReserved ? QString() : QStringLiteral("no file system");
}

} // namespace

QString sizeText(qint64 bytes)
{
    const QLocale locale = QLocale::c();
    const QString text = locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
    return QString(text).replace(QLatin1String(".0 "), QLatin1String(" "));
}

QString diskKindText(const Disk& disk)
{
    const QString table = disk.isUnInitialize ? QStringLiteral("no table")
                          : disk.isGPT        ? QStringLiteral("GPT")
                                              : QStringLiteral("MBR");
    QStringList parts{disk.diskInterface, table};
    if (disk.isSSD)
        parts.insert(1, QStringLiteral("SSD"));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" \u00b7 "));
}

QStringList diskFlags(const Disk& disk, bool hasSmartError)
{
    QStringList flags;
    if (hasSmartError)
        flags.append(QStringLiteral("Health errors"));
    for (const DiskFlag& flag : kDiskFlags) {
        if (disk.*flag.member)
            flags.append(QLatin1String(flag.text));
    }
    if (disk.isRemoveUsb)
        flags.append(QStringLiteral("Removable"));
    return flags;
}

QString entryTitle(const Partition& entry)
{
    if (entry.unallocated)
        return QStringLiteral("Free");
    const QString title = (letterText(entry) + QLatin1Char(' ') + nameWithoutLetter(entry)).trimmed();
    return title.isEmpty() ? QStringLiteral("Partition %1").arg(entry.partitionIndex) : title;
}

QString entrySubtitle(const Partition& entry)
{
    const QString size = sizeText(entry.size);
    const QString name = entry.unallocated ? QString() : entry.fsString;
    return name.isEmpty() ? size : QStringLiteral("%1  %2").arg(name, size);
}

QStringList entryFlags(const Partition& entry)
{
    QStringList flags;
    if (entry.unallocated)
        return flags;
    for (const EntryFlag& flag : kEntryFlags) {
        if (entry.*flag.member)
            flags.append(QLatin1String(flag.text));
    }
    if (!entry.isPrimary && !entry.isGPT)
        flags.append(QStringLiteral("Logical"));
    if (entry.bltState > 0 && entry.bltState < kBitLockerStates)
        flags.append(QLatin1String(kBitLocker[entry.bltState]));
    return flags;
}

QString entryDetails(const Partition& entry)
{
    QStringList parts{QStringLiteral("Disk %1").arg(entry.diskIndex), entryTitle(entry)};
    if (!entry.unallocated)
        parts.append(fileSystemText(entry));
    parts.append(sizeText(entry.size));
    if (!entry.unallocated && !entry.fsString.isEmpty() && !entry.isLocked())
        parts.append(
            QStringLiteral("%1 used, %2 free").arg(sizeText(entry.usedSize), sizeText(entry.freeSize())));
    parts.append(QStringLiteral("from sector %1").arg(entry.startSector));
    parts += entryFlags(entry);
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  \u00b7  "));
}

} // namespace host
