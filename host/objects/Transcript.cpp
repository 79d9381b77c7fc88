#include "host/objects/Transcript.h"

#include "host/OutputFile.h"
#include "host/machine/GuidedTasks.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QThread>

#include <atomic>
#include <cstring>
#include <utility>

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

QString Transcript::open(const QString& path, std::function<void(const QString&)> onFailure)
{
    const QString noFile = QStringLiteral("not a regular file");
    if (QFileInfo(path).isDir())
        return noFile;
    file_.setFileName(path);
    onFailure_ = std::move(onFailure);
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return file_.errorString();
    // Lines on a disk would destroy its data.
    if (isSpecialFile(path) && !file_.isSequential())
        return noFile;
    clock_.start();
    isOpen_ = true;
    return QString();
}

// Gives the error; empty on success. Called with the lock.
QString Transcript::write(const QByteArray& line)
{
    const QString error = writeAll(file_, line);
    if (error.isEmpty()) {
        complete_ += line.size();
        return error;
    }
    isOpen_ = false;
    hasFailed_ = true;
    if (!file_.isSequential())
        file_.resize(complete_);
    return error;
}

void Transcript::add(const QString& kind, QJsonObject fields)
{
    if (!isOpen())
        return;
    fields.insert(QStringLiteral("kind"), kind);
    fields.insert(QStringLiteral("thread"), threadName());
    // The lock keeps the lines in the order of their times.
    std::unique_lock<std::mutex> lock(mutex_);
    if (!isOpen())
        return;
    fields.insert(QStringLiteral("time"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    fields.insert(QStringLiteral("ms"), clock_.elapsed());
    const QByteArray line = QJsonDocument(fields).toJson(QJsonDocument::Compact) + '\n';
    const QString error = write(line);
    lock.unlock();
    if (!error.isEmpty() && onFailure_)
        onFailure_(error);
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
