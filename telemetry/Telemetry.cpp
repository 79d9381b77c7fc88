#include "telemetry/Telemetry.h"

#include "plugin/HostCall.h"

#include <QtGui/QWindow>

const QString kTelemetryCategory = QStringLiteral("AIPixie");

bool reportUserInfo(QVariant category, QVariant event, QVariant detail, QVariant extra)
{
    const QWindow* window = firstTopLevelWindow();
    if (window == nullptr)
        return false;
    QObject* executer =
        window->findChild<QObject*>(QStringLiteral("__qml_executer"), Qt::FindChildrenRecursively);
    return callHost<QVariant>(executer, "sendUserInfo", ConnectionRule::Call, category, event, detail, extra)
        .has_value();
}
