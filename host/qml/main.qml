import QtQuick 2.15
import Sandbox 1.0

// These three must not declare a property, function or signal, because other threads read their members.
HostWindow {
    width: 1280
    height: 720
    minimumWidth: 640
    minimumHeight: 480
    title: host.realDisks ? qsTr("Sandbox host: %1 (real disks)").arg(host.machineName) : qsTr("Sandbox host")

    MainPage { objectName: "__zormain" }
    QmlExecuter { objectName: "__qml_executer" }

    Pages { anchors.fill: parent }
}
