import QtQuick 2.15

// Reads "Simulation" or "Real disks" at all times: it stays above the shade of a dialog and above the dialog.
Badge {
    // The overlay of dialogs has 1000001.
    readonly property int aboveDialogs: 1000002

    objectName: "modeMark"
    z: aboveDialogs
    tone: host.realDisks ? "bad" : "good"
    text: host.realDisks ? qsTr("Real disks") : qsTr("Simulation")
    border { width: 1; color: inks[tone] }
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
