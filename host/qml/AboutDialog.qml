import QtQuick 2.15

InformationDialog {
    objectName: "aboutDialog"
    title: qsTr("Sandbox host of AIBridge (zorhost)")
    lines: [
        { term: qsTr("Version"), meaning: program.version },
        { term: qsTr("Disks"), meaning: host.realDisks ? qsTr("Real: orders change the disks and images of the command line.")
                                                       : qsTr("Simulated: no disk of the computer is changed.") },
        { term: qsTr("Libraries"), meaning: qsTr("Qt %1, Apache Thrift %2").arg(program.qtVersion).arg(program.thriftVersion) },
        { term: qsTr("Licence"), meaning: qsTr("No licence is given.") }
    ]
}
