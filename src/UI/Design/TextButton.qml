import QtQuick
import Tavrin

// A button that is a coloured text, maybe with a symbol before it.
Pressable {
    id: root

    required property string text
    property string symbol
    property color color: Theme.accentText
    property color symbolColor: color
    property real textSize: 11
    property color ground: "transparent"

    label: text
    implicitWidth: content.implicitWidth + 16
    implicitHeight: 24

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: root.isPressed ? Theme.pressed : root.isHovered ? Theme.well : root.ground
    }

    FocusRing {
        gap: 0
        radius: 6
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: 13
            color: root.symbolColor
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font.pixelSize: root.textSize
            font.weight: Font.Medium
            color: root.color
            Accessible.ignored: true
        }
    }
}
