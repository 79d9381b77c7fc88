import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    id: window

    // A disk of 10 GB with one partition. Sizes are in bytes, sectors have 512 bytes.
    readonly property var disks: [{
        diskIndex: 0, diskInterface: "SATA", size: 10e9, usedSize: 1e9, isGPT: true,
        partitions: [{
            diskIndex: 0, partitionIndex: 0, driveLetter: "D", label: "Data", fsString: "NTFS",
            size: 8e9, usedSize: 1e9, sectorSize: 512, clusterSize: 8, startSector: 2048, endSector: 15627047
        }]
    }]

    function start() {
        aibridge.setDiskInfo(disks);
        visible = true;
    }

    width: 480
    height: 240
    title: "Example host"

    Connections {
        target: partitionmanager
        function onOrdered(number, params) {
            orders.text += "order " + number + " " + JSON.stringify(params) + "\n";
            console.log("order", number, JSON.stringify(params));
        }
    }

    Text {
        id: orders

        anchors.fill: parent
        anchors.margins: 12
        text: "Waiting for an agent.\n"
        wrapMode: Text.Wrap
    }
}
