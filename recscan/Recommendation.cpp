#include "recscan/Recommendation.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>

QVariantMap makeRecord(const QString& message, const QStringList& buttons)
{
    QVariantList labels;
    for (const QString& button : buttons)
        labels.append(button);
    return {{QStringLiteral("msg"), message},
            {QStringLiteral("buttons"), labels},
            {QStringLiteral("default"), 0},
            {QStringLiteral("time"), static_cast<uint>(QDateTime::currentSecsSinceEpoch())}};
}

QVariantMap makePlainRecord(const QString& message)
{
    return makeRecord(message, {QObject::tr("Accept"), QObject::tr("Cancel")});
}
