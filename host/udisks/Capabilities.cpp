#include "host/udisks/Capabilities.h"

#include <QtDBus/QDBusArgument>

namespace host {

namespace {

const QString kManager = QStringLiteral("/org/freedesktop/UDisks2/Manager");

// The reply is (available, [modes,] missing tool). An error means that the type is not supported.
void ask(DiskService& service, const char* method, const QString& type, QMap<QString, QString>& tools)
{
    const QDBusMessage reply =
        service.callNow({kManager, QStringLiteral("Manager"), QString::fromLatin1(method), {type}});
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

Capabilities Capabilities::read(DiskService& service)
{
    Capabilities capabilities;
    for (const char* type : {"ntfs", "vfat", "exfat", "ext2", "ext3", "ext4"}) {
        ask(service, "CanFormat", QString::fromLatin1(type), capabilities.formatTools_);
        ask(service, "CanResize", QString::fromLatin1(type), capabilities.resizeTools_);
        ask(service, "CanCheck", QString::fromLatin1(type), capabilities.checkTools_);
    }
    return capabilities;
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
