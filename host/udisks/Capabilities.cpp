#include "host/udisks/Capabilities.h"

#include <QtDBus/QDBusArgument>

#include <memory>

namespace host {

namespace {

const QString kManager = QStringLiteral("/org/freedesktop/UDisks2/Manager");

// The reply is (available, [modes,] missing tool). An error means that the type is not supported.
void readReply(const QDBusMessage& reply, const QString& type, QMap<QString, QString>& tools)
{
    if (!errorOf(reply).isEmpty() || reply.arguments().isEmpty())
        return;
    const auto answer = qvariant_cast<QDBusArgument>(reply.arguments().constFirst());
    bool isAvailable = false;
    quint64 modes = 0;
    QString tool;
    answer.beginStructure();
    answer >> isAvailable;
    if (answer.currentType() == QDBusArgument::BasicType && answer.currentSignature() == QLatin1String("t"))
        answer >> modes;
    answer >> tool;
    answer.endStructure();
    if (isAvailable || !tool.isEmpty())
        tools.insert(type, isAvailable ? QString() : tool);
}

Rejection rejectionFor(const QMap<QString, QString>& tools, const QString& type, const char* unsupported)
{
    const auto found = tools.constFind(type);
    if (found == tools.constEnd())
        return Text(unsupported, {type});
    if (found->isEmpty())
        return kAccepted;
    return Text(QT_TRANSLATE_NOOP("Sandbox", "The program %1 is not installed."), {*found});
}

} // namespace

void Capabilities::read(DiskService& service, const std::function<void(const Capabilities&)>& done)
{
    const QStringList types = {QStringLiteral("ntfs"), QStringLiteral("vfat"), QStringLiteral("exfat"),
                               QStringLiteral("ext2"), QStringLiteral("ext3"), QStringLiteral("ext4")};
    const auto result = std::make_shared<Capabilities>();
    const auto missing = std::make_shared<int>(3 * types.size());
    const auto ask = [&](const char* method, const QString& type, QMap<QString, QString>& tools) {
        const DiskServiceCall call{kManager, QStringLiteral("Manager"), QString::fromLatin1(method), {type}};
        service.call(call, [=, &tools](const QDBusMessage& reply) {
            readReply(reply, type, tools);
            if (--*missing == 0)
                done(*result);
        });
    };
    for (const QString& type : types) {
        ask("CanFormat", type, result->formatTools_);
        ask("CanResize", type, result->resizeTools_);
        ask("CanCheck", type, result->checkTools_);
    }
}

Rejection Capabilities::formatRejection(const QString& type) const
{
    return rejectionFor(formatTools_, type,
                        QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot create %1 file systems."));
}

Rejection Capabilities::resizeRejection(const QString& type) const
{
    return rejectionFor(resizeTools_, type,
                        QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot resize %1 file systems."));
}

Rejection Capabilities::checkRejection(const QString& type) const
{
    return rejectionFor(checkTools_, type,
                        QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot check %1 file systems."));
}

} // namespace host
