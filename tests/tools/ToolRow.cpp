#include "tests/tools/ToolRow.h"

#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>

namespace machine {

const char* const partitionC = "map{diskIndex=int:0,driveLetter=QString:\"C:\",isBoot=bool:true}";
const char* const partitionE = "map{diskIndex=int:1,driveLetter=QString:\"E:\",isBoot=bool:false}";
const char* const freeSpace = "map{diskIndex=int:1,unallocated=bool:true}";
const char* const disk0 = "map{diskIndex=int:0,isBoot=bool:true,partitions=list["
                          "map{diskIndex=int:0,driveLetter=QString:\"C:\",isBoot=bool:true}]}";
const char* const disk1 = "map{diskIndex=int:1,isBoot=bool:false,partitions=list["
                          "map{diskIndex=int:1,driveLetter=QString:\"E:\",isBoot=bool:false},"
                          "map{diskIndex=int:1,unallocated=bool:true}]}";

QVariantList disks()
{
    const QVariantMap c{{"diskIndex", 0}, {"driveLetter", "C:"}, {"isBoot", true}};
    const QVariantMap e{{"diskIndex", 1}, {"driveLetter", "E:"}, {"isBoot", false}};
    const QVariantMap space{{"diskIndex", 1}, {"unallocated", true}};
    return {QVariantMap{{"diskIndex", 0}, {"isBoot", true}, {"partitions", QVariantList{c}}},
            QVariantMap{{"diskIndex", 1}, {"isBoot", false}, {"partitions", QVariantList{e, space}}}};
}

QVariantList inventory()
{
    const QVariantMap c{{"diskIndex", 0}, {"driveLetter", "C:"}, {"size", 5000}};
    const QVariantMap e{{"diskIndex", 1}, {"driveLetter", "E:"}, {"size", 100}};
    const QVariantMap small{{"diskIndex", 1}, {"unallocated", true}, {"size", 1000}};
    const QVariantMap large{{"diskIndex", 1}, {"unallocated", true}, {"size", 9000}};
    return {QVariantMap{{"diskIndex", 0}, {"partitions", QVariantList{c}}},
            QVariantMap{{"diskIndex", 1}, {"partitions", QVariantList{e, small, large}}}};
}

} // namespace machine

void recordSignals(AIBridge* bridge, Recorder& recorder)
{
    const auto record = [&recorder](const char* name, const QVariantList& arguments) {
        recorder.add({QStringLiteral("aibridge"), QString::fromLatin1(name), arguments,
                      QThread::currentThread(), false});
    };
    QObject::connect(bridge, &AIBridge::sigCloneResult,
                     [record](const QVariant& v) { record("sigCloneResult", {QVariant(v)}); });
    QObject::connect(bridge, &AIBridge::sigConvertResult,
                     [record](const QVariant& v) { record("sigConvertResult", {QVariant(v)}); });
    QObject::connect(bridge, &AIBridge::sigAbout2CallFun,
                     [record](const QString& text) { record("sigAbout2CallFun", {text}); });
    QObject::connect(bridge, &AIBridge::sigAfterCallFun, [record](const QString& text, bool queued) {
        record("sigAfterCallFun", {text, queued});
    });
}

ToolBench::ToolBench()
{
    host_.spec("deviceMgr").answer("disks", QVariant(machine::disks()));
}

void ToolBench::build(Bridge bridge)
{
    if (bridge == Bridge::NoEngine)
        host_.buildWithoutEngine();
    else
        host_.build();
    if (bridge != Bridge::NoBridge)
        tools_.setBridge(host_.toolBridge());
    host_.bridge()->setDiskInfo(machine::inventory());
    recordSignals(host_.bridge(), host_.recorder());
    host_.recorder().clear();
}

void ToolBench::onConnectionThread(const std::function<void()>& work)
{
    runOnOtherThread([&] {
        caller_ = QThread::currentThread();
        work();
    });
}

QStringList ToolBench::calls()
{
    QStringList lines;
    for (const HostCallRecord& call : host_.recorder().calls()) {
        QString thread = QStringLiteral("other");
        if (call.thread == QCoreApplication::instance()->thread())
            thread = QStringLiteral("app");
        else if (call.thread == caller_)
            thread = QStringLiteral("caller");
        lines.append(call.where() + QLatin1Char('@') + thread +
                     (call.withResult ? QStringLiteral("? ") : QStringLiteral(" ")) + typed(call.arguments));
    }
    return lines;
}

std::vector<ToolRow> allToolRows()
{
    std::vector<ToolRow> rows;
    for (const auto& group : {readAndGateRows(), partitionPageRows(), guidedRows(), toolBoxRows()})
        std::copy(group.begin(), group.end(), std::back_inserter(rows));
    return rows;
}

const ToolRow& toolRow(const std::string& method)
{
    static const std::vector<ToolRow> rows = allToolRows();
    for (const ToolRow& row : rows) {
        if (row.method == method)
            return row;
    }
    std::cerr << "no row for " << method << std::endl;
    std::abort();
}

QStringList toolsThatCall(const QString& member)
{
    QStringList methods;
    for (const ToolRow& row : allToolRows()) {
        const bool calls = std::any_of(row.calls.begin(), row.calls.end(), [&](const QString& call) {
            return call.startsWith(member + QLatin1Char('@'));
        });
        if (calls)
            methods << QString::fromStdString(row.method);
    }
    return methods;
}

void PrintTo(const ToolRow& row, std::ostream* out)
{
    *out << row.method;
}
