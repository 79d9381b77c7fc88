import QtQuick 2.15

// A call of the agent: time, tool, arguments and result.
Item {
    id: row

    readonly property var states: ({ running: qsTr("running"), queued: qsTr("queued"), rejected: qsTr("rejected"),
                                     answered: qsTr("answered"), held: qsTr("held"),
                                     done: qsTr("done"), failed: qsTr("failed"), cancelled: qsTr("cancelled") })
    readonly property var tones: ({ running: "accent", queued: "good", rejected: "bad", answered: "plain", held: "warn",
                                    done: "good", failed: "bad", cancelled: "warn" })
    readonly property var marks: ({ running: theme.accent, queued: theme.good, rejected: theme.bad, answered: theme.muted, held: theme.warn,
                                    done: theme.good, failed: theme.bad, cancelled: theme.warn })
    // The end of the call's task replaces the answer, which only stated that the task waits.
    readonly property bool ended: ["done", "failed", "cancelled"].indexOf(model.callState) >= 0
    readonly property bool isShort: model.result.length <= 24

    Accessible.role: Accessible.ListItem
    Accessible.name: model.tool
    Accessible.description: [model.time, model.callArguments, outcome.text, model.result, model.reason].filter(text => text !== "").join(", ")
    height: lines.height + 12

    Rectangle {
        x: 4
        y: 6
        width: 3
        height: parent.height - 12
        radius: 1.5
        color: row.marks[model.callState]
    }
    Column {
        id: lines
        x: 16
        y: 6
        width: parent.width - 22
        spacing: 2

        Item {
            width: parent.width
            height: 20 * theme.unit
            Words {
                id: time
                anchors.verticalCenter: parent.verticalCenter
                text: model.time
                font.pixelSize: theme.small
                color: theme.muted
            }
            Words {
                objectName: "callTool"
                anchors { left: time.right; leftMargin: 8; right: outcome.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
                text: model.tool
                font.weight: Font.DemiBold
            }
            Badge {
                id: outcome
                width: Math.min(implicitWidth, parent.width * 0.5)
                objectName: "callOutcome"
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                tone: row.tones[model.callState]
                text: model.times > 0 ? (model.times > 1 ? qsTr("rejected %n time(s)", "", model.times) : row.states.rejected)
                                       : row.isShort && model.result !== "" && !row.ended ? model.result : row.states[model.callState]
            }
        }
        Words {
            objectName: "callClient"
            width: parent.width
            visible: text !== ""
            text: model.client
            font.pixelSize: theme.small
            color: theme.muted
        }
        Words {
            objectName: "callArguments"
            width: parent.width
            visible: text !== ""
            text: model.callArguments
            font { family: theme.fixedFont; pixelSize: theme.small }
            color: theme.muted
            wrapMode: Text.Wrap
            maximumLineCount: 2
        }
        Words {
            objectName: "callResult"
            width: parent.width
            visible: !row.isShort
            text: model.result
            font.pixelSize: theme.small
            color: model.callState === "rejected" ? theme.bad : model.times > 0 ? theme.muted : theme.text
            wrapMode: Text.Wrap
            maximumLineCount: model.times > 0 ? 2 : 3
        }
        Words {
            objectName: "callReason"
            width: parent.width
            visible: text !== ""
            text: model.reason
            font.pixelSize: theme.small
            color: theme.bad
            wrapMode: Text.Wrap
            maximumLineCount: 3
        }
    }
}
