#include "fuzz/Tree.h"

#include "fuzz/Bytes.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QUrl>
#include <QtCore/QUuid>
#include <QtCore/QVariantHash>
#include <QtCore/QVariantMap>

#include <cstring>

namespace tree {

namespace {

enum Tag : int {
    Invalid,
    Flag,
    Int,
    LongLong,
    Double,
    Text,
    List,
    Map,
    UInt,
    ULongLong,
    ByteArray,
    Texts,
    Hash,
    NullText,
    NullMap,
    Url,
    Time,
    Object,
    Point,
    Float,
    Character,
    Id,
    Nested,
    TagCount
};

constexpr int kDeepest = 250;
constexpr int kLiteralKey = 255;

QString text(Bytes& bytes)
{
    return QString::fromStdString(bytes.text(bytes.byte()));
}

QString key(Bytes& bytes)
{
    const int index = bytes.byte();
    return index < keys().size() ? keys().at(index) : text(bytes);
}

double number(Bytes& bytes)
{
    const std::uint64_t bits = bytes.number(8);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QVariantList list(Bytes& bytes, int depth)
{
    QVariantList values;
    for (int left = bytes.byte(); left > 0 && bytes.left() > 0; --left)
        values.append(read(bytes, depth + 1));
    return values;
}

template <class Container> Container map(Bytes& bytes, int depth)
{
    Container values;
    for (int left = bytes.byte(); left > 0 && bytes.left() > 0; --left) {
        const QString name = key(bytes);
        values.insert(name, read(bytes, depth + 1));
    }
    return values;
}

QStringList texts(Bytes& bytes)
{
    QStringList values;
    for (int left = bytes.byte() % 16; left > 0; --left)
        values.append(text(bytes));
    return values;
}

// A value in nested lists.
QVariant nested(Bytes& bytes, int depth)
{
    const int levels = std::min<int>(bytes.byte(), kDeepest - depth);
    QVariant value = read(bytes, depth + levels);
    for (int i = 0; i < levels; ++i)
        value = QVariant(QVariantList{value});
    return value;
}

QVariant readRare(int tag, Bytes& bytes)
{
    switch (tag) {
    case Texts:
        return texts(bytes);
    case NullText:
        return QVariant(QVariant::String);
    case NullMap:
        return QVariant(QVariant::Map);
    case Url:
        return QUrl(text(bytes));
    case Time:
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(bytes.number(8)), Qt::UTC);
    case Object:
        return QVariant::fromValue<QObject*>(nullptr);
    case Point:
        return QPoint(static_cast<int>(bytes.number(4)), 0);
    case Float:
        return QVariant(static_cast<float>(number(bytes)));
    case Character:
        return QChar(static_cast<ushort>(bytes.number(2)));
    case Id:
        return QVariant(QUuid());
    default:
        return QVariant();
    }
}

std::string bigEndian(quint64 value, int count)
{
    std::string bytes;
    for (int i = count - 1; i >= 0; --i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

std::string head(int tag, std::size_t count)
{
    return std::string(1, static_cast<char>(tag)) + static_cast<char>(count);
}

std::string writeText(int tag, const QString& value)
{
    const std::string bytes = value.toStdString();
    return head(tag, bytes.size()) + bytes;
}

std::string writeMap(const QVariantMap& map)
{
    std::string bytes = head(Map, static_cast<std::size_t>(map.size()));
    for (auto it = map.begin(); it != map.end(); ++it) {
        const int index = keys().indexOf(it.key());
        bytes += index >= 0 ? std::string(1, static_cast<char>(index)) : writeText(kLiteralKey, it.key());
        bytes += write(it.value());
    }
    return bytes;
}

} // namespace

const QStringList& keys()
{
    static const QStringList all = {"diskInterface",
                                    "diskIndex",
                                    "partitions",
                                    "size",
                                    "usedSize",
                                    "isUnInitialize",
                                    "isGPT",
                                    "isStorageSpace",
                                    "isDynamic",
                                    "readonly",
                                    "isOffline",
                                    "isBad",
                                    "isProtected",
                                    "isRemoveUsb",
                                    "isVHD",
                                    "isVMD",
                                    "isVirtualDisk",
                                    "isUSB",
                                    "isSSD",
                                    "bltState",
                                    "isLowSpace",
                                    "emptyPartitionCount",
                                    "serialNO",
                                    "unallocated",
                                    "partitionIndex",
                                    "volumeSize",
                                    "startSector",
                                    "endSector",
                                    "dbrStartSector",
                                    "sectorSize",
                                    "clusterSize",
                                    "isUnformattedType",
                                    "isBitLocker",
                                    "isHidden",
                                    "isActive",
                                    "isSystem",
                                    "isBoot",
                                    "isPrimary",
                                    "isRemovable",
                                    "isNeedSectorBySector",
                                    "isOfflineBoot",
                                    "gptReserved",
                                    "gptEFI",
                                    "gptRecovery",
                                    "partGUID",
                                    "driveLetter",
                                    "label",
                                    "fsString",
                                    "dynamicVolumeType",
                                    "defBoot",
                                    "isDiskItem",
                                    "cloneType",
                                    "result",
                                    "callByWin11Checker",
                                    "checkResultType"};
    return all;
}

QVariant read(Bytes& bytes, int depth)
{
    const int tag = bytes.byte() % TagCount;
    if (depth >= kDeepest)
        return QVariant();
    switch (tag) {
    case Flag:
        return QVariant(bytes.byte() != 0);
    case Int:
        return QVariant(static_cast<int>(bytes.number(4)));
    case UInt:
        return QVariant(static_cast<uint>(bytes.number(4)));
    case LongLong:
        return QVariant(static_cast<qlonglong>(bytes.number(8)));
    case ULongLong:
        return QVariant(static_cast<qulonglong>(bytes.number(8)));
    case Double:
        return QVariant(number(bytes));
    case Text:
        return text(bytes);
    case ByteArray:
        return QByteArray::fromStdString(bytes.text(bytes.byte()));
    case List:
        return list(bytes, depth);
    case Map:
        return map<QVariantMap>(bytes, depth);
    case Hash:
        return map<QVariantHash>(bytes, depth);
    case Nested:
        return nested(bytes, depth);
    default:
        return readRare(tag, bytes);
    }
}

std::string write(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return head(Flag, value.toBool() ? 1 : 0);
    case QMetaType::Int:
        return std::string(1, static_cast<char>(Int)) + bigEndian(static_cast<quint32>(value.toInt()), 4);
    case QMetaType::LongLong:
        return std::string(1, static_cast<char>(LongLong)) +
               bigEndian(static_cast<quint64>(value.toLongLong()), 8);
    case QMetaType::QString:
        return writeText(Text, value.toString());
    case QMetaType::QVariantList: {
        const QVariantList entries = value.toList();
        std::string bytes = head(List, static_cast<std::size_t>(entries.size()));
        for (const QVariant& entry : entries)
            bytes += write(entry);
        return bytes;
    }
    case QMetaType::QVariantMap:
        return writeMap(value.toMap());
    default:
        return std::string(1, static_cast<char>(Invalid));
    }
}

} // namespace tree
