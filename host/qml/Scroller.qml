import QtQuick 2.15
import QtQuick.Controls 2.15

ScrollBar {
    id: bar

    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    padding: 1
    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 40
        radius: 3
        color: bar.pressed ? theme.accent : theme.muted
        opacity: 0.6
    }
}
