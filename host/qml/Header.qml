import QtQuick 2.15
import QtQuick.Layouts 1.15

// The machine, its state, and the buttons of the window. Texts that do not fit are elided.
ColumnLayout {
    id: header

    // Of the mark at the left edge, which stays above dialogs.
    property real markWidth: 0
    property alias menu: menuButton

    spacing: 4

    RowLayout {
        spacing: 8
        Item { implicitWidth: 4 + header.markWidth }
        SpokenWords {
            objectName: "machineName"
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            Layout.minimumWidth: 40 * theme.unit
            text: host.machineName === "" ? qsTr("The machine has no name.") : host.machineName
            elide: Text.ElideMiddle
            HoverHandler { id: hover }
            Tip { visible: hover.hovered && parent.truncated; text: parent.text }
            font { pixelSize: theme.title; weight: Font.DemiBold }
        }
        Item { Layout.fillWidth: true }
        PushButton { objectName: "languageButton"; text: qsTr("Language"); onClicked: multilanguage.changeLanguage() }
        PushButton { objectName: "scanButton"; text: qsTr("Scan now"); onClicked: link.scanNow() }
        HeaderMenu { id: menuButton }
    }
    RowLayout {
        spacing: 8
        component StateBadge: Badge {
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            Layout.minimumWidth: 40 * theme.unit
        }
        SpokenWords {
            objectName: "machineSummary"
            Layout.leftMargin: 4
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            Layout.minimumWidth: 40 * theme.unit
            text: diskModel.summary
            font.pixelSize: theme.small
            color: theme.muted
        }
        StateBadge {
            objectName: "serviceBadge"
            tone: host.serviceAddress === "" ? "warn" : "good"
            text: host.serviceAddress === "" ? qsTr("service is starting") : qsTr("agent service on %1").arg(host.serviceAddress)
        }
        StateBadge { objectName: "busyBadge"; visible: host.work !== ""; tone: "accent"; text: qsTr("busy: %1").arg(host.work) }
        StateBadge { objectName: "problemBadge"; visible: host.problem !== ""; tone: "bad"; text: host.problem }
        StateBadge { objectName: "popupBadge"; visible: host.dialogOpen || host.helpOpen || guide.dialog; tone: "warn"; text: qsTr("dialog open") }
        Item { Layout.fillWidth: true }
    }
}
