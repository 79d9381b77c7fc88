import QtQuick 2.15
import QtQuick.Controls 2.15

ListView {
    id: list

    objectName: "logList"
    clip: true
    model: host.log
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    Keys.forwardTo: [keys]
    ScrollBar.vertical: Scroller {}
    // The newest line stays visible unless the user has scrolled back.
    property bool atEnd: true
    function follow() { if (atEnd) positionViewAtEnd() }
    onMovementEnded: atEnd = atYEnd
    onCountChanged: Qt.callLater(follow)
    delegate: Words {
        width: ListView.view.width - 16
        leftPadding: 6
        text: model.display
        font { family: theme.fixedFont; pixelSize: theme.small }
        wrapMode: Text.Wrap
    }

    ListKeys { id: keys; view: list; onStarting: list.atEnd = false; onScrolled: list.atEnd = list.atYEnd }
    FocusRing { shown: list.activeFocus; anchors.margins: 0 }
}
