import QtQuick 2.15
import QtQuick.Window 2.15

// The open guide at its current step, with the reason for a rejection. A new guide takes the focus with the button
// that changes nothing, and returns the focus when it closes.
Panel {
    id: pane

    property Item focusBefore: null
    property bool shown: true

    // A guide has opened and must become visible.
    signal wanted()

    function holds(item) {
        for (; item !== null; item = item.parent) {
            if (item === pane)
                return true
        }
        return false
    }
    function takeFocus() {
        const holder = Window.activeFocusItem
        wanted()
        if (!visible || confirmation.open || interruption.open)
            return
        if (!holds(holder))
            focusBefore = holder
        closeButton.forceActiveFocus()
    }
    function returnFocus() {
        const target = focusBefore
        focusBefore = null
        if (!holds(Window.activeFocusItem) || target === null)
            return
        Qt.callLater(() => { if (target.visible) target.forceActiveFocus() }) // its pane may return after the guide
    }

    objectName: "guidePane"
    onVisibleChanged: if (!visible && !guide.open) returnFocus()
    visible: guide.open && !guide.dialog && shown
    implicitHeight: lines.implicitHeight + headHeight + 12 * theme.unit
    title: guide.title
    border.color: guide.destructive ? theme.bad : theme.accent
    tools: [
        PushButton {
            objectName: "guideStart"
            small: true
            primary: true
            destructive: guide.destructive
            visible: guide.canStart
            enabled: guide.rejection === ""
            text: qsTr("Start")
            onClicked: guide.start()
        },
        PushButton { id: closeButton; objectName: "guideClose"; small: true; text: qsTr("Close"); onClicked: guide.dismiss() }
    ]

    Connections {
        target: guide
        function onOpened() { pane.takeFocus() }
    }
    ScrollArea {
        id: lines
        objectName: "guideLines"
        anchors { fill: parent; leftMargin: 6; bottomMargin: -4 }
        spacing: 8

        StepRow { width: parent.width; visible: guide.steps.length > 0 }
        FactList { width: parent.width }
        LossNotice {
            prefix: "guide"
            visible: guide.destructive
            width: parent.width
            realDisk: host.realDisks
            risk: guide.risk
            losses: guide.losses
        }
        SpokenWords { visible: text !== ""; width: parent.width; text: guide.text; font.pixelSize: theme.small; color: theme.muted; wrapMode: Text.Wrap }
        Rectangle {
            visible: guide.rejection !== ""
            width: parent.width
            height: rejection.height + 12
            radius: 6
            color: theme.badSurface
            SpokenWords {
                id: rejection
                objectName: "guideRejection"
                anchors { left: parent.left; right: parent.right; margins: 10; verticalCenter: parent.verticalCenter }
                text: guide.rejection
                color: theme.bad
                wrapMode: Text.Wrap
            }
        }
    }
}
