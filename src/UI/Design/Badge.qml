import QtQuick
import Tavrin

// A short text on a rounded ground.
Rectangle {
    id: root

    required property string text
    property alias textColor: label.color
    property alias textSize: label.font.pixelSize
    property alias isBold: label.font.bold

    implicitWidth: label.implicitWidth + 14
    implicitHeight: label.implicitHeight + 6
    radius: Math.min(height / 2, 9)
    color: Theme.badge

    Label {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 10)
        text: root.text
        font.pixelSize: 11
        color: Theme.secondaryText
    }
}
