import QtQuick 2.15
import Sandbox 1.0

// No property, function or signal is declared on these three: their members are read from other threads.
HostWindow {
    width: 1280
    height: 720
    minimumWidth: 960
    minimumHeight: 600
    title: qsTr("Sandbox host")

    MainPage { objectName: "__zormain" }
    QmlExecuter { objectName: "__qml_executer" }

    Pages { anchors.fill: parent }
}
