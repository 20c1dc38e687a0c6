import QtQuick
import Tavrin

// A setting that is on or off, and what it does.
Card {
    id: root

    required property string title
    required property string description
    required property bool isOn

    signal flipped(isOn: bool)

    implicitHeight: texts.height + 24

    MouseArea {
        anchors.fill: parent
        onClicked: root.flipped(!root.isOn)
    }

    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.right: control.left
        anchors.rightMargin: 14
        y: 12
        spacing: 3

        Label {
            width: parent.width
            text: root.title
            wrapMode: Text.Wrap
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        Prose {
            width: parent.width
            text: root.description
            font.pixelSize: 12
            color: Theme.secondaryText
        }
    }

    Switch {
        id: control

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        label: root.title
        isOn: root.isOn
        onFlipped: isOn => root.flipped(isOn)
    }
}
