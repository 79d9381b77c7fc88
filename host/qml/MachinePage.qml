import QtQuick 2.15
import QtQuick.Controls 2.15

Frame {
    ListView {
        anchors.fill: parent
        clip: true
        model: machineRows
        ScrollBar.vertical: ScrollBar {}
        delegate: Item {
            width: ListView.view.width
            height: 26

            Label {
                x: isDiskRow ? 0 : 20
                width: parent.width - 180
                anchors.verticalCenter: parent.verticalCenter
                text: rowText
                elide: Text.ElideRight
                font.bold: isDiskRow
                opacity: isFreeRow ? 0.5 : 1
            }
            ProgressBar {
                anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                width: 140
                value: usedShare
                visible: !isFreeRow
            }
        }
    }
}
