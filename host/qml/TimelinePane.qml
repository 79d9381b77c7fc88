import QtQuick 2.15
import QtQuick.Controls 2.15

ListView {
    id: list

    objectName: "timelineList"
    clip: true
    model: history
    activeFocusOnTab: true
    cacheBuffer: assistance.extraHeight
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Calls of the agent")
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: Scroller {}
    // The newest row stays visible unless the user has scrolled back.
    property bool atEnd: true
    function follow() { if (atEnd) positionViewAtEnd() }
    onMovementEnded: atEnd = atYEnd
    onCountChanged: Qt.callLater(follow)
    onContentHeightChanged: Qt.callLater(follow)
    onHeightChanged: Qt.callLater(follow)
    Keys.forwardTo: [keys]
    delegate: TimelineRow { width: ListView.view.width - 10 }

    ListKeys { id: keys; view: list; onStarting: list.atEnd = false; onScrolled: list.atEnd = list.atYEnd }
    FocusRing { shown: list.activeFocus; anchors.margins: 0 }
    SpokenWords {
        anchors.centerIn: parent
        visible: list.count === 0
        text: history.drive === "" ? qsTr("The agent has not called a tool yet.") : qsTr("No call names drive %1.").arg(history.drive)
        font.pixelSize: theme.small
        color: theme.muted
    }
}
