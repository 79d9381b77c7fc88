import QtQuick 2.15

// The meaning of the colours and patterns in the disk bars.
Flow {
    id: legend

    // The last entry is for all other file systems.
    readonly property var systems: ["NTFS", "FAT", "exFAT", "ReFS", ""]

    spacing: 12

    Repeater {
        model: legend.systems
        LegendEntry {
            text: modelData === "" ? qsTr("Other") : modelData
            Rectangle { anchors.fill: parent; radius: 2; color: { theme.dark; return theme.fileSystem(modelData, false) } }
        }
    }
    LegendEntry {
        text: qsTr("Used")
        UsageMeter { anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter } share: 0.6; fileSystem: "NTFS" }
    }
    LegendEntry {
        text: qsTr("Free")
        Rectangle { anchors.fill: parent; radius: 2; color: theme.window; border { width: 1; color: theme.border } }
    }
    LegendEntry {
        text: qsTr("Planned")
        Rectangle {
            anchors.fill: parent
            radius: 2
            color: theme.accentSurface
            border { width: 2; color: theme.accent }
        }
    }
    LegendEntry {
        text: qsTr("Will be lost")
        Hatching { anchors.fill: parent }
    }
}
