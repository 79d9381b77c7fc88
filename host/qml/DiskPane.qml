import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15

// The disks that match the search, and the details of the selected entry. Up, Down, Home and End select the disk, Left
// and Right the entry.
Item {
    id: pane

    property int entry: 0
    readonly property var pieces: { shownDisks.count; return shownDisks.segments(list.currentIndex) }
    // On by itself from this number of disks, until the user switches.
    readonly property int manyDisks: 9
    property var chosenCompact: null
    readonly property bool compact: chosenCompact === null ? shownDisks.total >= manyDisks : chosenCompact
    property string details: ""

    function choose(disk, wanted) {
        list.currentIndex = disk
        entry = pieces === null ? -1 : Math.max(0, Math.min(wanted, pieces.count - 1))
        refresh()
    }
    function startSearch() { search.forceActiveFocus(); search.selectAll() }
    function reselect() { choose(Math.max(0, Math.min(list.count - 1, list.currentIndex)), entry) }
    function showMenu() {
        if (pieces !== null && pieces.count > 0)
            menu.show(pieces, entry, list.currentItem, list.currentItem.width / 2, list.currentItem.height / 2)
    }
    function refresh() { details = pieces === null ? "" : pieces.details(entry) }

    onPiecesChanged: refresh()
    Component.onCompleted: choose(0, 0)
    Connections {
        target: shownDisks
        // The list follows later.
        function onShownChanged() { Qt.callLater(pane.reselect) }
    }
    Connections {
        target: pane.pieces
        function onDetailsChanged() { pane.choose(list.currentIndex, pane.entry) }
    }

    ListView {
        id: list
        objectName: "diskList"
        anchors { left: parent.left; right: parent.right; top: search.bottom; topMargin: 8; bottom: legend.visible ? legend.top : strip.top; bottomMargin: 8 }
        clip: true
        spacing: pane.compact ? 4 : 8
        cacheBuffer: assistance.active ? assistance.extraHeight : (pane.compact ? 80 : 320) * theme.unit
        model: shownDisks
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Disks")
        highlightMoveDuration: 0
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: Scroller {}
        Keys.onLeftPressed: pane.choose(currentIndex, pane.entry - 1)
        Keys.onRightPressed: pane.choose(currentIndex, pane.entry + 1)
        Keys.onPressed: {
            const menuKey = event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            event.accepted = menuKey || event.key === Qt.Key_Home || event.key === Qt.Key_End
            if (menuKey)
                pane.showMenu()
            else if (event.accepted)
                pane.choose(event.key === Qt.Key_Home ? 0 : count - 1, pane.entry)
        }
        Keys.onUpPressed: pane.choose(Math.max(0, currentIndex - 1), pane.entry)
        Keys.onDownPressed: pane.choose(Math.min(count - 1, currentIndex + 1), pane.entry)
        delegate: DiskCard {
            width: ListView.view.width - (ListView.view.ScrollBar.vertical.size < 1 ? 12 : 0)
            compact: pane.compact
            current: ListView.isCurrentItem
            currentEntry: pane.entry
            border.color: current && list.activeFocus ? theme.accent : theme.border
            border.width: current && list.activeFocus ? 2 : 1
            onChosen: {
                pane.choose(index, entry)
                list.forceActiveFocus()
            }
            onMenuWanted: menu.show(pane.pieces, entry, place, x, y)
        }
    }
    SpokenWords {
        objectName: "noDisks"
        anchors { left: list.left; right: list.right; verticalCenter: list.verticalCenter }
        horizontalAlignment: Text.AlignHCenter
        visible: list.count === 0
        text: shownDisks.total === 0 ? qsTr("The machine has no disks.") : qsTr("No disk matches the search.")
        color: theme.muted
    }
    // After the list, because Tab starts there.
    SearchField {
        id: search
        anchors { left: parent.left; top: parent.top; right: found.left; rightMargin: 8 }
    }
    SpokenWords {
        id: found
        objectName: "foundDisks"
        anchors { right: compactToggle.left; rightMargin: visible ? 14 : 6; verticalCenter: search.verticalCenter }
        visible: shownDisks.text !== ""
        width: visible ? implicitWidth : 0
        text: qsTr("%1 of %2").arg(shownDisks.count).arg(shownDisks.total)
        font.pixelSize: theme.small
        color: theme.muted
    }
    Toggle {
        id: compactToggle
        objectName: "compactToggle"
        anchors { right: parent.right; rightMargin: 6; verticalCenter: search.verticalCenter }
        text: qsTr("Compact")
        checked: pane.compact
        onToggled: pane.chosenCompact = checked
    }
    SegmentMenu { id: menu; onClosed: list.forceActiveFocus() }
    Legend {
        id: legend
        anchors { left: parent.left; leftMargin: 6; right: parent.right; bottom: strip.top; bottomMargin: 8 }
        visible: Window.height >= 700 * theme.unit
    }
    Rectangle {
        id: strip
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: detailText.height + 18 * theme.unit
        radius: 8
        color: theme.surface
        border { width: 1; color: theme.border }
        SpokenWords {
            id: detailText
            objectName: "details"
            wrapMode: Text.Wrap
            maximumLineCount: 4
            anchors { left: parent.left; right: parent.right; margins: 14; verticalCenter: parent.verticalCenter }
            text: pane.details === "" && list.count > 0 ? qsTr("The disk has no known partition.") : pane.details
            font.pixelSize: theme.small
        }
    }
}
