import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

RowLayout {
    spacing: 8

    Label { text: host.machineName; font.bold: true }
    Label { text: host.servicePlace === "" ? "The agent service is starting." : "Agent service on " + host.servicePlace; Layout.fillWidth: true }
    BusyIndicator { running: host.work !== ""; implicitHeight: 24; implicitWidth: 24 }
    Label { text: host.work }
    Switch { text: "Windows 11 checker"; checked: host.win11Checker; onToggled: host.win11Checker = checked }
    Switch { text: "Dialog open"; checked: host.dialogOpen; onToggled: host.dialogOpen = checked }
    Button { text: "Language"; onClicked: multilanguage.changeLanguage() }
    Button { text: "Scan now"; onClicked: link.scanNow() }
}
