#include "tests/support/Interface.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

std::string textOf(const QJsonObject& object, const char* key)
{
    return object[QLatin1String(key)].toString().toStdString();
}

// A record is described by its class, a list by its elements.
std::string typeOf(const QJsonObject& type)
{
    const std::string id = textOf(type, "typeId");
    if (id == "list")
        return "list<" + typeOf(type["elemType"].toObject()) + '>';
    return id == "struct" ? textOf(type, "class") : id;
}

InterfaceMethod methodOf(const QJsonObject& function)
{
    InterfaceMethod method{textOf(function, "name"), textOf(function, "returnTypeId"), {}};
    if (function.contains("returnType"))
        method.result = typeOf(function["returnType"].toObject());
    for (const QJsonValue entry : function["arguments"].toArray()) {
        const QJsonObject argument = entry.toObject();
        method.arguments.push_back(
            {argument["key"].toInt(), textOf(argument, "typeId"), textOf(argument, "name")});
    }
    return method;
}

std::vector<InterfaceMethod> readMethods()
{
    QFile file(qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + "/gen-json/ZORNativePlugin.json");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    const QJsonObject service =
        QJsonDocument::fromJson(file.readAll()).object()["services"].toArray().at(0).toObject();
    std::vector<InterfaceMethod> methods;
    for (const QJsonValue function : service["functions"].toArray())
        methods.push_back(methodOf(function.toObject()));
    return methods;
}

} // namespace

const std::vector<InterfaceMethod>& interfaceMethods()
{
    static const std::vector<InterfaceMethod> methods = readMethods();
    return methods;
}
