import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

RowLayout {
    spacing: 8

    Label { text: host.machineName; font.bold: true }
    Label { text: host.servicePlace === "" ? "starting" : host.servicePlace; elide: Text.ElideRight; Layout.fillWidth: true }
    BusyIndicator { running: host.work !== ""; visible: running; implicitHeight: 24; implicitWidth: 24 }
    Label { text: host.work; visible: text !== "" }
    Switch { text: "Windows 11 checker"; checked: host.win11Checker; onToggled: host.win11Checker = checked }
    Switch { text: "Dialog open"; checked: host.dialogOpen; onToggled: host.dialogOpen = checked }
    Button { text: "Language"; onClicked: multilanguage.changeLanguage() }
    Button { text: "Scan now"; onClicked: link.scanNow() }
}
