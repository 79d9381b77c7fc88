#include "tests/support/Recorder.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

void Recorder::add(HostCallRecord record)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    calls_.push_back(std::move(record));
}

std::vector<HostCallRecord> Recorder::calls() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return calls_;
}

QStringList Recorder::sequence() const
{
    QStringList names;
    for (const HostCallRecord& call : calls())
        names.append(call.where());
    return names;
}

void Recorder::clear()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    calls_.clear();
}

QString typed(const QVariant& value)
{
    if (!value.isValid())
        return QStringLiteral("invalid");
    if (value.userType() == QMetaType::QVariantMap) {
        QStringList entries;
        const QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            entries.append(it.key() + QLatin1Char('=') + typed(it.value()));
        return QStringLiteral("map{") + entries.join(QLatin1Char(',')) + QLatin1Char('}');
    }
    if (value.userType() == QMetaType::QVariantList) {
        QStringList entries;
        const QVariantList list = value.toList();
        for (const QVariant& entry : list)
            entries.append(typed(entry));
        return QStringLiteral("list[") + entries.join(QLatin1Char(',')) + QLatin1Char(']');
    }
    if (value.userType() == QMetaType::QString)
        return QStringLiteral("QString:\"") + value.toString() + QLatin1Char('"');
    return QString::fromLatin1(value.typeName()) + QLatin1Char(':') + value.toString();
}
