import QtQuick 2.15

// The scan's recommendation with its buttons, or the message that a scan found nothing. Escape presses the last button.
Rectangle {
    id: card

    objectName: "recommendationCard"
    readonly property var choiceTexts: link.emptyScan ? [qsTr("Close")] : link.buttons
    // A narrow card has its buttons below the text.
    property bool stacked: width < 480 * theme.unit
    readonly property real verticalMargin: 12 * theme.unit
    function choose(index) {
        if (link.emptyScan)
            link.closeEmptyScan()
        else
            link.answer(index)
    }

    implicitHeight: (stacked ? message.implicitHeight + 8 + choices.height : Math.max(message.implicitHeight, choices.height)) + 2 * verticalMargin
    Accessible.role: Accessible.AlertMessage
    Accessible.name: messageText.text
    radius: 8
    color: theme.accentSurface
    border { width: 1; color: theme.accent }
    Keys.onEscapePressed: if (link.emptyScan || choiceTexts.length > 1) choose(choiceTexts.length - 1)

    ScrollArea {
        id: message
        objectName: "recommendationMessage"
        anchors {
            left: parent.left; leftMargin: 16; top: parent.top; topMargin: card.verticalMargin
            right: card.stacked ? parent.right : choices.left; rightMargin: 8
        }
        height: Math.min(implicitHeight, card.height - 2 * card.verticalMargin - (card.stacked ? choices.height + 8 : 0))
        spacing: 2
        Words { text: qsTr("Recommendation"); width: parent.width; font { pixelSize: theme.small; weight: Font.DemiBold } color: theme.accent }
        Words {
            id: messageText
            objectName: "recommendationText"
            width: parent.width
            text: link.emptyScan ? qsTr("The scan found nothing to recommend.") : link.message
            wrapMode: Text.Wrap
        }
    }
    Flow {
        id: choices
        x: card.stacked ? 16 : card.width - 16 - width
        y: card.stacked ? message.y + message.height + 8 : (card.height - height) / 2
        width: Math.min(naturalWidth, card.stacked ? card.width - 32 : card.width * 0.45)
        readonly property real naturalWidth: {
            let sum = -spacing
            for (let i = 0; i < repeater.count; ++i)
                sum += (repeater.itemAt(i) === null ? 0 : repeater.itemAt(i).implicitWidth) + spacing
            return Math.ceil(Math.max(0, sum))
        }
        spacing: 8
        Repeater {
            id: repeater
            model: card.choiceTexts
            PushButton {
                objectName: "recommendationButton"
                width: Math.min(implicitWidth, choices.width)
                primary: index === 0
                text: modelData
                onClicked: card.choose(index)
            }
        }
    }
}
