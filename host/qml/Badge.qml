import QtQuick 2.15

// A word on a coloured background; `tone` is plain, accent, good, bad or warn. A tip shows an elided text.
Rectangle {
    property alias text: label.text
    property string tone: "plain"

    readonly property var grounds: ({ plain: theme.raised, accent: theme.accentSurface, good: theme.goodSurface,
                                      bad: theme.badSurface, warn: theme.warnSurface })
    readonly property var inks: ({ plain: theme.muted, accent: theme.accent, good: theme.good,
                                   bad: theme.bad, warn: theme.warn })

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    implicitWidth: label.implicitWidth + 14 * theme.unit
    implicitHeight: 20 * theme.unit
    radius: height / 2
    color: grounds[tone]

    Words {
        id: label
        anchors { left: parent.left; right: parent.right; margins: 7 * theme.unit; verticalCenter: parent.verticalCenter }
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: theme.small
        font.weight: Font.DemiBold
        color: parent.inks[parent.tone]
    }
    HoverHandler { id: hover; enabled: label.truncated }
    Loader {
        id: tip
        active: hover.hovered && label.truncated
        sourceComponent: Tip { parent: tip.parent; visible: true; text: label.text }
    }
}
