import QtQuick
import Tavrin

// A switch and what it is for; pressing the text flips it, too.
Item {
    id: root

    required property string text
    required property bool isOn

    signal flipped(isOn: bool)

    implicitWidth: control.width + 9 + label.implicitWidth
    implicitHeight: Math.max(control.height, label.height)

    MouseArea {
        anchors.fill: parent
        onClicked: root.flipped(!root.isOn)
    }

    Switch {
        id: control

        anchors.verticalCenter: parent.verticalCenter
        label: root.text
        isOn: root.isOn
        onFlipped: isOn => root.flipped(isOn)
    }

    Label {
        id: label

        anchors.left: control.right
        anchors.leftMargin: 9
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        font.pixelSize: 12
        Accessible.ignored: true
    }
}
