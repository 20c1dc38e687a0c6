import QtQuick
import Tavrin

// One of several that are all in sight, with its symbol above the text or before it. The selected one is the group's
// stop for the Tab key.
Pressable {
    id: root

    required property string symbol
    required property bool isSelected
    // The keyboard is in the group: it goes where the selection goes.
    required property bool isGroupFocused
    property bool isUpright: false
    property color symbolColor: Theme.secondaryText

    readonly property color foreground: isSelected ? Theme.accentText : Theme.text

    activeFocusOnTab: isSelected || activeFocus
    onIsSelectedChanged: {
        if (isSelected && isGroupFocused)
            forceActiveFocus(Qt.TabFocusReason);
    }
    implicitHeight: isUpright ? 58 : 36

    Accessible.role: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: isSelected

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: root.isSelected ? Theme.hover : root.isPressed ? Theme.pressed : root.isHovered ? Theme.well : Theme.card
        border.width: root.isSelected ? 2 : 1
        border.color: root.isSelected ? Theme.accent : Theme.fieldBorder
    }

    FocusRing {
        // Apart from the border of the selected one.
        gap: 4
        radius: 11
    }

    Symbol {
        id: picture

        x: root.isUpright ? (root.width - width) / 2 : 12
        y: root.isUpright ? 11 : (root.height - height) / 2
        name: root.symbol
        size: root.isUpright ? 18 : 15
        color: root.isSelected ? Theme.accentText : root.symbolColor
    }

    Label {
        x: root.isUpright ? 4 : 37
        y: root.isUpright ? root.height - height - 9 : (root.height - height) / 2
        width: root.width - x - 8
        text: root.label
        horizontalAlignment: root.isUpright ? Text.AlignHCenter : Text.AlignLeft
        font.pixelSize: 12
        font.weight: root.isSelected ? Font.DemiBold : Font.Normal
        color: root.foreground
        Accessible.ignored: true
    }
}
