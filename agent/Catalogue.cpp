#include "agent/Catalogue.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <stdexcept>

namespace zorcall {

namespace {

const char* const kGateGroup = "gate";
const char* const kReads = "reads";

std::string text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toString().toStdString();
}

QByteArray builtInJson()
{
    // Also registers the resources.
    Interface::builtIn();
    QFile file(QStringLiteral(":/zorcall/tools.json"));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the built-in table of tools is missing");
    return file.readAll();
}

// The gateway asks the user before a change, but not before it adds something. Both change the machine.
std::string classOf(const std::string& gatewayClass)
{
    return gatewayClass == "adds" ? "changes" : gatewayClass;
}

bool contains(const std::string& text, const QString& word)
{
    return QString::fromStdString(text).contains(word, Qt::CaseInsensitive);
}

} // namespace

std::string Tool::summary() const
{
    const std::string doc = QString::fromStdString(method->doc).simplified().toStdString();
    const std::size_t end = doc.find(". ");
    return end == std::string::npos ? doc : doc.substr(0, end + 1);
}

const Catalogue& Catalogue::builtIn()
{
    static const Catalogue instance(Interface::builtIn(), builtInJson());
    return instance;
}

Catalogue::Catalogue(const Interface& service, const QByteArray& json)
{
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    readGroups(root.value(QLatin1String("groups")).toObject());
    for (const Method& method : service.methods())
        readTool(method, root);
    readArguments(root.value(QLatin1String("arguments")).toObject());
}

void Catalogue::readGroups(const QJsonObject& groups)
{
    for (const QString& name : groups.keys())
        groups_.push_back({name.toStdString(), text(groups.value(name).toObject(), "about")});
    groups_.push_back({kGateGroup, "Calls before and after a tool"});
}

void Catalogue::readTool(const Method& method, const QJsonObject& root)
{
    const QString name = QString::fromStdString(method.name);
    const QJsonObject tool = root.value(QLatin1String("tools")).toObject().value(name).toObject();
    if (root.value(QLatin1String("gate")).toArray().contains(name))
        tools_.push_back({&method, std::string(), kGateGroup, kReads});
    else if (tool.isEmpty())
        throw std::runtime_error("the table of tools does not contain '" + method.name + "'");
    else
        tools_.push_back({&method, text(tool, "title"), text(tool, "group"), classOf(text(tool, "class"))});
}

void Catalogue::readArguments(const QJsonObject& arguments)
{
    for (const QString& name : arguments.keys()) {
        const QJsonObject facts = arguments.value(name).toObject();
        Argument argument{name.toStdString(), text(facts, "role"), {}};
        for (const char* key : {"suggestions", "values"}) {
            for (const auto& value : facts.value(QLatin1String(key)).toArray())
                argument.suggestions.push_back(value.toString().toStdString());
        }
        arguments_.push_back(argument);
    }
}

std::vector<const Tool*> Catalogue::matching(const std::string& word) const
{
    const QString wanted = QString::fromStdString(word);
    std::vector<const Tool*> found;
    for (const Tool& tool : tools_) {
        for (const std::string& place :
             {tool.method->name, tool.title, tool.method->doc, tool.group, tool.toolClass}) {
            if (!contains(place, wanted))
                continue;
            found.push_back(&tool);
            break;
        }
    }
    return found;
}

std::string Catalogue::role(const std::string& argument) const
{
    for (const Argument& row : arguments_) {
        if (row.name == argument)
            return row.role;
    }
    return std::string();
}

std::vector<std::string> Catalogue::suggestions(const std::string& argument) const
{
    for (const Argument& row : arguments_) {
        if (row.name == argument)
            return row.suggestions;
    }
    return {};
}

} // namespace zorcall
