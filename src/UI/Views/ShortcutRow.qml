import QtQuick

// One shortcut, to be read.
Rectangle {
    id: root

    required property string name
    required property string combination
    required property string type
    required property string description
    required property bool isEnabled

    height: 52
    radius: 8
    color: "#ffffff"
    border.color: "#dedee3"
    opacity: isEnabled ? 1 : 0.55

    Accessible.role: Accessible.ListItem
    Accessible.name: name + " (" + combination + ")"

    Label {
        id: nameLabel

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.top: parent.top
        anchors.topMargin: 8
        width: Math.min(implicitWidth, root.width - badge.width - 38)
        text: root.name
        font.pixelSize: 14
    }

    Badge {
        id: badge

        anchors.left: nameLabel.right
        anchors.leftMargin: 8
        anchors.verticalCenter: nameLabel.verticalCenter
        text: root.combination
    }

    Label {
        anchors.left: nameLabel.left
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 8
        text: root.description
        font.pixelSize: 12
        color: "#5f5f64"
    }
}
