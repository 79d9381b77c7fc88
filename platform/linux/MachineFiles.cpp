#include "platform/linux/MachineFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QSysInfo>

#include <algorithm>

namespace {

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Sum of the memory blocks; empty on a machine without memory hotplug.
std::optional<quint64> readMemoryBlocksKib(const QString& root)
{
    const QString folder = root + QLatin1String("/sys/devices/system/memory");
    bool isNumber = false;
    const quint64 blockBytes =
        readFile(folder + QLatin1String("/block_size_bytes")).trimmed().toULongLong(&isNumber, 16);
    const QStringList blocks = QDir(folder).entryList({QStringLiteral("memory[0-9]*")}, QDir::Dirs);
    if (!isNumber || blockBytes < 1024 || blocks.isEmpty())
        return std::nullopt;
    return blockBytes / 1024 * static_cast<quint64>(blocks.size());
}

std::optional<quint64> readMemTotalKib(const QString& root)
{
    const QList<QByteArray> lines = readFile(root + QLatin1String("/proc/meminfo")).split('\n');
    for (const QByteArray& line : lines) {
        if (!line.startsWith("MemTotal:"))
            continue;
        bool isNumber = false;
        const quint64 kib = line.mid(9).trimmed().split(' ').first().toULongLong(&isNumber);
        return isNumber ? std::optional<quint64>(kib) : std::nullopt;
    }
    return std::nullopt;
}

using Fields = QMap<QString, QString>;

// The "key : value" blocks of /proc/cpuinfo, one per logical processor.
std::vector<Fields> readCpuBlocks(const QString& root)
{
    std::vector<Fields> blocks;
    const QString text = QString::fromUtf8(readFile(root + QLatin1String("/proc/cpuinfo")));
    const QStringList parts = text.split(QStringLiteral("\n\n"), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        Fields fields;
        const QStringList lines = part.split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            const int colon = line.indexOf(QLatin1Char(':'));
            if (colon > 0)
                fields.insert(line.left(colon).trimmed(), line.mid(colon + 1).trimmed());
        }
        if (fields.contains(QStringLiteral("processor")))
            blocks.push_back(fields);
    }
    return blocks;
}

int addressWidth(const Fields& fields)
{
    const QStringList flags = fields.value(QStringLiteral("flags")).split(QLatin1Char(' '));
    const bool otherThanX86 = !fields.contains(QStringLiteral("flags"));
    return flags.contains(QStringLiteral("lm")) ||
                   (otherThanX86 && runningSystemWidth().startsWith(QLatin1String("64")))
               ? 64
               : 32;
}

QVariantMap processorRow(const Fields& first, int logicalCount)
{
    const int cores = first.value(QStringLiteral("cpu cores")).toInt();
    return {{QStringLiteral("Name"), first.value(QStringLiteral("model name"))},
            {QStringLiteral("AddressWidth"), addressWidth(first)},
            {QStringLiteral("NumberOfCores"), cores > 0 ? cores : logicalCount},
            {QStringLiteral("NumberOfLogicalProcessors"), logicalCount},
            {QStringLiteral("MaxClockSpeed"),
             static_cast<int>(std::clamp(first.value(QStringLiteral("cpu MHz")).toDouble(), 0.0, 1e6))}};
}

} // namespace

bool startedByUefi(const QString& root)
{
    return QFileInfo::exists(root + QLatin1String("/sys/firmware/efi"));
}

std::optional<quint64> readInstalledMemoryKib(const QString& root)
{
    const std::optional<quint64> blocks = readMemoryBlocksKib(root);
    return blocks ? blocks : readMemTotalKib(root);
}

std::vector<QVariantMap> readProcessorRows(const QString& root)
{
    QMap<QString, std::vector<Fields>> sockets;
    for (const Fields& fields : readCpuBlocks(root))
        sockets[fields.value(QStringLiteral("physical id"))].push_back(fields);
    std::vector<QVariantMap> rows;
    for (const std::vector<Fields>& socket : qAsConst(sockets))
        rows.push_back(processorRow(socket.front(), static_cast<int>(socket.size())));
    return rows;
}

std::vector<QVariantMap> readTpmRows(const QString& root)
{
    const QString tpm = root + QLatin1String("/sys/class/tpm/tpm0");
    if (!QFileInfo::exists(tpm))
        return {};
    const bool second = readFile(tpm + QLatin1String("/tpm_version_major")).trimmed() == "2";
    // The kernel lists a TPM only if it is activated.
    return {{{QStringLiteral("IsActivated_InitialValue"), true},
             {QStringLiteral("IsEnabled_InitialValue"), true},
             {QStringLiteral("SpecVersion"), second ? QStringLiteral("2.0") : QStringLiteral("1.2")}}};
}

QString runningSystemWidth()
{
    return QSysInfo::currentCpuArchitecture().endsWith(QLatin1String("64")) ? QStringLiteral("64-bit")
                                                                            : QStringLiteral("32-bit");
}
