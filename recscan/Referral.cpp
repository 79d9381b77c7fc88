#include "recscan/Referral.h"

#include "closed/UIUtility/UIUtility.h"
#include "recscan/FunctionTexts.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QSettings>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

#include <algorithm>

const QString kNoReferral = QStringLiteral("-1");

namespace {

const QString kKeyPrefix = QStringLiteral("ZORNativePlugin::");

// The digits directly after the last "b".
QString digitsAfterLastB(const QString& value)
{
    const int mark = value.lastIndexOf(QLatin1Char('b'));
    if (mark < 0)
        return kNoReferral;
    const auto begin = value.begin() + mark + 1;
    const auto end = std::find_if_not(begin, value.end(),
                                      [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
    return value.mid(mark + 1, static_cast<int>(end - begin));
}

// Prefix of the request's address; the number is appended without a separator.
QString serviceAddress()
{
    QSettings settings(QCoreApplication::applicationDirPath() + QLatin1String("/config.ini"),
                       QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const QString address = settings.value(QStringLiteral("main/seoUrl"), QString()).toString();
    return address.isEmpty() ? UIUtility::instance()->GetFireBaseConfigString(
                                   QStringLiteral("url_pattern_fetch_seo_page"), QString())
                             : address;
}

// Returns the received bytes even if the request failed.
QByteArray get(const QUrl& address)
{
    QNetworkAccessManager manager;
    QNetworkReply* reply = manager.get(QNetworkRequest(address));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    return reply->readAll();
}

// Empty unless the first entry is the key of one of our functions.
std::optional<QString> firstKey(const QJsonArray& functions)
{
    const QString first = functions.isEmpty() ? QString() : functions.first().toString();
    if (!first.startsWith(kKeyPrefix))
        return std::nullopt;
    return first.split(kKeyPrefix).value(1);
}

template <class Table> const FunctionText* findText(const Table& table, const QString& key)
{
    const auto found = std::find_if(table.begin(), table.end(), [&](const FunctionText& entry) {
        return key == QLatin1String(entry.key);
    });
    return found == table.end() ? nullptr : &*found;
}

Recommendation recommendReferralFun(const QString& text, const QString& key)
{
    Recommendation result;
    result.record = makePlainRecord(text);
    result.fromReferral = true;
    result.funKey = key;
    return result;
}

// The host and the agent do the work, so the recommendation has an empty function key.
Recommendation recommendAgentFun(const QString& text, const QString& key)
{
    // Secure Boot requires a GPT disk, so the conversion comes first.
    const bool secureBoot = key == QLatin1String("enable_secure_boot");
    Recommendation result;
    result.record = makePlainRecord(text);
    result.record.insert(QStringLiteral("callAgent"), 1);
    result.record.insert(QStringLiteral("fun"), secureBoot ? QStringLiteral("convert_disk_to_gpt") : key);
    result.fromReferral = true;
    return result;
}

} // namespace

QString readReferralNumber()
{
    QString key = QStringLiteral("HKEY_LOCAL_MACHINE/SOFTWARE/TARVEX/ZOR/PackParam");
    const QSettings settings(key.replace(QLatin1Char('/'), QLatin1Char('\\')), QSettings::NativeFormat);
    const QString name = QStringLiteral("xurlID");
    // childKeys preserves upper and lower case, which a look-up by name ignores on some systems.
    if (!settings.childKeys().contains(name) || settings.value(name).isNull())
        return kNoReferral;
    return digitsAfterLastB(settings.value(name).toString());
}

QString fetchSeoPage(const QString& id)
{
    QJsonParseError error;
    const QJsonDocument answer =
        QJsonDocument::fromJson(get(QUrl(serviceAddress() + id, QUrl::TolerantMode)), &error);
    if (error.error != QJsonParseError::NoError || !answer.isObject())
        return kNoReferral;
    const QJsonObject object = answer.object();
    return object.value(QStringLiteral("status")).toString() == QLatin1String("Success")
               ? object.value(QStringLiteral("url")).toString()
               : kNoReferral;
}

void loadSeoToFun(QMap<QString, QString>& urlToFun)
{
    QFile file(QStringLiteral("seo2fun.json"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonArray entries = QJsonDocument::fromJson(file.readAll()).array();
    for (const QJsonValue& entry : entries) {
        const QJsonObject object = entry.toObject();
        if (const std::optional<QString> key = firstKey(object.value(QStringLiteral("zorfun")).toArray()))
            urlToFun.insert(object.value(QStringLiteral("url")).toString(), *key);
    }
}

std::optional<Recommendation> recommendFunction(const QString& key)
{
    if (const FunctionText* own = findText(kOwnFunctions, key))
        return recommendReferralFun(QObject::tr(own->text), key);
    if (const FunctionText* agents = findText(kAgentFunctions, key))
        return recommendAgentFun(QObject::tr(agents->text), key);
    return std::nullopt;
}
