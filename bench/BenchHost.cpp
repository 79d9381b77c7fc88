#include "bench/BenchHost.h"

#include <QtCore/QEventLoop>
#include <QtQml/QQmlContext>

#include <thread>

BenchHost::BenchHost()
{
    engine.rootContext()->setContextProperty(QStringLiteral("partitionmanager"), &page);
}

void besideTheEventLoop(const std::function<void()>& work)
{
    QEventLoop loop;
    std::thread thread([&] {
        work();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    thread.join();
}
