import QtQuick 2.15
import QtQuick.Layouts 1.15

// The content of the window.
Rectangle {
    color: theme.window

    ColumnLayout {
        anchors { fill: parent; margins: 12 }
        spacing: 10

        Header { Layout.fillWidth: true }
        RowLayout {
            spacing: 10

            ColumnLayout {
                spacing: 8
                GuidePane { Layout.fillWidth: true }
                DiskPane { Layout.fillWidth: true; Layout.fillHeight: true }
                RecommendationCard { Layout.fillWidth: true }
                Words {
                    objectName: "address"
                    visible: host.address !== ""
                    Layout.fillWidth: true
                    text: qsTr("Opened address: %1").arg(host.address)
                    font.pixelSize: 12
                    color: theme.muted
                    elide: Text.ElideMiddle
                }
            }
            ColumnLayout {
                spacing: 10
                Layout.minimumWidth: 360
                Layout.maximumWidth: 360
                QueuePane { Layout.fillWidth: true; Layout.preferredHeight: 230 }
                ActivityPane { Layout.fillWidth: true; Layout.fillHeight: true }
            }
        }
    }
    PageDialog {}
    ConfirmationDialog {}
    InterruptionDialog {}
}
