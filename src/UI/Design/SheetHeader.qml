import QtQuick
import Tavrin

// Title and subtitle of a sheet, and room for a control at its right.
Item {
    id: root

    required property string title
    required property string subtitle
    default property alias parts: trailing.data

    implicitHeight: 66

    Column {
        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.right: trailing.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Label {
            width: parent.width
            text: root.title
            font.pixelSize: 17
            font.weight: Font.Bold
        }

        Label {
            width: parent.width
            text: root.subtitle
            font.pixelSize: 12
            color: Theme.secondaryText
        }
    }

    Row {
        id: trailing

        anchors.right: parent.right
        anchors.rightMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }

    Divider {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
    }
}
