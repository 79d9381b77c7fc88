import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Sandbox 1.0

// No property, function or signal is declared on these three: their members are read from other threads.
HostWindow {
    width: 1080
    height: 700
    title: "Sandbox host"

    MainPage { objectName: "__zormain" }
    QmlExecuter { objectName: "__qml_executer" }

    Pane {
        anchors.fill: parent

        ColumnLayout {
            anchors.fill: parent
            spacing: 8

            ToolStrip { Layout.fillWidth: true }
            RowLayout {
                spacing: 8
                MachinePage { Layout.fillWidth: true; Layout.fillHeight: true }
                GuidePanel { Layout.preferredWidth: 300; Layout.fillHeight: true }
            }
            MessageCard { Layout.fillWidth: true }
            LogPage { Layout.fillWidth: true; Layout.preferredHeight: 180 }
        }
    }
}
