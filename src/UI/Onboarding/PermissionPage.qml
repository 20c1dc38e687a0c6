import QtQuick
import Tavrin

WizardPage {
    id: root

    required property ContentModel content

    readonly property bool isGranted: content.isAccessibilityGranted

    title: "Cấp Quyền Trợ Năng macOS"
    text: "Để kích hoạt phím tắt toàn cục và tự động gõ văn bản, macOS cần cấp quyền cơ bản sau:"

    Card {
        width: parent.width
        height: permission.height + 28

        Column {
            id: permission

            x: 14
            y: 14
            width: parent.width - 28
            spacing: 10

            Item {
                width: parent.width
                height: 22

                Label {
                    anchors.left: parent.left
                    anchors.right: status.left
                    anchors.rightMargin: 8
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Quyền Trợ năng (Accessibility)"
                    font.weight: Font.DemiBold
                }

                Row {
                    id: status

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 6

                    Symbol {
                        anchors.verticalCenter: parent.verticalCenter
                        name: root.isGranted ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
                        size: 15
                        color: root.isGranted ? Theme.greenSymbol : Theme.orangeSymbol
                    }

                    Badge {
                        anchors.verticalCenter: parent.verticalCenter
                        text: root.isGranted ? "ĐÃ CẤP" : "CHƯA CẤP"
                        isBold: true
                        textSize: 10
                        color: Theme.tint(textColor, 0.12)
                        textColor: root.isGranted ? Theme.green : Theme.orange
                    }
                }
            }

            Prose {
                width: parent.width
                text: "Cho phép Tavrin lắng nghe các tổ hợp phím tắt trên toàn bộ ứng dụng và gửi chuỗi phím tự động hoá."
                font.pixelSize: 12
                color: Theme.secondaryText
            }

            PillButton {
                text: "Mở Cài đặt để Bật Quyền Trợ Năng"
                symbol: "arrow.up.forward.app.fill"
                onClicked: root.content.requestAccessibility()
            }
        }
    }

    Card {
        width: parent.width
        height: events.height + 24

        FeatureRow {
            id: events

            x: 14
            y: 12
            width: parent.width - 28
            symbol: "info.circle.fill"
            title: "Quyền Tự Động Hoá (Apple Events)"
            description: "Khi bạn dùng phím tắt chạy AppleScript điều khiển ứng dụng khác, macOS sẽ hiển thị hộp thoại xác nhận một lần duy nhất."
        }
    }

    Prose {
        width: parent.width
        text: "💡 Gợi ý: Khi bạn gạt bật quyền trong Cài đặt hệ thống, trạng thái bên trên sẽ tự động chuyển sang màu xanh."
        font.pixelSize: 12
        color: Theme.secondaryText
    }
}
