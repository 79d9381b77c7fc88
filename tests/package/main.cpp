#include <hostcheck/ComponentCheck.h>
#include <hostcheck/HostCheck.h>
#include <plugin/ComponentBase.h>
#include <plugin/ComponentMgr.h>
#include <plugin/HostCall.h>

#include <QtCore/QTranslator>
#include <QtGui/QGuiApplication>
#include <QtNetwork/QTcpSocket>
#include <QtQml/QQmlApplicationEngine>

#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    if (hostcheck::isComplete(hostcheck::checkHost(engine)))
        return 1;
    CComponentMgr components;
    QObject* bridge = components.loadComponent("AIBridge");
    if (bridge == nullptr) {
        std::fputs(qPrintable(hostcheck::textOf(hostcheck::checkComponent("AIBridge")) + '\n'), stderr);
        return 1;
    }
    if (hostcheck::checkComponent("Absent").step != hostcheck::LoadStep::FindFile)
        return 1;
    std::printf("%s\n", qPrintable(bridge->property("name").toString()));
    QTranslator german;
    if (!german.load(QStringLiteral("aibridge_de"), QStringLiteral(CATALOGUES)))
        return 1;
    QCoreApplication::installTranslator(&german);
    std::printf("%s\n", qPrintable(QObject::tr("Accept")));
    // The manager's destructor releases the component, which must not happen before the service listens.
    for (bool running = true, up = false; running && !up;) {
        QTcpSocket probe;
        probe.connectToHost("localhost", quint16(qEnvironmentVariableIntValue("AGENT_NATIVE_PORT")));
        up = probe.waitForConnected(100);
        QMetaObject::invokeMethod(bridge, "isServerRunning", Q_RETURN_ARG(bool, running));
    }
    return 0;
}
