import QtQuick 2.15

// A sample and its meaning.
Row {
    property alias text: label.text
    default property alias sample: box.data

    spacing: 5

    Item { id: box; width: 18 * theme.unit; height: 12 * theme.unit; anchors.verticalCenter: parent.verticalCenter }
    Words { id: label; objectName: "legendText"; font.pixelSize: theme.small; color: theme.muted }
}
