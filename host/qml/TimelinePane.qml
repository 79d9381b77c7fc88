import QtQuick 2.15
import QtQuick.Controls 2.15

ListView {
    id: list

    objectName: "timelineList"
    clip: true
    model: timeline
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: Scroller {}
    // The newest row stays visible unless the user has scrolled back.
    property bool atEnd: true
    onMovementEnded: atEnd = atYEnd
    onCountChanged: if (atEnd) Qt.callLater(positionViewAtEnd)
    onContentHeightChanged: if (atEnd) Qt.callLater(positionViewAtEnd)
    onHeightChanged: if (atEnd) Qt.callLater(positionViewAtEnd)
    Keys.onUpPressed: { atEnd = false; flick(0, 600) }
    Keys.onDownPressed: flick(0, -600)
    Keys.onPressed: if (event.key === Qt.Key_End) { atEnd = true; positionViewAtEnd() }
    delegate: TimelineRow { width: ListView.view.width - 10 }

    FocusRing { shown: list.activeFocus; anchors.margins: 0 }
    Words {
        anchors.centerIn: parent
        visible: list.count === 0
        text: qsTr("The agent has not called a tool yet.")
        font.pixelSize: theme.small
        color: theme.muted
    }
}
