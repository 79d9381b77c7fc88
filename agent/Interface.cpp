#include "agent/Interface.h"

#include "agent/Text.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

// Resources of a static library must be registered explicitly.
static void registerDescription()
{
    Q_INIT_RESOURCE(zorcall);
}

namespace zorcall {

namespace {

struct KindName
{
    const char* name;
    Kind kind;
};

constexpr std::array<KindName, 6> kKinds = {{{"bool", Kind::Bool},
                                             {"i32", Kind::I32},
                                             {"i64", Kind::I64},
                                             {"string", Kind::String},
                                             {"struct", Kind::Record},
                                             {"list", Kind::List}}};

std::string text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toString().trimmed().toStdString();
}

Kind kindOf(const std::string& name)
{
    for (const KindName& row : kKinds) {
        if (name == row.name)
            return row.kind;
    }
    throw std::runtime_error("the interface description contains the unknown type '" + name + "'");
}

// A simple type is only a name; records and lists have details.
Type readType(const std::string& name, const QJsonObject& details)
{
    Type type;
    type.kind = kindOf(name);
    if (type.kind == Kind::Record) {
        type.record = text(details, "class");
    } else if (type.kind == Kind::List) {
        type.element = kindOf(text(details, "elemTypeId"));
        if (type.element == Kind::List)
            throw std::runtime_error("the interface description contains a list of lists");
        type.record = text(details.value(QLatin1String("elemType")).toObject(), "class");
    }
    return type;
}

std::vector<Field> readFields(const QJsonArray& descriptions)
{
    std::vector<Field> fields;
    for (const QJsonValue& value : descriptions) {
        const QJsonObject field = value.toObject();
        fields.push_back({field.value(QLatin1String("key")).toInt(), text(field, "name"),
                          readType(text(field, "typeId"), field.value(QLatin1String("type")).toObject()),
                          text(field, "doc")});
    }
    std::sort(fields.begin(), fields.end(),
              [](const Field& left, const Field& right) { return left.id < right.id; });
    return fields;
}

QByteArray builtInJson()
{
    registerDescription();
    QFile file(QStringLiteral(":/zorcall/ZORNativePlugin.json"));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the built-in interface description is missing");
    return file.readAll();
}

} // namespace

std::string Type::name() const
{
    if (kind == Kind::Record)
        return record;
    if (kind == Kind::List)
        return "list<" + entry().name() + ">";
    for (const KindName& row : kKinds) {
        if (kind == row.kind)
            return row.name;
    }
    return std::string();
}

Type Type::entry() const
{
    Type type;
    type.kind = element;
    type.record = record;
    return type;
}

std::string Method::signature() const
{
    std::vector<std::string> parts;
    for (const Field& argument : arguments)
        parts.push_back(argument.name + ": " + argument.type.name());
    return name + "(" + join(parts, ", ") + ") -> " + result.name();
}

const Interface& Interface::builtIn()
{
    static const Interface instance(builtInJson());
    return instance;
}

Interface::Interface(const QByteArray& json)
{
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    const QJsonArray services = root.value(QLatin1String("services")).toArray();
    if (services.size() != 1)
        throw std::runtime_error("the interface description must contain exactly one service");
    for (const auto& constant : root.value(QLatin1String("constants")).toArray())
        readConstant(constant.toObject());
    for (const auto& record : root.value(QLatin1String("structs")).toArray())
        readRecord(record.toObject());
    for (const auto& method : services.first().toObject().value(QLatin1String("functions")).toArray())
        readMethod(method.toObject());
}

void Interface::readConstant(const QJsonObject& description)
{
    constants_.emplace(text(description, "name"),
                       description.value(QLatin1String("value")).toString().toStdString());
}

void Interface::readRecord(const QJsonObject& description)
{
    records_.push_back(
        {text(description, "name"), readFields(description.value(QLatin1String("fields")).toArray())});
}

void Interface::readMethod(const QJsonObject& description)
{
    methods_.push_back({text(description, "name"), text(description, "doc"),
                        readFields(description.value(QLatin1String("arguments")).toArray()),
                        readType(text(description, "returnTypeId"),
                                 description.value(QLatin1String("returnType")).toObject())});
}

std::vector<std::string> Interface::methodNames() const
{
    std::vector<std::string> names;
    for (const Method& method : methods_)
        names.push_back(method.name);
    return names;
}

const Method* Interface::method(const std::string& name) const
{
    for (const Method& method : methods_) {
        if (method.name == name)
            return &method;
    }
    return nullptr;
}

const Record& Interface::record(const std::string& name) const
{
    for (const Record& record : records_) {
        if (record.name == name)
            return record;
    }
    throw std::runtime_error("the interface description does not contain the record '" + name + "'");
}

const std::string& Interface::constant(const std::string& name) const
{
    const auto found = constants_.find(name);
    if (found == constants_.end())
        throw std::runtime_error("the interface description does not contain the constant '" + name + "'");
    return found->second;
}

} // namespace zorcall
