import QtQuick
import Tavrin

WizardPage {
    id: root

    required property ContentModel content

    title: "Thiết Lập Chạy Nền & Hoàn Tất"
    text: "Cấu hình tuỳ chọn hoạt động tối ưu nhất cho Tavrin trên máy của bạn:"

    SettingCard {
        width: parent.width
        title: "Khởi động cùng máy tính"
        description: "Tự động bật Tavrin khi đăng nhập macOS để phím tắt luôn sẵn sàng."
        isOn: root.content.launchAtLogin
        onFlipped: isOn => root.content.launchAtLogin = isOn
    }

    SettingCard {
        width: parent.width
        title: "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"
        description: "Giúp thanh Dock gọn gàng, Tavrin sẽ chạy nền âm thầm trên Menu Bar."
        isOn: root.content.hideDockIcon
        onFlipped: isOn => root.content.hideDockIcon = isOn
    }

    FeatureRow {
        x: 14
        width: parent.width - 28
        symbol: "lightbulb.fill"
        tint: Theme.orangeSymbol
        title: "Bạn luôn có thể mở lại bảng điều khiển bất kỳ lúc nào bằng cách nhấp vào icon Tavrin trên thanh Menu Bar."
        isTip: true
        description: ""
    }

    Label {
        width: parent.width
        text: "🎉 Bạn đã sẵn sàng làm chủ phím tắt trên macOS!"
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        font.weight: Font.DemiBold
    }
}
