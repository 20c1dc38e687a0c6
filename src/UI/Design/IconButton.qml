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
        color: Theme.pressed
        visible: root.isHovered || root.isPressed
        opacity: root.isPressed ? 1 : 0.6
    }

    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: root.size
        color: root.color
    }

    FocusRing {
        gap: 0
    }
}
