import QtQuick
import Tavrin

// Counts, the permission, and the switch for everything at once.
Rectangle {
    id: root

    required property ContentModel content

    implicitHeight: 38
    color: Theme.bar

    Divider {
        anchors.left: parent.left
        anchors.right: parent.right
    }

    Label {
        anchors.left: parent.left
        anchors.leftMargin: 18
        anchors.right: permission.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.content.totals
        font.pixelSize: 11
        color: Theme.secondaryText
    }

    TextButton {
        id: permission

        readonly property bool isGranted: root.content.isAccessibilityGranted

        anchors.centerIn: parent
        text: isGranted ? "Quyền Trợ năng: Đã cấp" : "Quyền Trợ năng: Chưa cấp (Bấm để cấp)"
        toolTip: isGranted ? "Tavrin đã có quyền Trợ năng để tự động dán và lắng nghe phím."
                           : "Bấm để mở Cài đặt hệ thống cấp quyền Trợ năng cho Tavrin."
        color: isGranted ? Theme.green : Theme.orange
        ground: isGranted ? "transparent" : Theme.tint(Theme.orange, 0.12)
        onClicked: root.content.requestAccessibility()
    }

    TextButton {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.content.isPaused ? "Kích hoạt lại phím tắt" : "Tạm dừng tất cả"
        symbol: root.content.isPaused ? "play.circle.fill" : "pause.circle.fill"
        color: root.content.isPaused ? Theme.green : Theme.orange
        symbolColor: root.content.isPaused ? Theme.greenSymbol : Theme.orangeSymbol
        onClicked: root.content.togglePaused()
    }
}
