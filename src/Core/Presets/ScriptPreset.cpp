#include "Core/Presets/ScriptPreset.h"

#include "MakerData.h"

namespace Tavrin {

const std::vector<ScriptPreset>& referenceScriptPresets()
{
    static const std::vector<ScriptPreset> presets{
        {
            QStringLiteral("Xem IP mạng (Thông báo)"),
            QStringLiteral("Lấy IP public/nội bộ và hiện notification trên màn hình"),
            QStringLiteral("network"),
            QStringLiteral(R"(IP=$(curl -s --max-time 2 %1 || ipconfig getifaddr en0)
osascript -e "display notification \"Địa chỉ IP máy: $IP\" with title \"Tavrin Network\"")")
                .arg(QLatin1String(MakerData::ipEchoAddress)),
        },
        {
            QStringLiteral("Chống ngủ máy 1 giờ (Caffeinate)"),
            QStringLiteral("Giữ máy luôn sáng và không sleep trong 60 phút"),
            QStringLiteral("cup.and.saucer.fill"),
            QStringLiteral(R"(caffeinate -u -t 3600 &
osascript -e 'display notification "Chế độ chống ngủ máy đã kích hoạt trong 1 giờ" with title "Tavrin Caffeinate"')"),
        },
        {
            QStringLiteral("Giải phóng RAM (Purge Memory)"),
            QStringLiteral("Dọn dẹp bộ nhớ đệm cache giúp tăng tốc hệ thống"),
            QStringLiteral("memorychip"),
            QStringLiteral(R"(purge 2>/dev/null || true
osascript -e 'display notification "Đã dọn dẹp bộ nhớ đệm RAM thành công" with title "Tavrin Memory"')"),
        },
        {
            QStringLiteral("Tạo ghi chú mới trong Apple Notes"),
            QStringLiteral("Mở Apple Notes và lập tức tạo 1 trang ghi chú trắng"),
            QStringLiteral("note.text.badge.plus"),
            QStringLiteral(
                R"(osascript -e 'tell application "Notes" to make new note at folder "Notes"' -e 'tell application "Notes" to activate')"),
        },
        {
            QStringLiteral("Xóa DNS Cache (Flush DNS)"),
            QStringLiteral("Xóa sạch bộ đệm DNS khi gặp lỗi mạng hoặc đổi host"),
            QStringLiteral("bolt.horizontal.fill"),
            QStringLiteral(R"(dscacheutil -flushcache; killall -HUP mDNSResponder 2>/dev/null
osascript -e 'display notification "Đã xóa DNS Cache thành công" with title "Tavrin Network"')"),
        },
        {
            QStringLiteral("Khởi động lại Dock & Control Center"),
            QStringLiteral("Khắc phục hiện tượng giật lag thanh Dock hoặc icon khay hệ thống"),
            QStringLiteral("arrow.counterclockwise.circle"),
            QStringLiteral("killall Dock; killall ControlCenter"),
        },
        {
            QStringLiteral("Mở Terminal tại thư mục Finder đang xem"),
            QStringLiteral("Mở ngay cửa sổ Terminal và cd vào folder đang mở trong Finder"),
            QStringLiteral("terminal.fill"),
            QStringLiteral(
                R"(osascript -e 'tell application "Finder" to set p to (POSIX path of (target of front window as alias))' -e 'tell application "Terminal" to do script "cd \"" & p & "\""' -e 'tell application "Terminal" to activate')"),
        },
    };
    return presets;
}

} // namespace Tavrin
