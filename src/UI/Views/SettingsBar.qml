import QtQuick
import Tavrin

// How the program stays around.
Item {
    id: root

    required property ContentModel content

    implicitHeight: 60

    Row {
        x: 21
        y: 9
        spacing: 26

        SwitchRow {
            text: "Khởi động cùng máy tính"
            isOn: root.content.launchAtLogin
            onFlipped: isOn => root.content.launchAtLogin = isOn
        }

        SwitchRow {
            text: "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"
            isOn: root.content.hideDockIcon
            onFlipped: isOn => root.content.hideDockIcon = isOn
        }
    }

    Label {
        x: 21
        width: parent.width - 42
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 8
        text: "💡 Đóng cửa sổ sẽ không tắt app mà luôn giữ chạy ngầm trên Menu Bar."
        font.pixelSize: 11
        color: Theme.secondaryText
    }

    Divider {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
    }
}
