import QtQuick 2.15
import QtQuick.Controls 2.15

// The menu of an entry: calls for the agent's command line to copy, and the history of its drive.
Menu {
    id: menu

    property var calls: []
    property string letter: ""

    function show(pieces, entry, place, x, y) {
        calls = pieces.calls(entry)
        letter = pieces.letter(entry)
        popup(place, x, y)
    }

    objectName: "segmentMenu"
    width: 470 * theme.unit
    margins: 4
    background: Rectangle {
        radius: 8
        color: theme.surface
        border { width: 1; color: theme.border }
    }

    Instantiator {
        model: menu.calls
        delegate: MenuLine { objectName: "copyItem"; text: qsTr("Copy: %1").arg(modelData); onTriggered: host.copy(modelData) }
        onObjectAdded: menu.insertItem(index, object)
        onObjectRemoved: menu.removeItem(object)
    }
    MenuLine {
        objectName: "historyItem"
        text: qsTr("Show the history of drive %1").arg(menu.letter)
        visible: menu.letter !== ""
        height: visible ? implicitHeight : 0
        onTriggered: history.show(menu.letter)
    }
}
