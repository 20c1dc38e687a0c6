import QtQuick
import Tavrin

WizardPage {
    symbol: "command.square.fill"
    title: "Chào mừng đến với Tavrin"
    text: "Trình quản lý & kích hoạt phím tắt toàn cục Native macOS siêu tốc."

    FeatureRow {
        width: parent.width
        symbol: "bolt.fill"
        tint: Theme.orangeSymbol
        title: "Toàn cục & Phản hồi tức thì"
        description: "Lắng nghe phím tắt trên toàn hệ thống bằng Carbon Event API chuẩn Apple."
    }

    FeatureRow {
        width: parent.width
        symbol: "slider.horizontal.3"
        title: "Đa dạng hành động tự động hoá"
        description: "Khởi chạy app, mở link web, gõ văn bản mẫu, thực thi Shell script & AppleScript."
    }

    FeatureRow {
        width: parent.width
        symbol: "leaf.fill"
        tint: Theme.greenSymbol
        title: "Siêu nhẹ & Chạy thường trực"
        description: "Tích hợp tinh gọn trên Menu Bar, tiêu thụ RAM cực thấp (< 25MB), không làm chậm máy."
    }
}
