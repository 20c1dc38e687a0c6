import QtQuick
import Tavrin

// One key of a combination: the key itself is primary, a modifier is not.
Rectangle {
    id: root

    required property string text
    property bool isPrimary: false

    implicitWidth: label.implicitWidth + 16
    implicitHeight: label.implicitHeight + 8
    radius: 5
    color: isPrimary ? Theme.tint(Theme.accent, 0.18) : Theme.badge
    border.width: 1
    border.color: Theme.tint(Theme.text, 0.1)

    Label {
        id: label

        anchors.centerIn: parent
        text: root.text
        font.family: "monospace"
        font.pixelSize: 12
        font.weight: root.isPrimary ? Font.Bold : Font.Medium
        color: root.isPrimary ? Theme.accentText : Theme.text
    }
}
