import QtQuick 2.15
import QtQuick.Controls 2.15

// The host's log with a filter. A click selects a line; with Shift, a click and the arrow keys select several lines. Ctrl+A
// selects all lines, Ctrl+C copies the selected ones.
Item {
    id: pane

    // Without a selection, it begins at the first visible line.
    function extend(step) {
        const first = list.indexAt(0, list.contentY + 1)
        logView.select(logView.currentRow < 0 ? first : logView.currentRow + step, logView.currentRow >= 0)
        list.positionViewAtIndex(logView.currentRow, ListView.Contain)
        list.atEnd = list.atYEnd
    }

    FilterField {
        id: field
        objectName: "logFilter"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        placeholderText: qsTr("Filter the log")
        onTextChanged: logView.filter = text
    }
    ListView {
        id: list
        objectName: "logList"
        anchors { fill: parent; topMargin: field.height + 6 }
        clip: true
        model: logView
        currentIndex: -1 // the selection is the model's
        activeFocusOnTab: true
        cacheBuffer: assistance.extraHeight
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Log")
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: Scroller {}
        // The newest line stays visible unless the user has scrolled or selected further up.
        property bool atEnd: true
        function follow() { if (atEnd) positionViewAtEnd() }
        onMovementEnded: atEnd = atYEnd
        onCountChanged: Qt.callLater(follow)
        Keys.forwardTo: [selectionKeys, keys]
        delegate: Rectangle {
            objectName: "logLine"
            Accessible.role: Accessible.ListItem
            Accessible.name: line.text
            Accessible.selectable: true
            Accessible.selected: chosen
            property alias text: line.text
            property bool chosen: model.selected
            width: ListView.view.width - 10
            height: line.height
            color: chosen ? theme.accentSurface : "transparent"
            Words {
                id: line
                width: parent.width - 6
                leftPadding: 6
                text: model.display
                font { family: theme.fixedFont; pixelSize: theme.small }
                wrapMode: Text.Wrap
            }
            MouseArea {
                anchors.fill: parent
                onClicked: {
                    list.forceActiveFocus()
                    logView.select(index, (mouse.modifiers & Qt.ShiftModifier) !== 0)
                }
            }
        }
        ListKeys { id: keys; view: list; onStarting: list.atEnd = false; onScrolled: list.atEnd = list.atYEnd }
        Item {
            id: selectionKeys
            readonly property var steps: ({ [Qt.Key_Up]: -1, [Qt.Key_Down]: 1, [Qt.Key_Home]: -list.count, [Qt.Key_End]: list.count })
            Keys.onPressed: {
                event.accepted = true
                if (event.matches(StandardKey.SelectAll))
                    logView.selectAll()
                else if (event.matches(StandardKey.Copy))
                    logView.copy()
                else if ((event.modifiers & Qt.ShiftModifier) && steps[event.key] !== undefined)
                    pane.extend(steps[event.key])
                else
                    event.accepted = false
            }
        }
        FocusRing { shown: list.activeFocus; anchors.margins: 0 }
    }
    Words {
        objectName: "noLogLine"
        anchors.centerIn: list
        visible: list.count === 0 && field.text !== ""
        text: qsTr("No line contains this text.")
        font.pixelSize: theme.small
        color: theme.muted
    }
}
