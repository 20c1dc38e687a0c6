import QtQuick
import Tavrin

// A button that is a symbol and nothing else.
Pressable {
    id: root

    required property string symbol
    property real size: 14
    property color color: Theme.secondaryText

    implicitWidth: 28
    implicitHeight: 28

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.tint(Theme.pressed, root.isPressed ? 1 : root.isHovered ? 0.6 : 0)
        border.width: root.activeFocus ? 2 : 0
        border.color: Theme.accentText
    }

    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: root.size
        color: root.color
    }
}
