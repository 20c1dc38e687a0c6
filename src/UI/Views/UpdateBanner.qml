import QtQuick
import Tavrin

// Tells of a new version and leads to it.
Rectangle {
    id: root

    required property ContentModel content

    implicitHeight: 40
    color: Theme.hover

    Symbol {
        id: symbol

        x: 20
        anchors.verticalCenter: parent.verticalCenter
        name: "sparkles"
        size: 16
        color: Theme.accentText
    }

    Label {
        id: title

        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, trailing.x - x - 12)
        text: root.content.updateTitle
        font.weight: Font.DemiBold
    }

    Row {
        id: trailing

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: 10

        Label {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.content.isUpdating
            width: Math.min(implicitWidth, root.width / 2)
            text: root.content.updateStatus
            font.pixelSize: 11
            color: Theme.secondaryText
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.content.isUpdating
            text: root.content.updateProgress
            font.weight: Font.DemiBold
            color: Theme.accentText
        }

        PillButton {
            anchors.verticalCenter: parent.verticalCenter
            visible: !root.content.isUpdating
            implicitHeight: 26
            textSize: 12
            text: "Cập nhật ngay"
            symbol: "arrow.down.circle.fill"
            kind: PillButton.Prominent
            onClicked: root.content.startUpdate()
        }

        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            label: "Ẩn thông báo này"
            toolTip: "Ẩn thông báo này"
            symbol: "xmark"
            size: 12
            onClicked: root.content.dismissUpdate()
        }
    }
}
