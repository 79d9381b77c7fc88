import QtQuick 2.15
import QtQuick.Layouts 1.15

// The content of the window. The header comes last, because Tab follows this order and the disks come first.
Rectangle {
    color: theme.window

    RowLayout {
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom; margins: 12; topMargin: 10 }
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
                font.pixelSize: theme.small
                color: theme.muted
                elide: Text.ElideMiddle
            }
        }
        ColumnLayout {
            spacing: 10
            Layout.minimumWidth: 360 * theme.unit
            Layout.maximumWidth: 360 * theme.unit
            QueuePane { Layout.fillWidth: true; Layout.preferredHeight: 230 * theme.unit }
            ActivityPane { Layout.fillWidth: true; Layout.fillHeight: true }
            TestPanel { Layout.fillWidth: true }
        }
    }
    Header {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
    }
    // Wherever the focus is. A dialog handles its own Escape.
    Shortcut {
        sequence: "Escape"
        enabled: guide.open && !guide.dialog && !confirmation.open && !interruption.open
        onActivated: guide.dismiss()
    }
    PageDialog {}
    ConfirmationDialog {}
    InterruptionDialog {}
}
