import QtQuick 2.15

// What the agent does; a button turns it into the host's log.
Panel {
    id: pane

    property bool showsLog: false

    title: showsLog ? "Log" : "Agent"
    note: showsLog || timeline.count === 0 ? "" : timeline.count + (timeline.count === 1 ? " entry" : " entries")
    tools: PushButton {
        objectName: "logButton"
        small: true
        text: pane.showsLog ? "Show agent" : "Show log"
        onClicked: pane.showsLog = !pane.showsLog
    }

    TimelinePane { anchors.fill: parent; visible: !pane.showsLog }
    LogPane { anchors.fill: parent; visible: pane.showsLog }
}
