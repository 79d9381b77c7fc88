import QtQuick 2.15

// The connected clients of the agent service, at most three. One line is reserved, so that a client that connects for a
// moment moves nothing.
Column {
    Repeater {
        model: clients
        Item {
            width: parent.width
            height: 18 * theme.unit
            Words {
                objectName: "clientName"
                anchors { left: parent.left; leftMargin: 6; right: calls.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
                text: model.name
                elide: Text.ElideMiddle
                font { pixelSize: theme.small; weight: Font.DemiBold }
            }
            Words {
                id: calls
                objectName: "clientCalls"
                anchors { right: parent.right; rightMargin: 6; verticalCenter: parent.verticalCenter }
                text: qsTr("since %1", "time of day").arg(model.since) + " \u00b7 " + qsTr("%n call(s)", "", model.calls)
                font.pixelSize: theme.small
                color: theme.muted
            }
        }
    }
    Words {
        objectName: "noClients"
        height: 18 * theme.unit
        leftPadding: 6
        verticalAlignment: Text.AlignVCenter
        visible: clients.count === 0
        text: qsTr("No client is connected.")
        font.pixelSize: theme.small
        color: theme.muted
    }
}
