import QtQuick

// A short text on a rounded ground.
Rectangle {
    id: root

    required property string text
    property alias textColor: label.color

    implicitWidth: label.implicitWidth + 14
    implicitHeight: label.implicitHeight + 6
    radius: 5
    color: "#e9e9ed"

    Label {
        id: label

        anchors.centerIn: parent
        text: root.text
        font.pixelSize: 11
        color: "#4a4a4f"
    }
}
