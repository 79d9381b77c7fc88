import QtQuick 2.15

// A surface with a title; its content fills the space below the title.
Rectangle {
    property alias title: heading.text
    property alias note: aside.text
    property alias tools: toolRow.data
    default property alias content: body.data

    readonly property real headHeight: heading.height + 21 * theme.unit

    Accessible.role: Accessible.Grouping
    Accessible.name: title
    color: theme.surface
    radius: 8
    border { width: 1; color: theme.border }

    Words {
        id: heading
        anchors { left: parent.left; leftMargin: 14; top: parent.top; topMargin: 11 * theme.unit }
        width: Math.min(implicitWidth, toolRow.x - x - 8)
        wrapMode: Text.Wrap
        maximumLineCount: 2
        font { pixelSize: theme.heading; weight: Font.DemiBold }
    }
    Words {
        id: aside
        anchors { left: heading.right; leftMargin: 8; baseline: heading.baseline; right: toolRow.left; rightMargin: 8 }
        font.pixelSize: theme.small
        color: theme.muted
    }
    Row {
        id: toolRow
        anchors { right: parent.right; rightMargin: 12; verticalCenter: heading.verticalCenter }
        spacing: 6
    }
    Item {
        id: body
        anchors { fill: parent; topMargin: parent.headHeight; leftMargin: 8; rightMargin: 8; bottomMargin: 8 }
    }
}
