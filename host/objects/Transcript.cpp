#include "host/objects/Transcript.h"

#include "host/machine/GuidedTasks.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QThread>

#include <atomic>
#include <cerrno>
#include <cstring>

namespace host {

namespace {

int connectionNumber()
{
    static std::atomic<int> last{0};
    thread_local const int number = ++last;
    return number;
}

QString threadName()
{
    const QThread* thread = QThread::currentThread();
    if (QCoreApplication::instance() == nullptr || thread == QCoreApplication::instance()->thread())
        return QStringLiteral("application");
    // The scan's thread is a subclass of QThread; a connection's thread is not created by Qt.
    if (std::strcmp(thread->metaObject()->className(), "QThread") != 0 &&
        std::strcmp(thread->metaObject()->className(), "QAdoptedThread") != 0)
        return QStringLiteral("scan");
    return QStringLiteral("connection %1").arg(connectionNumber());
}

bool isRecord(const QVariantMap& map)
{
    return map.contains(QStringLiteral("isDiskItem")) || map.contains(QStringLiteral("partitions"));
}

QJsonValue brief(const QVariant& value)
{
    if (value.userType() == QMetaType::QVariantMap && isRecord(value.toMap()))
        return describeRecord(value.toMap()).english();
    if (value.userType() == QMetaType::QVariantList)
        return value.toList().size();
    return QJsonValue::fromVariant(value);
}

} // namespace

Transcript::~Transcript()
{
    if (file_ != nullptr)
        std::fclose(file_);
}

QString Transcript::open(const QString& path)
{
    file_ = std::fopen(path.toLocal8Bit().constData(), "wb");
    clock_.start();
    return file_ != nullptr ? QString() : QString::fromLocal8Bit(std::strerror(errno));
}

void Transcript::add(const QString& kind, QJsonObject fields)
{
    if (!isOpen())
        return;
    fields.insert(QStringLiteral("kind"), kind);
    fields.insert(QStringLiteral("thread"), threadName());
    // The lock keeps the lines in the order of their times.
    const std::lock_guard<std::mutex> lock(mutex_);
    fields.insert(QStringLiteral("time"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    fields.insert(QStringLiteral("ms"), clock_.elapsed());
    const QByteArray line = QJsonDocument(fields).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), file_);
    std::fflush(file_);
}

void Transcript::hostCall(const char* object, const char* member, const QVariantList& arguments,
                          const QVariant& result, const QString& reason)
{
    if (!isOpen())
        return;
    QJsonArray given;
    for (const QVariant& argument : arguments)
        given.append(brief(argument));
    QJsonObject fields{{QStringLiteral("object"), QLatin1String(object)},
                       {QStringLiteral("member"), QLatin1String(member)},
                       {QStringLiteral("arguments"), given}};
    if (result.isValid())
        fields.insert(QStringLiteral("result"), brief(result));
    if (!reason.isEmpty())
        fields.insert(QStringLiteral("reason"), reason);
    add(QStringLiteral("hostCall"), fields);
}

} // namespace host
