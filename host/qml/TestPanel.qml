import QtQuick 2.15

// Switches that put the host into states that an agent must handle.
Panel {
    title: qsTr("Testing")
    implicitHeight: switches.height + headHeight + 8 * theme.unit

    Flow {
        id: switches
        x: 6
        width: parent.width - 2 * x
        spacing: 16
        Toggle { objectName: "win11Toggle"; text: qsTr("Windows 11 checker"); checked: host.win11Checker; onToggled: host.win11Checker = checked }
        Toggle { objectName: "dialogToggle"; text: qsTr("Dialog open"); checked: host.dialogOpen; onToggled: host.dialogOpen = checked }
    }
}
