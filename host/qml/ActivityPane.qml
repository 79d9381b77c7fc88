import QtQuick 2.15

// The agent's calls; a button switches to the host's log.
Panel {
    id: pane

    property bool showsLog: false

    title: showsLog ? qsTr("Log") : qsTr("Agent")
    note: showsLog || history.count === 0 ? "" : qsTr("%n entry(s)", "", history.count)
    tools: PushButton {
        objectName: "logButton"
        small: true
        text: pane.showsLog ? qsTr("Show agent") : qsTr("Show log")
        onClicked: pane.showsLog = !pane.showsLog
    }

    Connections {
        target: history
        function onWanted() { pane.showsLog = false }
    }
    ClientList { id: clientList; width: parent.width; visible: !pane.showsLog }
    TimelinePane { anchors { fill: parent; topMargin: clientList.height + reset.height + 6 } visible: !pane.showsLog }
    PushButton {
        id: reset
        objectName: "historyReset"
        y: clientList.height + 2
        height: visible ? implicitHeight : 0
        small: true
        visible: history.drive !== "" && !pane.showsLog
        text: qsTr("Only drive %1: show all").arg(history.drive)
        onClicked: history.show("")
    }
    LogPane { anchors.fill: parent; visible: pane.showsLog }
}
