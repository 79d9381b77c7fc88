import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

GroupBox {
    title: "Guide"

    ColumnLayout {
        anchors.fill: parent

        Label { text: host.guideTitle === "" ? "No guide is open." : host.guideTitle; wrapMode: Text.Wrap; font.bold: true; Layout.fillWidth: true }
        Label { text: host.guideText; wrapMode: Text.Wrap; Layout.fillWidth: true }
        Button { text: "Close"; visible: host.guideTitle !== ""; onClicked: host.dismissGuide() }
        Item { Layout.fillHeight: true }
        Label { text: host.address === "" ? "" : "Opened address: " + host.address; wrapMode: Text.WrapAnywhere; Layout.fillWidth: true }
    }
}
