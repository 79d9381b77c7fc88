import QtQuick 2.15
import QtQuick.Controls 2.15

Panel {
    title: qsTr("Tasks")
    note: list.count === 0 ? "" : qsTr("%n task(s)", "", list.count)

    ListView {
        id: list
        objectName: "taskList"
        anchors.fill: parent
        clip: true
        model: host.tasks
        spacing: 2
        activeFocusOnTab: count > 0
        boundsBehavior: Flickable.StopAtBounds
        Keys.forwardTo: [keys]
        ScrollBar.vertical: Scroller {}
        onCountChanged: Qt.callLater(positionViewAtEnd)
        delegate: QueueRow {
            width: ListView.view.width - 10
            onCancelled: interruption.cancel(model.taskId)
        }
        ListKeys { id: keys; view: list }
        FocusRing { shown: list.activeFocus; anchors.margins: 0 }
    }
    Words {
        anchors.centerIn: parent
        visible: list.count === 0
        text: qsTr("No tasks yet.")
        font.pixelSize: theme.small
        color: theme.muted
    }
}
