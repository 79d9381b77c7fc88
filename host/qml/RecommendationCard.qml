import QtQuick 2.15

// The scan's recommendation with its buttons, or the message that a scan found nothing. Escape presses the last button.
Rectangle {
    id: card

    objectName: "recommendationCard"
    readonly property var choiceTexts: link.emptyScan ? [qsTr("Close")] : link.buttons
    function choose(index) {
        if (link.emptyScan)
            link.closeEmptyScan()
        else
            link.answer(index)
    }
    visible: link.message !== "" || link.emptyScan
    implicitHeight: Math.max(message.height, 34 * theme.unit) + 28 * theme.unit
    radius: 8
    color: theme.accentSurface
    border { width: 1; color: theme.accent }
    Keys.onEscapePressed: if (link.emptyScan || choiceTexts.length > 1) choose(choiceTexts.length - 1)

    Column {
        id: message
        anchors { left: parent.left; leftMargin: 16; right: choices.left; rightMargin: 16; verticalCenter: parent.verticalCenter }
        spacing: 2
        Words { text: qsTr("Recommendation"); font { pixelSize: theme.small; weight: Font.DemiBold } color: theme.accent }
        Words {
            objectName: "recommendationText"
            width: parent.width
            text: link.emptyScan ? qsTr("The scan found nothing to recommend.") : link.message
            wrapMode: Text.Wrap
            maximumLineCount: 5
        }
    }
    Row {
        id: choices
        anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
        spacing: 8
        Repeater {
            model: card.choiceTexts
            PushButton {
                objectName: "recommendationButton"
                primary: index === 0
                text: modelData
                onClicked: card.choose(index)
            }
        }
    }
}
