// An acting tool over one connection, compared with a bare server that makes the same three calls.
#include "bench/BenchHost.h"
#include "bench/Ratios.h"
#include "bench/WireService.h"

#include "bridge/AIBridge.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tools/FunctionIndex.h"
#include "tools/ZorHandle.h"

#include <benchmark/benchmark.h>

namespace {

// Question, guide, order: each call waits until the application thread has run it.
class BareFormat : public ZORNativePluginNull
{
public:
    explicit BareFormat(BenchHost& host) : host_(host) {}

    void FormatPartition(std::string& answer, const std::string& driveLetter, const std::string& fileSystem,
                         const std::string& label, int32_t clusterSize, bool quickFormat) override
    {
        QVariantMap params{{QStringLiteral("driveLetter"), QString::fromStdString(driveLetter)},
                           {QStringLiteral("fileSystem"), QString::fromStdString(fileSystem)},
                           {QStringLiteral("label"), QString::fromStdString(label)},
                           {QStringLiteral("clusterSize"), clusterSize},
                           {QStringLiteral("quickFormat"), quickFormat},
                           {QStringLiteral("TestFunValid"), true}};
        const bool valid = askPage(params);
        params.remove(QStringLiteral("TestFunValid"));
        QVariant closed;
        QMetaObject::invokeMethod(&host_.window, "closeGuide", Qt::BlockingQueuedConnection,
                                  Q_RETURN_ARG(QVariant, closed), Q_ARG(QVariant, QVariant()));
        askPage(params);
        answer = (valid ? answers::queued : answers::notValid).bytes();
    }

private:
    bool askPage(const QVariantMap& params)
    {
        bool result = false;
        QMetaObject::invokeMethod(&host_.page, "doFunFromAI", Qt::BlockingQueuedConnection,
                                  Q_RETURN_ARG(bool, result), Q_ARG(int, FunFormatPartition),
                                  Q_ARG(QVariantMap, params));
        return result;
    }

    BenchHost& host_;
};

struct Pair
{
    BenchHost host;
    AIBridge bridge;
    std::unique_ptr<WireService> ours;
    std::unique_ptr<WireService> bare;

    Pair()
    {
        bridge.setEngine(&host.engine);
        const auto handler = std::make_shared<CZorHandle>();
        handler->setBridge(AIBridgeAccess::toolBridge(&bridge));
        ours = std::make_unique<WireService>(handler, WireService::Kind::Ours);
        bare = std::make_unique<WireService>(std::make_shared<BareFormat>(host), WireService::Kind::Bare);
    }
};

void formatOnce(benchmark::State& state, WireService& service)
{
    std::string answer;
    service.client().FormatPartition(answer, "D", "NTFS", "Data", 4096, true);
    if (answer != answers::queued.bytes())
        state.SkipWithError("the order was rejected");
}

} // namespace

void registerActingBenchmarks()
{
    const auto pair = std::make_shared<Pair>();
    const auto loop = [pair](benchmark::State& state, WireService& service) {
        besideTheEventLoop([&] {
            for (auto _ : state)
                formatOnce(state, service);
        });
    };
    addRatio(
        "FormatPartition: question, guide and order", 1.10,
        [=](benchmark::State& state) { loop(state, *pair->ours); },
        [=](benchmark::State& state) { loop(state, *pair->bare); });
}
