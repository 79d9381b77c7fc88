import QtQuick 2.15
import QtQuick.Layouts 1.15

// The panes of a small window. Left, Right and Ctrl+Tab select the next one.
RowLayout {
    id: tabs

    property string current
    property bool guideOpen: false
    property bool recommendationOpen: false

    signal selected(string pane)

    function shown() {
        const found = []
        for (let i = 0; i < children.length; ++i) {
            if (children[i].pane !== undefined && children[i].visible)
                found.push(children[i])
        }
        return found
    }
    function selectNext(step) {
        const all = shown()
        const next = (all.findIndex(tab => tab.pane === current) + step + all.length) % all.length
        selected(all[next].pane)
        all[next].forceActiveFocus()
    }
    function focusCurrent() {
        const found = shown().find(tab => tab.pane === current)
        if (found !== undefined)
            found.forceActiveFocus()
    }

    objectName: "paneTabs"
    spacing: 4
    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Panes")
    Keys.onLeftPressed: selectNext(-1)
    Keys.onRightPressed: selectNext(1)

    component Entry: PaneTab {
        property string pane
        objectName: pane + "Tab"
        Layout.fillWidth: true
        Layout.maximumWidth: implicitWidth
        Layout.minimumWidth: 40 * theme.unit
        current: tabs.current === pane
        onClicked: tabs.selected(pane)
    }
    Entry { pane: "disks"; text: qsTr("Disks") }
    Entry { pane: "guide"; text: qsTr("Guide"); visible: tabs.guideOpen; important: true }
    Entry { pane: "recommendation"; text: qsTr("Recommendation"); visible: tabs.recommendationOpen; important: true }
    Entry { pane: "tasks"; text: qsTr("Tasks") }
    Entry { pane: "agent"; text: qsTr("Agent") }
    Entry { pane: "testing"; text: qsTr("Testing") }
    Item { Layout.fillWidth: true }
    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        enabled: tabs.visible
        onActivated: tabs.selectNext(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+Shift+Backtab", "Ctrl+PgUp"]
        enabled: tabs.visible
        onActivated: tabs.selectNext(-1)
    }
}
