import QtQuick 2.15
import QtQuick.Layouts 1.15

RowLayout {
    id: header
    spacing: 10

    Column {
        Layout.leftMargin: 4
        Row {
            spacing: 8
            Words {
                objectName: "machineName"
                // The names of several disks can be long. The window's title has all of them.
                width: host.realDisks ? Math.min(implicitWidth, Math.max(60, header.width - 600)) : implicitWidth
                text: host.machineName === "" ? qsTr("The machine has no name.") : host.machineName
                elide: Text.ElideMiddle
                font { pixelSize: theme.title; weight: Font.DemiBold }
            }
            Badge {
                objectName: "realBadge"
                anchors.verticalCenter: parent.verticalCenter
                tone: host.realDisks ? "bad" : "plain"
                text: host.realDisks ? qsTr("REAL DISKS") : qsTr("simulated")
            }
        }
        Words { objectName: "machineSummary"; text: diskModel.summary; font.pixelSize: theme.small; color: theme.muted }
    }
    Badge {
        objectName: "serviceBadge"
        tone: host.serviceAddress === "" ? "warn" : "good"
        text: host.serviceAddress === "" ? qsTr("service is starting") : qsTr("agent service on %1").arg(host.serviceAddress)
    }
    Badge {
        objectName: "busyBadge"
        // The only part that may be elided, because the list of tasks shows the name as well.
        Layout.fillWidth: true
        Layout.minimumWidth: 0
        Layout.maximumWidth: implicitWidth
        visible: host.work !== ""
        tone: "accent"
        text: qsTr("busy: %1").arg(host.work)
    }
    Badge { objectName: "problemBadge"; visible: host.problem !== ""; tone: "bad"; text: host.problem }
    Badge { objectName: "popupBadge"; visible: host.dialogOpen || guide.dialog; tone: "warn"; text: qsTr("dialog open") }
    Item { Layout.fillWidth: true }
    PushButton { objectName: "languageButton"; text: qsTr("Language"); onClicked: multilanguage.changeLanguage() }
    PushButton { objectName: "scanButton"; text: qsTr("Scan now"); onClicked: link.scanNow() }
}
