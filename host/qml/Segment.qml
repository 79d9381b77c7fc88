import QtQuick 2.15

// One partition or free region in a disk's bar.
Rectangle {
    id: segment

    property bool selected: false
    property bool compact: false
    readonly property bool roomy: width >= 50 * theme.unit
    // A border would cover the whole entry.
    readonly property bool narrow: width < 8

    readonly property bool marked: model.mark !== ""
    readonly property color markColour: model.mark === "target" ? theme.bad : theme.good

    // Shown if there is not enough room for the title.
    readonly property string letter: width >= 24 * theme.unit && model.title[1] === ":" ? model.title.substring(0, 2) : ""

    signal chosen()
    signal menuWanted(Item place, real x, real y)

    Accessible.role: Accessible.ListItem
    Accessible.name: model.title
    Accessible.description: model.details
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: chosen()
    // Within the list of disks, so that a screen reader reads the entry that the arrow keys select.
    onSelectedChanged: if (selected) focus = true
    x: model.pieceLeft
    z: narrow && selected ? 1 : 0
    width: model.pieceWidth
    color: { theme.dark; return model.isFree ? theme.window : narrow ? theme.fileSystem(model.fileSystem, false) : theme.raised }
    radius: narrow ? 0 : 5
    border {
        width: narrow ? 0 : selected || marked ? 2 : 1
        color: selected ? theme.accent : marked ? markColour : theme.border
    }

    Rectangle {
        objectName: "usedPart"
        anchors { left: parent.left; top: parent.top; bottom: parent.bottom; margins: segment.border.width }
        width: Math.max(0, (parent.width - 2 * segment.border.width) * model.usedShare)
        radius: 4
        visible: !model.isFree && !segment.narrow
        color: { theme.dark; return theme.fileSystem(model.fileSystem, true) }
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: segment.border.width }
        height: 4
        radius: 2
        visible: !model.isFree && !segment.narrow
        color: { theme.dark; return theme.fileSystem(model.fileSystem, false) }
    }
    UsageMeter {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: segment.border.width }
        visible: !model.isFree && !segment.narrow && model.usedShare > 0
        share: model.usedShare
        fileSystem: model.fileSystem
    }
    Loader {
        anchors.fill: parent
        active: model.lost || model.ghosts.length > 0
        sourceComponent: PendingOverlay { lost: model.lost; busy: model.busy; ghosts: model.ghosts }
    }
    Rectangle {
        objectName: "narrowSelection"
        anchors { horizontalCenter: parent.horizontalCenter; top: parent.top; bottom: parent.bottom; topMargin: -4; bottomMargin: -4 }
        width: Math.max(4, segment.width)
        visible: segment.narrow && segment.selected
        color: theme.accent
    }
    Column {
        anchors { left: parent.left; right: parent.right; margins: 8; top: parent.top; topMargin: segment.compact ? 5 : 9 }
        visible: segment.roomy
        spacing: 1
        Words {
            objectName: "segmentTitle"
            text: model.title
            width: parent.width
            font { pixelSize: theme.small; weight: Font.DemiBold }
            color: model.isFree ? theme.muted : theme.text
        }
        Words {
            objectName: "segmentSubtitle"
            visible: !segment.compact
            text: model.subtitle
            width: parent.width
            font.pixelSize: theme.small
            color: model.isFree ? theme.muted : theme.text
        }
        Words {
            objectName: "segmentFlags"
            // The labels at the bottom would cover them.
            visible: !segment.compact && !markLabel.visible && !(model.busy && host.remaining !== "")
            text: model.flags.join(" \u00b7 ")
            width: parent.width
            font.pixelSize: theme.small
            color: theme.text
        }
    }
    Words {
        anchors { horizontalCenter: parent.horizontalCenter; top: parent.top; topMargin: segment.compact ? 5 : 9 }
        visible: !segment.roomy
        text: segment.letter
        font { pixelSize: theme.small; weight: Font.DemiBold }
    }
    // The part of the open guide. A narrow entry has the frame alone.
    Rectangle {
        objectName: "segmentMark"
        anchors { fill: parent; margins: segment.narrow ? 0 : 1 }
        visible: segment.marked
        property string mark: model.mark
        color: "transparent"
        radius: 4
        border { width: 3; color: segment.markColour }
    }
    Badge {
        id: markLabel
        objectName: "segmentMarkLabel"
        anchors { right: parent.right; bottom: parent.bottom; margins: 5 }
        visible: segment.marked && !segment.compact && segment.width >= implicitWidth + 10
        height: 18 * theme.unit
        tone: model.mark === "target" ? "bad" : "good"
        text: model.mark === "target" ? qsTr("Target") : qsTr("Source")
    }
    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: {
            segment.chosen()
            if (mouse.button === Qt.RightButton)
                segment.menuWanted(segment, mouse.x, mouse.y)
        }
    }
    Loader {
        active: area.containsMouse
        sourceComponent: Tip { parent: segment; visible: true; text: model.details }
    }
}
