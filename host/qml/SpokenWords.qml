import QtQuick 2.15

// A text that a screen reader reads.
Words {
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
