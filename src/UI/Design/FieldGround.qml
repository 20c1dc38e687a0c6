import QtQuick
import Tavrin

// What a field lies on: its border tells whether the keyboard is in it.
Rectangle {
    property bool isFocused: false

    radius: 7
    color: Theme.field
    border.width: isFocused ? 2 : 1
    border.color: isFocused ? Theme.accentText : Theme.fieldBorder
}
