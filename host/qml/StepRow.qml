import QtQuick 2.15

// The steps of a guide, the current one marked.
Flow {
    spacing: 6

    Repeater {
        model: guide.steps
        Row {
            spacing: 6
            Words {
                visible: index > 0
                anchors.verticalCenter: parent.verticalCenter
                text: "\u203a"
                color: theme.muted
            }
            Badge {
                objectName: "guideStep"
                Accessible.role: Accessible.ListItem
                Accessible.selectable: true
                Accessible.selected: current
                readonly property bool current: index === guide.step
                text: (index + 1) + "  " + modelData
                tone: current ? (guide.rejection === "" ? "accent" : "bad") : "plain"
                border { width: current ? 1 : 0; color: inks[tone] }
            }
        }
    }
}
