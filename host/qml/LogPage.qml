import QtQuick 2.15
import QtQuick.Controls 2.15

Frame {
    ListView {
        anchors.fill: parent
        clip: true
        model: host.log
        ScrollBar.vertical: ScrollBar {}
        onCountChanged: positionViewAtEnd()
        delegate: Label { text: model.display; font.family: "monospace" }
    }
}
