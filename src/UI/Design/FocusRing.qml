import QtQuick
import Tavrin

// Shows where the keyboard is: around its parent, which says when.
Rectangle {
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -gap
    radius: 8
    color: "transparent"
    border.width: 2
    border.color: Theme.accentText
    visible: parent.activeFocus
}
