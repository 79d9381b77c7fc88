// A host of the service, for tests that prepare its application folder and for clients in other languages. It
// prints one line of JSON when the service listens or has ended, and shuts down at the end of its standard
// input.
#include "plugin/TsanAnnotations.h"
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

// The host name that the service resolved for its bind.
QByteArray resolvedName;

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
        {QStringLiteral("resolved"), QString::fromLatin1(resolvedName.toHex())},
    };
    std::puts(QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

bool isListening()
{
    const int port = qEnvironmentVariableIntValue("AGENT_NATIVE_PORT");
    return port != 0 && RawClient::isListening(port);
}

} // namespace

// Interposes the C library's function to record the address that the service binds.
extern "C" Q_DECL_EXPORT int getaddrinfo(const char* node, const char* service, const addrinfo* hints,
                                         addrinfo** result)
{
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto system = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (hints != nullptr && (hints->ai_flags & AI_PASSIVE) != 0)
        resolvedName = node;
    // Avoids a network query for a name that cannot be resolved.
    if (node != nullptr && QByteArray(node).endsWith(".invalid"))
        return EAI_NONAME;
    return system(node, service, hints, result);
}

int main(int argc, char** argv)
{
    TsanAnnotations::Annotated<QGuiApplication> application(argc, argv);
    RecordingHost host;
    host.build();
    AIBridge& bridge = *host.bridge();
    bridge.setDiskInfo({disk(0, {partition(0, "C", QStringLiteral("System")),
                                 partition(0, "D", QString::fromUtf8("gr\xc3\xbc\xc3\x9f\x65"))}),
                        disk(1, {partition(1, "E", QStringLiteral("Backup"))})});
    bridge.init();
    pumpUntil([&] { return !bridge.isServerRunning() || isListening(); });
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
