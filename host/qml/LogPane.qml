import QtQuick 2.15
import QtQuick.Controls 2.15

ListView {
    id: list

    objectName: "logList"
    clip: true
    model: host.log
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: Scroller {}
    onCountChanged: Qt.callLater(positionViewAtEnd)
    delegate: Words {
        width: ListView.view.width - 16
        leftPadding: 6
        text: model.display
        font { family: theme.fixedFont; pixelSize: theme.small }
        wrapMode: Text.Wrap
    }

    FocusRing { shown: list.activeFocus; anchors.margins: 0 }
}
