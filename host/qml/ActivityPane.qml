import QtQuick 2.15

// The agent's calls; a button switches to the host's log.
Panel {
    id: pane

    property bool showsLog: false

    title: showsLog ? qsTr("Log") : qsTr("Agent")
    note: showsLog || timeline.count === 0 ? "" : qsTr("%n entry(s)", "", timeline.count)
    tools: PushButton {
        objectName: "logButton"
        small: true
        text: pane.showsLog ? qsTr("Show agent") : qsTr("Show log")
        onClicked: pane.showsLog = !pane.showsLog
    }

    ClientList { id: clientList; width: parent.width; visible: !pane.showsLog }
    TimelinePane { anchors { fill: parent; topMargin: clientList.height + 4 } visible: !pane.showsLog }
    LogPane { anchors.fill: parent; visible: pane.showsLog }
}
