import QtQuick 2.15

// A term and its meaning.
Item {
    property alias term: name.text
    property alias meaning: explanation.text

    Accessible.role: Accessible.StaticText
    Accessible.name: term + ": " + meaning
    height: Math.max(name.height, explanation.height)

    Words {
        id: name
        objectName: "informationTerm"
        width: Math.min(150 * theme.unit, parent.width / 3)
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
    }
    Words {
        id: explanation
        objectName: "informationMeaning"
        anchors { left: name.right; leftMargin: 10; right: parent.right }
        wrapMode: Text.Wrap
    }
}
