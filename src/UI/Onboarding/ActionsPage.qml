import QtQuick
import Tavrin

WizardPage {
    id: root

    title: "4 Loại Hành Động Tự Động Hoá"
    text: "Tavrin giúp bạn biến mọi thao tác lặp đi lặp lại thành một phím tắt duy nhất:"
    spacing: 9

    FeatureCard {
        width: parent.width
        symbol: "app.badge.fill"
        tint: Theme.typeColor("launchApp", Theme.isDark)
        title: "1. Mở Ứng dụng"
        description: "Bật ngay hoặc chuyển đổi sang app bất kỳ (Finder, Chrome, Terminal...) tức thì."
    }

    FeatureCard {
        width: parent.width
        symbol: "globe"
        tint: Theme.typeColor("openURL", Theme.isDark)
        title: "2. Mở Website"
        description: "Mở đường dẫn web yêu thích trên trình duyệt mặc định chỉ bằng 1 thao tác bấm."
    }

    FeatureCard {
        width: parent.width
        symbol: "doc.on.clipboard.fill"
        tint: Theme.typeColor("quickText", Theme.isDark)
        title: "3. Văn bản & Clipboard"
        description: "Tự động dán chữ ký email, địa chỉ, ngày giờ, số tài khoản hoặc sao chép clipboard."
    }

    FeatureCard {
        width: parent.width
        symbol: "terminal.fill"
        tint: Theme.typeColor("shellScript", Theme.isDark)
        title: "4. Lệnh Shell & Script"
        description: "Chạy script Bash hoặc AppleScript tự động hoá hệ thống nâng cao."
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 7

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "checkmark.seal.fill"
            size: 14
            color: Theme.greenSymbol
        }

        Label {
            width: Math.min(implicitWidth, root.width - 80)
            text: "Hỗ trợ ghi nhận phím bằng cách gõ trực tiếp lên bàn phím rất dễ dàng."
            wrapMode: Text.Wrap
            font.pixelSize: 12
            color: Theme.secondaryText
        }
    }
}
