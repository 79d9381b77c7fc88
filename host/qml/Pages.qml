import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15

// The content of the window. A small window shows one pane at a time, selected by tabs. The header comes last, because
// Tab follows this order and the disks come first.
Rectangle {
    id: pages

    property alias markWidth: header.markWidth
    readonly property bool tabbed: width < 940 * theme.unit || height < 560 * theme.unit
    readonly property bool guideOpen: guide.open && !guide.dialog
    readonly property bool recommendationOpen: link.message !== "" || link.emptyScan
    property string pane: "disks"
    // The pane that returns when the guide or the recommendation closes.
    property string lastingPane: "disks"

    function shows(name) { return !tabbed || pane === name }
    function select(name) {
        pane = name
        if (name !== "guide" && name !== "recommendation")
            lastingPane = name
    }
    function leave(name) {
        if (pane === name)
            pane = lastingPane
    }
    // An invisible pane must not receive keys.
    function moveFocus() {
        const holder = Window.activeFocusItem
        if (tabbed && holder !== null && !holder.visible)
            tabs.focusCurrent()
    }

    color: theme.window
    onTabbedChanged: Qt.callLater(moveFocus)
    onGuideOpenChanged: guideOpen ? select("guide") : leave("guide")
    onRecommendationOpenChanged: {
        if (!recommendationOpen)
            leave("recommendation")
        else if (!guideOpen)
            select("recommendation")
    }

    RowLayout {
        id: body
        anchors {
            left: parent.left; right: parent.right; bottom: parent.bottom; margins: 12; topMargin: 10
            top: tabs.visible ? tabs.bottom : header.bottom
        }
        spacing: 10

        ColumnLayout {
            visible: pages.shows("guide") || pages.shows("disks") || pages.shows("recommendation")
            spacing: 8
            GuidePane {
                shown: pages.shows("guide")
                onWanted: pages.select("guide")
                Layout.fillWidth: true
                Layout.fillHeight: pages.tabbed
                Layout.preferredHeight: Math.min(implicitHeight, body.height * 0.45)
            }
            DiskPane { id: disks; visible: pages.shows("disks"); Layout.fillWidth: true; Layout.fillHeight: true }
            RecommendationCard {
                visible: pages.recommendationOpen && pages.shows("recommendation")
                stacked: width < 480 * theme.unit || pages.tabbed
                Layout.fillWidth: true
                Layout.fillHeight: pages.tabbed
                Layout.preferredHeight: Math.min(implicitHeight, body.height * 0.25)
            }
            SpokenWords {
                objectName: "address"
                visible: host.address !== "" && pages.shows("disks")
                Layout.fillWidth: true
                text: qsTr("Opened address: %1").arg(host.address)
                font.pixelSize: theme.small
                color: theme.muted
                elide: Text.ElideMiddle
            }
        }
        ColumnLayout {
            visible: pages.shows("tasks") || pages.shows("agent") || pages.shows("testing")
            spacing: 10
            Layout.fillWidth: pages.tabbed
            Layout.minimumWidth: pages.tabbed ? 0 : 360 * theme.unit
            Layout.maximumWidth: pages.tabbed ? Number.POSITIVE_INFINITY : 360 * theme.unit
            QueuePane {
                visible: pages.shows("tasks")
                Layout.fillWidth: true
                Layout.fillHeight: pages.tabbed
                Layout.preferredHeight: Math.min(230 * theme.unit, body.height * 0.4)
            }
            ActivityPane { visible: pages.shows("agent"); Layout.fillWidth: true; Layout.fillHeight: true }
            TestPanel { visible: pages.shows("testing"); Layout.fillWidth: true; Layout.fillHeight: pages.tabbed }
        }
    }
    PaneTabs {
        id: tabs
        anchors { left: parent.left; right: parent.right; top: header.bottom; margins: 12; topMargin: 8 }
        visible: pages.tabbed
        current: pages.pane
        guideOpen: pages.guideOpen
        recommendationOpen: pages.recommendationOpen
        onSelected: pages.select(pane)
    }
    Header {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
    }
    // Wherever the focus is. A dialog handles its own Escape.
    Shortcut {
        sequence: "Escape"
        enabled: pages.guideOpen && !confirmation.open && !interruption.open
        onActivated: guide.dismiss()
    }
    Connections {
        target: history
        function onWanted() { pages.select("agent") }
    }
    PageDialog {}
    ConfirmationDialog {}
    InterruptionDialog {}
    HelpDialog { id: help }
    AboutDialog { id: about }
    Shortcut { sequence: "F1"; onActivated: help.open() }
    Shortcut { sequence: "Ctrl+F"; onActivated: { pages.select("disks"); disks.startSearch() } }
    // After the menu has closed and the focus has returned.
    Connections {
        target: header.menu
        function onHelpRequested() { Qt.callLater(help.open) }
        function onAboutRequested() { Qt.callLater(about.open) }
    }
}
