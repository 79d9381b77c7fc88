import QtQuick 2.15
import QtQuick.Controls 2.15

// The data that an order destroys or puts at risk. The object names of its parts start with `prefix`.
Column {
    id: notice

    property string prefix
    property bool risk: false
    property bool realDisk: false
    property var losses: []
    property real listLimit: 100
    readonly property string warning: realDisk
        ? (risk ? qsTr("This order changes a real disk. If it fails, this data can be lost:")
                : qsTr("This order changes a real disk. It destroys this data permanently:"))
        : (risk ? qsTr("If this order fails, this data can be lost:")
                : qsTr("This order destroys this data permanently:"))

    spacing: 6

    SpokenWords {
        objectName: notice.prefix + "Warning"
        width: parent.width
        text: notice.warning
        wrapMode: Text.Wrap
        color: theme.bad
        font.weight: Font.DemiBold
    }
    ListView {
        id: list
        objectName: notice.prefix + "Losses"
        width: parent.width
        height: Math.max(0, Math.min(contentHeight, notice.listLimit))
        visible: count > 0
        clip: true
        spacing: 4
        model: notice.losses
        Accessible.role: Accessible.List
        Accessible.name: notice.warning
        activeFocusOnTab: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        ScrollBar.vertical: Scroller {}
        delegate: Words {
            objectName: notice.prefix + "Loss"
            width: ListView.view.width - 12
            text: modelData
            Accessible.role: Accessible.ListItem
            Accessible.name: text
            font.pixelSize: theme.small
            wrapMode: Text.Wrap
        }
        Keys.onPressed: {
            event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
            if (event.accepted)
                currentIndex = event.key === Qt.Key_Home ? 0 : count - 1
        }
        FocusRing { shown: list.activeFocus; anchors.margins: 0 }
    }
    SpokenWords {
        objectName: notice.prefix + "NoPartition"
        visible: list.count === 0
        width: parent.width
        text: qsTr("The disk has no known partition. Data without a partition is lost.")
        wrapMode: Text.Wrap
        font.pixelSize: theme.small
    }
}
