import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

Frame {
    visible: link.message !== ""

    RowLayout {
        anchors.fill: parent

        Label { text: link.message; wrapMode: Text.Wrap; Layout.fillWidth: true }
        Repeater {
            model: link.buttons
            Button { text: modelData; highlighted: index === 0; onClicked: link.answer(index) }
        }
    }
}
