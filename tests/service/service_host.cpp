// A host of the service as a process of its own: the tests copy it into an application folder that they have
// prepared, or let a client in another language talk to it. It prints one line of JSON once the service
// answers or has given up, and ends by the clean road when its standard input does.
#include "plugin/HandOver.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSocketNotifier>
#include <QtGui/QGuiApplication>

#include <cstdio>

#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

namespace {

// The name that the service has asked the system to resolve for its bind.
QByteArray askedName;

QVariantMap partition(int disk, const char* letter, const QString& label)
{
    return {{QStringLiteral("diskIndex"), disk},
            {QStringLiteral("driveLetter"), QString::fromLatin1(letter)},
            {QStringLiteral("label"), label},
            {QStringLiteral("size"), qlonglong(7) << 40},
            {QStringLiteral("fsString"), QStringLiteral("NTFS")}};
}

QVariantMap disk(int index, const QVariantList& partitions)
{
    return {{QStringLiteral("diskIndex"), index},
            {QStringLiteral("diskInterface"), QStringLiteral("NVMe")},
            {QStringLiteral("serialNO"), QStringLiteral("S-%1").arg(index)},
            {QStringLiteral("size"), qlonglong(8) << 40},
            {QStringLiteral("partitions"), partitions}};
}

void report(AIBridge& bridge)
{
    const QJsonObject line{
        {QStringLiteral("native"), qEnvironmentVariable("AGENT_NATIVE_PORT")},
        {QStringLiteral("chat"), qEnvironmentVariable("AGENT_CHAT_PORT")},
        {QStringLiteral("running"), bridge.isServerRunning()},
        {QStringLiteral("asked"), QString::fromLatin1(askedName.toHex())},
    };
    std::puts(QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

bool answers()
{
    const int port = qEnvironmentVariableIntValue("AGENT_NATIVE_PORT");
    return port != 0 && RawClient::isListening(port);
}

} // namespace

// Stands before the system's own, so that the address that the service binds can be seen.
extern "C" Q_DECL_EXPORT int getaddrinfo(const char* node, const char* service, const addrinfo* hints,
                                         addrinfo** result)
{
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto system = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (hints != nullptr && (hints->ai_flags & AI_PASSIVE) != 0)
        askedName = node;
    // Names that nobody has need not be asked for in a network.
    if (node != nullptr && QByteArray(node).endsWith(".invalid"))
        return EAI_NONAME;
    return system(node, service, hints, result);
}

int main(int argc, char** argv)
{
    handover::Marked<QGuiApplication> application(argc, argv);
    RecordingHost host;
    host.build();
    AIBridge& bridge = *host.bridge();
    bridge.setDiskInfo({disk(0, {partition(0, "C", QStringLiteral("System")),
                                 partition(0, "D", QString::fromUtf8("gr\xc3\xbc\xc3\x9f\x65"))}),
                        disk(1, {partition(1, "E", QStringLiteral("Backup"))})});
    bridge.init();
    pumpUntil([&] { return !bridge.isServerRunning() || answers(); });
    report(bridge);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
        char bytes[64];
        if (::read(STDIN_FILENO, bytes, sizeof bytes) <= 0)
            QCoreApplication::quit();
    });
    application.exec();
    AIBridgeAccess::release(bridge);
    return bridge.isServerRunning() ? 1 : 0;
}
