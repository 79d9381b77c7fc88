import QtQuick 2.15
import QtQuick.Controls 2.15

// A text next to the pointer, in the colours of the window.
ToolTip {
    id: tip

    delay: 400
    padding: 8
    width: Math.min(implicitWidth, 420 * theme.unit)
    background: Rectangle {
        radius: 6
        color: theme.surface
        border { width: 1; color: theme.border }
    }
    contentItem: Words {
        objectName: "tipText"
        text: tip.text
        wrapMode: Text.Wrap
        font.pixelSize: theme.small
    }
}
