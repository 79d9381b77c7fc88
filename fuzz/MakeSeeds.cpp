// Writes the initial inputs into the folders of a corpus: real calls, real inventories, real files.
// Usage: fuzz_seeds CORPUS MACHINES
#include "agent/Call.h"
#include "agent/Codec.h"
#include "fuzz/Tree.h"

#include "ZORNativePlugin_constants.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cstdio>

namespace {

using namespace zorcall;
using namespace std::string_literals;

QString corpus;

void save(const QString& target, const QString& name, const std::string& bytes)
{
    QDir().mkpath(corpus + '/' + target);
    QFile file(corpus + '/' + target + '/' + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray::fromStdString(bytes)) < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

std::string byte(int value)
{
    return std::string(1, static_cast<char>(value));
}

std::string call(const std::string& line)
{
    const QStringList parts = QString::fromStdString(line).split('|');
    std::vector<std::string> words;
    for (const QString& part : parts)
        words.push_back(part.toStdString());
    const Call parsed = parseCall(Interface::builtIn(), words, true);
    const auto buffer = std::make_shared<apache::thrift::transport::TMemoryBuffer>();
    apache::thrift::protocol::TBinaryProtocol protocol(buffer);
    writeCall(protocol, *parsed.method, parsed.arguments, 1);
    return buffer->getBufferAsString();
}

std::string lineOf(const Method& method)
{
    std::string line = method.name;
    for (const Field& argument : method.arguments) {
        const char* value = "E:";
        if (argument.type.kind == Kind::Bool)
            value = "true";
        else if (argument.type.kind != Kind::String)
            value = argument.name == "unallocatedIndex" ? "-1" : "1";
        line += "|" + argument.name + "=" + value;
    }
    return line;
}

const std::vector<std::vector<std::string>>& conversations()
{
    static const std::vector<std::vector<std::string>> all = {
        {"Init", "PreProcessing|toolCalls=RebuildMbr(1)", "RebuildMbr|diskIndex=1",
         "PostProcessing|result=" + ZORNativePluginConstants().TASK_QUEUED},
        {"ListAllDisks", "ListPartitionsOnDisk|diskIndex=1", "GetAllPartitionInfo",
         "GetPartitionInfo|driveLetter=e"},
        {"CloneDiskToDisk|sourceDiskIndex=0|destDiskIndex=1", "ConvertDiskToGpt|diskIndex=1", "DisablePreOS",
         "InstallAndEnablePreOS"}};
    return all;
}

void makeCalls()
{
    for (const Method& method : Interface::builtIn().methods())
        save("wire", QString::fromStdString(method.name), byte(0) + byte(255) + call(lineOf(method)));
    int number = 0;
    for (const auto& lines : conversations()) {
        std::string bytes;
        for (const std::string& line : lines)
            bytes += call(line);
        const QString name = QStringLiteral("conversation%1").arg(++number);
        save("wire", name, byte(0) + byte(6) + bytes);
        save("connection", name, byte(0) + byte(0) + bytes);
        save("connection", name + "-gone", byte(0) + byte(3) + bytes);
        save("connection", name + "-no", byte(1) + byte(1) + bytes.substr(0, bytes.size() - 3));
    }
}

// JSON does not distinguish integers, but all numbers of a machine file are integers.
QVariant hostValue(const QJsonValue& value)
{
    if (value.isDouble())
        return QVariant(static_cast<qlonglong>(value.toDouble()));
    if (value.isObject()) {
        QVariantMap map;
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it)
            map.insert(it.key(), hostValue(it.value()));
        return map;
    }
    if (!value.isArray())
        return value.toVariant();
    QVariantList list;
    for (const QJsonValue& entry : value.toArray())
        list.append(hostValue(entry));
    return list;
}

void makeInventories(const QString& machines)
{
    for (const QString& name : QDir(machines).entryList({"*.json"}, QDir::Files)) {
        QFile file(machines + '/' + name);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
        const QVariant disks = hostValue(document.object().value("disks"));
        const QVariant answer(
            QVariantMap{{"result", 0}, {"callByWin11Checker", true}, {"checkResultType", 1}});
        save("inventory", QString(name).remove(".json"),
             byte(0) + byte(0) + byte(1) + byte(2) + "C:" + tree::write(disks) + tree::write(disks) +
                 tree::write(answer));
    }
}

void makeFiles()
{
    const std::string zeros(2, '\0');
    save("files", "state", byte(0) + zeros + byte(0) + byte(7) + byte(1));
    save("files", "pages",
         byte(1) + R"([{"url":"https://example.invalid/a","zorfun":)"
                   R"(["ZORNativePlugin::convert_disk_to_gpt"]},{"url":1,"zorfun":[]}])");
    const std::string name = "Intel(R) Core(TM) i5-8250U CPU @ 1.60GHz";
    const std::string list = "Intel(R) Core(TM) i5-8250U\r\nIntel Core i5-8350U\n";
    save("files", "list",
         byte(2) + byte(static_cast<int>(name.size())) + name + byte(0) +
             byte(static_cast<int>(list.size())) + list + "Core i5\n");
    save("files", "dxdiag", byte(3) + "          DDI Version: 12\r\n         Driver Model: WDDM 2.7\r\n");
    save("files", "secureboot", byte(3) + "T\0r\0u\0e\0\r\0\n"s);
    save("files", "netstat",
         byte(3) + "  TCP    127.0.0.1:9090   0.0.0.0:0   LISTENING  4\r\n  TCP [::]:9091 ");
    save("files", "components", byte(4) + "[COMPONENT1]\nname=First\n[COMPONENT7]\nname=sub/Second\n");
    save("files", "config", byte(5) + "[main]\naiAddress=localhost\nseoUrl=\"http://localhost/?id=\"\n");
}

// One record and a few methods: the others have the same form.
std::string smallDescription()
{
    QFile file(QStringLiteral(":/zorcall/ZORNativePlugin.json"));
    Interface::builtIn();
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no description");
    QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    QJsonArray structs = root.value("structs").toArray();
    QJsonArray services = root.value("services").toArray();
    QJsonObject service = services.first().toObject();
    QJsonArray functions = service.value("functions").toArray();
    for (int i = functions.size() - 1; i >= 0; --i) {
        const QString name = functions.at(i).toObject().value("name").toString();
        if (name != "Init" && name != "PreProcessing" && name != "FormatPartition")
            functions.removeAt(i);
    }
    service.insert("functions", functions);
    root.insert("services", QJsonArray{service});
    for (int i = structs.size() - 1; i >= 0; --i) {
        if (structs.at(i).toObject().value("name").toString() != "TaskInfo")
            structs.removeAt(i);
    }
    root.insert("structs", structs);
    return QJsonDocument(root).toJson(QJsonDocument::Compact).toStdString();
}

// The position of the method in the interface file.
int indexOf(const std::string& name)
{
    const auto& methods = Interface::builtIn().methods();
    const auto found = std::find_if(methods.begin(), methods.end(),
                                    [&](const Method& method) { return method.name == name; });
    return static_cast<int>(found - methods.begin());
}

std::string reply(const std::string& method, const std::string& fields)
{
    return std::string("\x80\x01\x00\x02", 4) + std::string(3, '\0') + byte(static_cast<int>(method.size())) +
           method + std::string(3, '\0') + byte(1) + fields + byte(0);
}

void makeCommandLines()
{
    save("zorcall", "words",
         byte(0) + R"(FormatPartition driveLetter=E: fileSystem="NT\"FS" label='a b' # end)");
    save("zorcall", "gated", byte(0) + R"(--gated WipeDisk diskIndex=1 eraseCount=-2147483648)");
    const std::vector<std::string> words = {"--port", "9090", "--gated", "RebuildMbr", "diskIndex=1"};
    std::string arguments;
    for (const std::string& word : words)
        arguments += byte(static_cast<int>(word.size())) + word;
    save("zorcall", "options", byte(1) + arguments);
    save("zorcall", "description", byte(2) + smallDescription());
    // The second byte selects the method.
    save("zorcall", "yes",
         byte(3) + byte(indexOf("Init")) + reply("Init", byte(2) + std::string(2, '\0') + byte(1)));
    const std::string task = byte(12) + std::string(2, '\0') + byte(2) + byte(0) + byte(1) + byte(1) +
                             byte(11) + byte(0) + byte(2) + std::string(3, '\0') + byte(2) + "no" + byte(0);
    const std::string answer = "F\xC3\xBCll \xE7\xA3\x81\xE7\x9B\x98 \"ok\"";
    save("zorcall", "text",
         byte(3) + byte(indexOf("ShowBitLockerStatus")) +
             reply("ShowBitLockerStatus",
                   byte(11) + std::string(5, '\0') + byte(static_cast<int>(answer.size())) + answer));
    save("zorcall", "task", byte(3) + byte(indexOf("PreProcessing")) + reply("PreProcessing", task));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: fuzz_seeds CORPUS MACHINES\n");
        return 2;
    }
    corpus = QFile::decodeName(argv[1]);
    makeCalls();
    makeInventories(QFile::decodeName(argv[2]));
    makeFiles();
    makeCommandLines();
    return 0;
}
