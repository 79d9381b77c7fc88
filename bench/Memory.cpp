// Measures the memory that the library adds to a host, and the memory of an inventory.
#include "bench/Inventories.h"
#include "bench/ResidentMemory.h"

#include "ZORNativePlugin.h"
#include "plugin/ComponentMgr.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>
#include <thrift/transport/TSocket.h>

#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <thread>
#include <vector>

using namespace apache::thrift;

namespace {

constexpr int kClients = 3;
constexpr int kLimitMs = 60000;

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

class Client
{
public:
    // Retries until the service listens.
    Client()
    {
        QElapsedTimer timer;
        timer.start();
        while (!open()) {
            if (timer.elapsed() > kLimitMs) {
                std::fprintf(stderr, "The service does not answer.\n");
                std::_Exit(1);
            }
            QThread::msleep(20);
        }
        ZORNativePluginClient client(std::make_shared<protocol::TBinaryProtocol>(transport_));
        std::vector<DiskInfo> disks;
        client.ListAllDisks(disks);
    }

private:
    bool open()
    {
        const int port = qEnvironmentVariableIntValue("AGENT_NATIVE_PORT");
        if (port == 0)
            return false;
        transport_ = std::make_shared<transport::TBufferedTransport>(
            std::make_shared<transport::TSocket>("localhost", port));
        try {
            transport_->open();
        } catch (const transport::TTransportException&) {
            return false;
        }
        return true;
    }

    std::shared_ptr<transport::TTransport> transport_;
};

void line(const char* name, double value, const char* unit)
{
    std::printf("%-58s %12.1f %s\n", name, value, unit);
}

void printLoaded(CComponentMgr& components, QObject*& bridge)
{
    const double bare = residentKib();
    components.loadComponents();
    bridge = components.component(QStringLiteral("AIBridge"));
    if (bridge == nullptr) {
        std::fprintf(stderr, "The library could not be loaded.\n");
        std::_Exit(1);
    }
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < kClients; ++i)
        clients.push_back(std::make_unique<Client>());
    line("a host with an engine, resident", bare, "KiB");
    line("loading the library and serving three idle clients adds", residentKib() - bare, "KiB");
}

void printInventory(QObject* bridge)
{
    constexpr int disks = 6250;
    constexpr int partitions = 16;
    const QVariantList inventory = makeInventory(disks, partitions);
    const double before = heapBytes();
    QMetaObject::invokeMethod(bridge, "setDiskInfo", Q_ARG(QVariantList, inventory));
    const double bytes = (heapBytes() - before) / (disks * partitions);
    line("a partition record by sizeof", static_cast<double>(sizeof(PartitionInfo)), "bytes");
    line("a partition of 100,000 in the inventory", bytes, "bytes");
    std::printf("%-58s %12.2f\n", "as a multiple of sizeof",
                bytes / static_cast<double>(sizeof(PartitionInfo)));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQml 2.15\nQtObject {}\n");
    CComponentMgr components(&engine);
    QObject* bridge = nullptr;
    std::printf("%-58s %12s\n", "memory", "");
    printLoaded(components, bridge);
    printInventory(bridge);
    return 0;
}
