import QtQuick
import Tavrin

// The user guide.
ScrollPage {
    id: root

    required property ContentModel content

    Column {
        width: parent.width
        spacing: 6

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "book.pages.fill"
            size: 38
            color: Theme.accentText
        }

        Label {
            width: parent.width
            text: "Hướng Dẫn Sử Dụng Tavrin"
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 17
            font.weight: Font.Bold
        }

        Label {
            width: parent.width
            text: "Tối ưu hoá năng suất làm việc trên macOS với phím tắt thông minh"
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        Item {
            width: 1
            height: 4
        }

        PillButton {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Mở Wizard Giới Thiệu & Thiết Lập"
            symbol: "sparkles"
            kind: PillButton.Prominent
            onClicked: root.content.showOnboarding()
        }
    }

    Section {
        width: parent.width
        symbol: "bolt.circle.fill"
        title: "3 Bước bắt đầu nhanh"

        FeatureRow {
            width: parent.width
            symbol: "plus.circle.fill"
            tint: Theme.typeColor("launchApp", Theme.isDark)
            title: "Tạo phím tắt mới"
            description: "Bấm nút \"+ Thêm Phím Tắt\" màu xanh ở góc trên bên phải màn hình."
        }

        FeatureRow {
            width: parent.width
            symbol: "keyboard.fill"
            tint: Theme.typeColor("shellScript", Theme.isDark)
            title: "Chọn hành động & Thu phím"
            description: "Chọn loại tác vụ (Mở App, Mở Web, Gõ text, Lệnh Shell). Bấm vào ô ghi phím và nhấn tổ hợp phím bạn muốn."
        }

        FeatureRow {
            width: parent.width
            symbol: "checkmark.circle.fill"
            tint: Theme.greenSymbol
            title: "Lưu & Sử dụng ngay"
            description: "Bấm \"Thêm Phím Tắt\". Tổ hợp phím của bạn sẽ có hiệu lực toàn cầu ngay lập tức ở mọi ứng dụng."
        }
    }

    Section {
        width: parent.width
        symbol: "square.grid.2x2.fill"
        title: "Các loại hành động hỗ trợ"

        FeatureCard {
            width: parent.width
            color: Theme.tint(Theme.field, 0.6)
            symbol: "app.gift.fill"
            tint: Theme.typeColor("launchApp", Theme.isDark)
            title: "Mở Ứng dụng"
            description: "Khởi chạy hoặc chuyển đổi tức thì đến ứng dụng bất kỳ trên máy."
        }

        FeatureCard {
            width: parent.width
            color: Theme.tint(Theme.field, 0.6)
            symbol: "globe"
            tint: Theme.cyan
            title: "Mở Website"
            description: "Bật ngay trang web yêu thích trên trình duyệt mặc định."
        }

        FeatureCard {
            width: parent.width
            color: Theme.tint(Theme.field, 0.6)
            symbol: "doc.on.clipboard.fill"
            tint: Theme.typeColor("quickText", Theme.isDark)
            title: "Văn bản & Clipboard"
            description: "Tự động dán vào ô input hoặc chép nhanh email, ngày giờ, văn bản mẫu."
        }

        FeatureCard {
            width: parent.width
            color: Theme.tint(Theme.field, 0.6)
            symbol: "terminal.fill"
            tint: Theme.typeColor("shellScript", Theme.isDark)
            title: "Lệnh Shell & Script"
            description: "Chạy các script Bash hoặc AppleScript tự động hoá chuyên sâu."
        }

        FeatureCard {
            width: parent.width
            color: Theme.tint(Theme.field, 0.6)
            symbol: "gearshape.2.fill"
            tint: Theme.typeColor("systemAction", Theme.isDark)
            title: "Hành động Hệ thống"
            description: "Khoá màn hình, Sleep máy, tăng giảm âm lượng, bật Dark mode tức thì."
        }
    }

    Section {
        width: parent.width
        symbol: "lightbulb.fill"
        tint: Theme.yellow
        title: "Mẹo & Tính năng hay"

        FeatureRow {
            width: parent.width
            isTip: true
            symbol: "play.circle.fill"
            tint: Theme.greenSymbol
            title: "Nút \"Thử\": Nhấn nút Thử trên mỗi dòng phím tắt để kiểm tra hành động có chạy đúng ý không trước khi gõ phím."
            description: ""
        }

        FeatureRow {
            width: parent.width
            isTip: true
            symbol: "pause.circle.fill"
            tint: Theme.orangeSymbol
            title: "Tạm dừng nhanh: Bấm nút \"Tạm dừng tất cả\" ở chân trang hoặc trên Menu Bar khi cần chơi game để tránh xung đột phím."
            description: ""
        }

        FeatureRow {
            width: parent.width
            isTip: true
            symbol: "menubar.rectangle"
            tint: Theme.typeColor("launchApp", Theme.isDark)
            title: "Chạy nền tối giản: Bật \"Ẩn icon thanh Dock\" và \"Khởi động cùng máy\" để Tavrin phục vụ bạn hoàn toàn âm thầm."
            description: ""
        }
    }

    Section {
        width: parent.width
        symbol: "lock.shield.fill"
        title: "Cấp quyền Hệ thống (Accessibility)"

        Prose {
            width: parent.width
            text: "Để bắt phím tắt toàn cục và thực hiện thao tác tự động hoá gõ phím/chạy script, macOS có thể cần cấp quyền Trợ năng (Accessibility) cho Tavrin."
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        PillButton {
            text: "Mở Cài đặt"
            symbol: "gearshape.fill"
            onClicked: root.content.openAccessibilitySettings()
        }
    }
}
