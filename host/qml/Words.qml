import QtQuick 2.15

Text {
    font.family: theme.font
    font.pixelSize: theme.normal
    color: theme.text
    elide: Text.ElideRight
    textFormat: Text.PlainText
}
