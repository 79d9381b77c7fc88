#include "host/objects/DiskText.h"

#include "host/machine/Text.h"

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

constexpr DiskFlag kDiskFlags[] = {{&Disk::isOffline, QT_TRANSLATE_NOOP("Sandbox", "Offline")},
                                   {&Disk::isBad, QT_TRANSLATE_NOOP("Sandbox", "Bad")},
                                   {&Disk::readonly, QT_TRANSLATE_NOOP("Sandbox", "Read-only")},
                                   {&Disk::isProtected, QT_TRANSLATE_NOOP("Sandbox", "Protected")},
                                   {&Disk::isDynamic, QT_TRANSLATE_NOOP("Sandbox", "Dynamic")},
                                   {&Disk::isStorageSpace, QT_TRANSLATE_NOOP("Sandbox", "Storage space")},
                                   {&Disk::isVirtualDisk, QT_TRANSLATE_NOOP("Sandbox", "Virtual")}};

constexpr EntryFlag kEntryFlags[] = {{&Partition::isBoot, QT_TRANSLATE_NOOP("Sandbox", "Boot")},
                                     {&Partition::isSystem, QT_TRANSLATE_NOOP("Sandbox", "System")},
                                     {&Partition::gptEFI, QT_TRANSLATE_NOOP("Sandbox", "EFI")},
                                     {&Partition::gptReserved, QT_TRANSLATE_NOOP("Sandbox", "Reserved")},
                                     {&Partition::gptRecovery, QT_TRANSLATE_NOOP("Sandbox", "Recovery")},
                                     {&Partition::isActive, QT_TRANSLATE_NOOP("Sandbox", "Active")},
                                     {&Partition::isHidden, QT_TRANSLATE_NOOP("Sandbox", "Hidden")},
                                     {&Partition::readonly, QT_TRANSLATE_NOOP("Sandbox", "Read-only")},
                                     {&Partition::isBad, QT_TRANSLATE_NOOP("Sandbox", "Bad")},
                                     {&Partition::isLowSpace, QT_TRANSLATE_NOOP("Sandbox", "Low space")}};

// Indexed by bltState; state 0 has no flag.
constexpr const char* kBitLocker[] = {"", QT_TRANSLATE_NOOP("Sandbox", "BitLocker"),
                                      QT_TRANSLATE_NOOP("Sandbox", "BitLocker unlocked"),
                                      QT_TRANSLATE_NOOP("Sandbox", "BitLocker locked")};
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
        return Text(QT_TRANSLATE_NOOP("Sandbox", "EFI system")).translated();
    if (entry.gptReserved)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "Reserved")).translated();
    return entry.gptRecovery ? Text(QT_TRANSLATE_NOOP("Sandbox", "Recovery")).translated() : QString();
}

QString fileSystemText(const Partition& entry)
{
    if (!entry.fsString.isEmpty())
        return entry.fsString;
    return entry.gptReserved ? QString() : Text(QT_TRANSLATE_NOOP("Sandbox", "no file system")).translated();
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
    const QString table = disk.isUnInitialize ? Text(QT_TRANSLATE_NOOP("Sandbox", "no table")).translated()
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
        flags.append(Text(QT_TRANSLATE_NOOP("Sandbox", "Health errors")).translated());
    for (const DiskFlag& flag : kDiskFlags) {
        if (disk.*flag.member)
            flags.append(Text(flag.text).translated());
    }
    if (disk.isRemoveUsb)
        flags.append(Text(QT_TRANSLATE_NOOP("Sandbox", "Removable")).translated());
    return flags;
}

QString searchText(const Disk& disk)
{
    QStringList parts{
        Text(QT_TRANSLATE_NOOP("Sandbox", "Disk %1"), {QString::number(disk.diskIndex)}).translated(),
        diskKindText(disk), disk.serialNO};
    for (const Partition& entry : disk.partitions) {
        if (!entry.unallocated)
            parts << entryTitle(entry) << entry.fsString;
    }
    return parts.join(QLatin1Char('\n'));
}

QString entryTitle(const Partition& entry)
{
    if (entry.unallocated)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "Free")).translated();
    const QString title = (letterText(entry) + QLatin1Char(' ') + nameWithoutLetter(entry)).trimmed();
    return title.isEmpty()
               ? Text(QT_TRANSLATE_NOOP("Sandbox", "Partition %1"), {QString::number(entry.partitionIndex)})
                     .translated()
               : title;
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
            flags.append(Text(flag.text).translated());
    }
    if (!entry.isPrimary && !entry.isGPT)
        flags.append(Text(QT_TRANSLATE_NOOP("Sandbox", "Logical")).translated());
    if (entry.bltState > 0 && entry.bltState < kBitLockerStates)
        flags.append(Text(kBitLocker[entry.bltState]).translated());
    return flags;
}

QString entryDetails(const Partition& entry)
{
    QStringList parts{
        Text(QT_TRANSLATE_NOOP("Sandbox", "Disk %1"), {QString::number(entry.diskIndex)}).translated(),
        entryTitle(entry)};
    if (!entry.unallocated)
        parts.append(fileSystemText(entry));
    parts.append(sizeText(entry.size));
    if (!entry.unallocated && !entry.fsString.isEmpty() && !entry.isLocked())
        parts.append(Text(QT_TRANSLATE_NOOP("Sandbox", "%1 used, %2 free"),
                          {sizeText(entry.usedSize), sizeText(entry.freeSize())})
                         .translated());
    parts.append(Text(QT_TRANSLATE_NOOP("Sandbox", "from sector %1"), {QString::number(entry.startSector)})
                     .translated());
    parts += entryFlags(entry);
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  \u00b7  "));
}

QStringList lossLines(const DataLoss& loss)
{
    QStringList lines;
    for (const Partition& partition : loss.partitions)
        lines.append(entryDetails(partition));
    return lines;
}

} // namespace host
