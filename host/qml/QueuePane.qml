import QtQuick 2.15
import QtQuick.Controls 2.15

// The tasks. The running task stays in the middle of the list until the user scrolls; the next one returns there.
Panel {
    title: qsTr("Tasks")
    note: list.count === 0 ? "" : qsTr("%n task(s)", "", list.count)
    tools: [
        PushButton {
            objectName: "clearButton"
            small: true
            visible: list.count > 0
            enabled: host.tasks.endedCount > 0
            text: qsTr("Clear")
            onClicked: host.tasks.clear()
        },
        PushButton {
            objectName: "cancelAllButton"
            small: true
            visible: list.count > 0
            enabled: list.task >= 0
            text: qsTr("Cancel all")
            onClicked: interruption.cancelAll()
        }
    ]

    ListView {
        id: list
        objectName: "taskList"

        readonly property int task: host.tasks.currentRow
        property bool follows: true

        function follow() {
            if (!follows)
                return
            if (task >= 0)
                positionViewAtIndex(task, ListView.Center)
            else
                positionViewAtEnd()
        }

        anchors.fill: parent
        clip: true
        model: host.tasks
        spacing: 2
        activeFocusOnTab: count > 0
        cacheBuffer: assistance.extraHeight
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Tasks")
        boundsBehavior: Flickable.StopAtBounds
        Keys.forwardTo: [keys]
        ScrollBar.vertical: Scroller {}
        onMovementStarted: follows = false
        onTaskChanged: { follows = true; Qt.callLater(follow) }
        onCountChanged: Qt.callLater(follow)
        onHeightChanged: Qt.callLater(follow)
        onContentHeightChanged: Qt.callLater(follow)
        delegate: QueueRow {
            width: ListView.view.width - 10
            onCancelled: interruption.cancel(model.taskId)
        }
        ListKeys { id: keys; view: list; onStarting: list.follows = false }
        FocusRing { shown: list.activeFocus; anchors.margins: 0 }
    }
    SpokenWords {
        anchors.centerIn: parent
        visible: list.count === 0
        text: qsTr("No tasks yet.")
        font.pixelSize: theme.small
        color: theme.muted
    }
}
