import QtQuick 2.15
import Sandbox 1.0

// These three must not declare a property, function or signal, because other threads read their members.
HostWindow {
    width: 1280
    height: 720
    minimumWidth: 640
    minimumHeight: 480
    title: host.realDisks ? qsTr("Sandbox host: %1 (real disks)").arg(host.machineName)
         : host.machineName === "" ? qsTr("Sandbox host (simulation)")
         : qsTr("Sandbox host: %1 (simulation)").arg(host.machineName)

    MainPage { objectName: "__zormain" }
    QmlExecuter { objectName: "__qml_executer" }

    Pages { anchors.fill: parent; markWidth: mark.width }
    ModeMark { id: mark; x: 16; y: 12 + (32 * theme.unit - height) / 2 }
}
