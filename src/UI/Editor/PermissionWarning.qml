import QtQuick
import Tavrin

// Without a permission of the system, a shortcut that pastes cannot.
Rectangle {
    id: root

    signal requested

    implicitHeight: Math.max(texts.height, grant.height) + 24
    radius: 8
    color: Theme.tint(Theme.orange, 0.12)
    border.width: 1
    border.color: Theme.tint(Theme.orange, 0.4)

    Symbol {
        id: symbol

        x: 12
        y: 14
        name: "exclamationmark.shield.fill"
        size: 18
        color: Theme.orange
    }

    Column {
        id: texts

        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.right: grant.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Label {
            width: parent.width
            text: "Chưa cấp quyền Trợ năng (Accessibility)"
            font.pixelSize: 12
            font.weight: Font.DemiBold
        }

        Label {
            width: parent.width
            text: "macOS yêu cầu cấp quyền để phím tắt tự động dán vào các ứng dụng khác."
            wrapMode: Text.Wrap
            font.pixelSize: 11
            color: Theme.secondaryText
        }
    }

    PillButton {
        id: grant

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: "Cấp quyền ngay"
        onClicked: root.requested()
    }
}
