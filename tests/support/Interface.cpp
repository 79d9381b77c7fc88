#include "tests/support/Interface.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

std::vector<InterfaceMethod> interfaceMethods()
{
    QFile file(qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + "/gen-json/ZORNativePlugin.json");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject service =
        QJsonDocument::fromJson(file.readAll()).object()["services"].toArray().at(0).toObject();
    std::vector<InterfaceMethod> methods;
    for (const QJsonValue entry : service["functions"].toArray()) {
        InterfaceMethod method{entry.toObject()["name"].toString().toStdString(), {}};
        for (const QJsonValue argument : entry.toObject()["arguments"].toArray()) {
            method.arguments.push_back({argument.toObject()["name"].toString().toStdString(),
                                        argument.toObject()["typeId"].toString().toStdString()});
        }
        methods.push_back(method);
    }
    return methods;
}
