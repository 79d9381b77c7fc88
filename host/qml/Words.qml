import QtQuick 2.15

Text {
    font.family: theme.font
    font.pixelSize: 13
    color: theme.text
    elide: Text.ElideRight
    textFormat: Text.PlainText
}
