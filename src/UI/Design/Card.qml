import QtQuick
import Tavrin

// A ground that things of one kind lie on.
Rectangle {
    property bool isEmphasised: false
    // The keyboard is here.
    property bool isFocused: false

    radius: 8
    color: isEmphasised ? Theme.hover : Theme.card
    border.width: isFocused ? 2 : 1
    border.color: isFocused ? Theme.accentText : isEmphasised ? Theme.hoverBorder : Theme.border
}
