import QtQuick 2.15

// The used share of a partition. Its colours differ more than those of the areas above it.
Rectangle {
    property real share: 0
    property string fileSystem

    objectName: "usageMeter"
    height: 5
    color: theme.raised

    Rectangle {
        objectName: "usedMeter"
        width: parent.width * parent.share
        height: parent.height
        color: { theme.dark; return theme.fileSystem(parent.fileSystem, false) }
    }
}
