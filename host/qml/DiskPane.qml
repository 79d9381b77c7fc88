import QtQuick 2.15
import QtQuick.Controls 2.15

// All disks, and the details of the selected entry. Up and Down select the disk, Left and Right the entry.
Item {
    id: pane

    property int entry: 0
    readonly property var pieces: diskModel.segments(list.currentIndex)
    property string details: ""

    function choose(disk, wanted) {
        list.currentIndex = disk
        entry = pieces === null ? -1 : Math.max(0, Math.min(wanted, pieces.count - 1))
        refresh()
    }
    function refresh() { details = pieces === null ? "" : pieces.details(entry) }

    onPiecesChanged: refresh()
    Component.onCompleted: choose(0, 0)
    Connections {
        target: pane.pieces
        function onDetailsChanged() { pane.choose(list.currentIndex, pane.entry) }
    }

    ListView {
        id: list
        objectName: "diskList"
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: strip.top; bottomMargin: 8 }
        clip: true
        spacing: 8
        model: diskModel
        activeFocusOnTab: true
        highlightMoveDuration: 0
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: Scroller {}
        Keys.onLeftPressed: pane.choose(currentIndex, pane.entry - 1)
        Keys.onRightPressed: pane.choose(currentIndex, pane.entry + 1)
        Keys.onUpPressed: pane.choose(Math.max(0, currentIndex - 1), pane.entry)
        Keys.onDownPressed: pane.choose(Math.min(count - 1, currentIndex + 1), pane.entry)
        delegate: DiskCard {
            width: ListView.view.width - (ListView.view.ScrollBar.vertical.size < 1 ? 12 : 0)
            current: ListView.isCurrentItem
            currentEntry: pane.entry
            border.color: current && list.activeFocus ? theme.accent : theme.border
            border.width: current && list.activeFocus ? 2 : 1
            onChosen: {
                pane.choose(index, entry)
                list.forceActiveFocus()
            }
        }
    }
    Words {
        objectName: "noDisks"
        anchors { left: list.left; right: list.right; verticalCenter: list.verticalCenter }
        horizontalAlignment: Text.AlignHCenter
        visible: list.count === 0
        text: qsTr("The machine has no disks.")
        color: theme.muted
    }
    Rectangle {
        id: strip
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: detailText.height + 18 * theme.unit
        radius: 8
        color: theme.surface
        border { width: 1; color: theme.border }
        Words {
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
