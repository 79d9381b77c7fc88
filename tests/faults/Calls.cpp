#include "tests/faults/Calls.h"

#include "tests/support/Answers.h"
#include "tests/support/Interface.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <map>

namespace calls {

namespace {

const std::map<std::string, std::string> kTexts = {{"driveLetter", "e"},
                                                   {"driveLetter1", "e"},
                                                   {"driveLetter2", "c"},
                                                   {"sourceDriveLetter", "C:"},
                                                   {"destDriveLetter", "e"},
                                                   {"targetDriveLetter", "e"},
                                                   {"osDriveLetter", "c"},
                                                   {"newDriveLetter", "g"},
                                                   {"result", answers::queued},
                                                   {"toolCalls", "a call"},
                                                   {"fileSystem", "NTFS"},
                                                   {"label", "new"},
                                                   {"newPartitionFileSystem", ""},
                                                   {"newPartitionLabel", ""},
                                                   {"newLabel", "x"},
                                                   {"GptOrMbr", "gpt"}};

const std::map<std::string, int> kNumbers = {{"diskIndex", 1},     {"targetDiskIndex", 1},
                                             {"osDiskIndex", 0},   {"sourceDiskIndex", 0},
                                             {"destDiskIndex", 1}, {"unallocatedIndex", -1}};

std::string fieldOf(const InterfaceArgument& argument, int id)
{
    wire::Fields fields;
    const auto number = kNumbers.find(argument.name);
    const int value = number == kNumbers.end() ? 50 : number->second;
    if (argument.type == "string")
        fields.string(id, kTexts.at(argument.name));
    else if (argument.type == "bool")
        fields.boolean(id, true);
    else if (argument.type == "i64")
        fields.big(id, value);
    else
        fields.number(id, value);
    const std::string bytes = fields.end();
    return bytes.substr(0, bytes.size() - 1);
}

QString recordText(const wire::Value& record)
{
    const auto number = [&record](int id) { return QString::number(record.field(id).number); };
    // Field 43 is the letter of a partition. A disk does not have it.
    if (record.field(43).type == wire::Stop)
        return number(2) + '/' + number(3) + (record.field(27).number != 0 ? "/unaligned" : "");
    return number(2) + '/' + QString::fromStdString(record.field(43).bytes) + '/' + number(4) +
           (record.field(19).number != 0 ? "/raw" : "");
}

QString valueText(const wire::Value& value)
{
    QStringList entries;
    switch (value.type) {
    case wire::Bool:
        return value.number != 0 ? "true" : "false";
    case wire::String:
        return QString::fromStdString(value.bytes);
    case wire::List:
        for (const wire::Value& item : value.items)
            entries.append(recordText(item));
        return entries.join(' ');
    case wire::Struct:
        if (value.field(1).type == wire::Bool && value.fields.size() == 2)
            return valueText(value.field(1)) + ' ' + valueText(value.field(2));
        return recordText(value);
    default:
        return "no answer";
    }
}

} // namespace

std::vector<std::string> methods()
{
    std::vector<std::string> names;
    for (const InterfaceMethod& method : interfaceMethods())
        names.push_back(method.name);
    return names;
}

std::string encode(const std::string& method, int sequence)
{
    const std::vector<InterfaceMethod>& all = interfaceMethods();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const InterfaceMethod& row) { return row.name == method; });
    std::string bytes = wire::strictHeader(method, sequence);
    int id = 0;
    for (const InterfaceArgument& argument : found->arguments)
        bytes += fieldOf(argument, ++id);
    return bytes + '\0';
}

QString answerOf(const wire::Message& reply)
{
    return reply.type == wire::Reply ? valueText(reply.body.field(0)) : QStringLiteral("exception");
}

} // namespace calls
