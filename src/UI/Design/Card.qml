import QtQuick
import Tavrin

// A ground that things of one kind lie on.
Rectangle {
    property bool isEmphasised: false

    radius: 8
    color: isEmphasised ? Theme.hover : Theme.card
    border.width: 1
    border.color: isEmphasised ? Theme.hoverBorder : Theme.border
}
