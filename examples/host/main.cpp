#include <hostcheck/ComponentCheck.h>
#include <plugin/ComponentMgr.h>

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtNetwork/QTcpSocket>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

#include <cstdio>

/// The page of the partitions. The component finds it by its name in QML and calls doFunFromAI.
class PartitionPage : public QObject
{
    Q_OBJECT

public:
    /// With TestFunValid in @p params a question, otherwise an order.
    Q_INVOKABLE bool doFunFromAI(int function, QVariantMap params)
    {
        if (!params.contains("TestFunValid"))
            Q_EMIT ordered(function, params);
        return true;
    }

Q_SIGNALS:
    void ordered(int number, QVariantMap params);
};

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    PartitionPage page;
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("partitionmanager", &page);
    engine.load(QStringLiteral("qrc:/Main.qml"));
    CComponentMgr components(&engine);
    components.loadComponents();
    if (engine.rootObjects().isEmpty() || components.component("AIBridge") == nullptr) {
        std::fputs(qPrintable(hostcheck::textOf(hostcheck::checkComponent("AIBridge")) + '\n'), stderr);
        return 1;
    }
    // The window appears, and can be closed, only when the service listens: the release of the component
    // would wait forever for a service that is still starting.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        const int port = qEnvironmentVariableIntValue("AGENT_NATIVE_PORT");
        QTcpSocket service;
        service.connectToHost("localhost", quint16(port));
        if (port == 0 || !service.waitForConnected(1000))
            return;
        poll.stop();
        QMetaObject::invokeMethod(engine.rootObjects().constFirst(), "start");
        std::printf("agent service on port %d\n", port);
        std::fflush(stdout);
    });
    poll.start(50);
    return application.exec();
}

#include "main.moc"
