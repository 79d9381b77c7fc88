#include "closed/UIUtility/UIUtility.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

UIUtility* UIUtility::instance()
{
    static UIUtility utility;
    return &utility;
}

QString UIUtility::GetFireBaseConfigString(const QString& key, const QString& defaultText)
{
    QFile file(QCoreApplication::applicationDirPath() + QLatin1String("/remoteconfig.json"));
    if (!file.open(QIODevice::ReadOnly))
        return defaultText;
    const QJsonValue value = QJsonDocument::fromJson(file.readAll()).object().value(key);
    return value.isString() ? value.toString() : defaultText;
}
