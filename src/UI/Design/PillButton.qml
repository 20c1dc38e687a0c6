import QtQuick
import Tavrin

// A button with a text, maybe with a symbol before it: prominent (what one came for), plain or destructive.
Pressable {
    id: root

    enum Kind { Plain, Prominent, Destructive }

    required property string text
    property string symbol
    // The symbol stands after the text: it points onwards.
    property bool isSymbolTrailing: false
    property int kind: PillButton.Plain
    property real textSize: 13

    readonly property color foreground: kind === PillButton.Plain ? Theme.text : Theme.onAccent

    label: text
    implicitWidth: content.implicitWidth + 2 * 14
    implicitHeight: 30

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: {
            if (root.kind === PillButton.Destructive)
                return root.isPressed ? Qt.darker(Theme.destructive, 1.15) : Theme.destructive;
            if (root.kind === PillButton.Prominent)
                return root.isPressed ? Theme.accentPressed : Theme.accent;
            return root.isPressed ? Theme.pressed : root.isHovered ? Theme.well : Theme.card;
        }
        border.width: root.kind === PillButton.Plain ? 1 : 0
        border.color: Theme.fieldBorder
    }

    FocusRing {
        // Apart from the ground of a prominent one, which has nearly its colour.
        gap: 4
        radius: 11
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 7
        layoutDirection: root.isSymbolTrailing ? Qt.RightToLeft : Qt.LeftToRight

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: root.textSize
            color: root.foreground
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            color: root.foreground
            font.pixelSize: root.textSize
            font.weight: root.kind === PillButton.Plain ? Font.Medium : Font.DemiBold
            Accessible.ignored: true
        }
    }
}
