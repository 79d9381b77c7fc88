import QtQuick 2.15

// A disk: its properties and its bar.
Rectangle {
    id: card

    property bool current: false
    property bool compact: false
    property int currentEntry: -1
    // Room for the German texts, except in a narrow window.
    readonly property real lineWidth: Math.max(250 * theme.unit, Math.min(310 * theme.unit, width * 0.36))
    readonly property var pieces: model.segments

    signal chosen(int entry)
    signal menuWanted(int entry, Item place, real x, real y)

    Accessible.role: Accessible.ListItem
    Accessible.name: model.name + ", " + model.sizeText
    Accessible.description: [model.kind].concat(model.flags).join(", ")
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.onPressAction: chosen(0)
    height: (compact ? 36 : 84) * theme.unit
    color: theme.surface
    radius: 8
    border { width: 1; color: theme.border }

    DiskLine {
        x: 14
        width: bar.x - x - 8
        height: parent.height
        visible: card.compact
    }
    Column {
        visible: !card.compact
        x: 14
        width: 176 * theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3
        Row {
            spacing: 8
            Words { objectName: "diskName"; text: model.name; font { pixelSize: theme.heading; weight: Font.DemiBold } }
            Words { objectName: "diskSize"; text: model.sizeText; anchors.baseline: parent.children[0].baseline; font.pixelSize: theme.normal }
        }
        Words { objectName: "diskKind"; text: model.kind; width: parent.width; font.pixelSize: theme.small; color: theme.muted }
        Badge {
            objectName: "diskFlags"
            visible: model.flags.length > 0
            text: model.flags.join(", ")
            tone: model.alarm ? "bad" : "plain"
            width: Math.min(implicitWidth, parent.width)
        }
    }
    Item {
        id: bar
        objectName: "diskBar"
        anchors { fill: parent; leftMargin: card.compact ? card.lineWidth : 200 * theme.unit; rightMargin: 14; topMargin: card.compact ? 5 : 10; bottomMargin: anchors.topMargin }

        Binding { target: card.pieces; property: "barWidth"; value: bar.width }
        Repeater {
            model: card.pieces
            Segment {
                height: bar.height
                compact: card.compact
                selected: card.current && card.currentEntry === index
                onChosen: card.chosen(index)
                onMenuWanted: card.menuWanted(index, place, x, y)
            }
        }
        Rectangle {
            anchors.fill: parent
            visible: card.pieces.count === 0
            color: theme.window
            radius: 5
            Words { anchors.centerIn: parent; text: qsTr("Empty"); font.pixelSize: theme.small; color: theme.muted }
        }
    }
}
