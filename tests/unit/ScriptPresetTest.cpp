#include "Core/Presets/ScriptPreset.h"

#include "MakerData.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

struct Expected {
    const char* name;
    const char* desc;
    const char* icon;
    const char* code;
};

// Line by line as they are to be, with the address in the place of ADDRESS.
const std::array expectedPresets{
    Expected{"Xem IP mạng (Thông báo)", "Lấy IP public/nội bộ và hiện notification trên màn hình", "network",
        "IP=$(curl -s --max-time 2 ADDRESS || ipconfig getifaddr en0)\n"
        "osascript -e \"display notification \\\"Địa chỉ IP máy: $IP\\\" with title \\\"Tavrin "
        "Network\\\"\""},
    Expected{"Chống ngủ máy 1 giờ (Caffeinate)", "Giữ máy luôn sáng và không sleep trong 60 phút",
        "cup.and.saucer.fill",
        "caffeinate -u -t 3600 &\n"
        "osascript -e 'display notification \"Chế độ chống ngủ máy đã kích hoạt trong 1 giờ\" with title "
        "\"Tavrin Caffeinate\"'"},
    Expected{"Giải phóng RAM (Purge Memory)", "Dọn dẹp bộ nhớ đệm cache giúp tăng tốc hệ thống", "memorychip",
        "purge 2>/dev/null || true\n"
        "osascript -e 'display notification \"Đã dọn dẹp bộ nhớ đệm RAM thành công\" with title \"Tavrin "
        "Memory\"'"},
    Expected{"Tạo ghi chú mới trong Apple Notes", "Mở Apple Notes và lập tức tạo 1 trang ghi chú trắng",
        "note.text.badge.plus",
        "osascript -e 'tell application \"Notes\" to make new note at folder \"Notes\"' -e 'tell application "
        "\"Notes\" to activate'"},
    Expected{"Xóa DNS Cache (Flush DNS)", "Xóa sạch bộ đệm DNS khi gặp lỗi mạng hoặc đổi host",
        "bolt.horizontal.fill",
        "dscacheutil -flushcache; killall -HUP mDNSResponder 2>/dev/null\n"
        "osascript -e 'display notification \"Đã xóa DNS Cache thành công\" with title \"Tavrin Network\"'"},
    Expected{"Khởi động lại Dock & Control Center",
        "Khắc phục hiện tượng giật lag thanh Dock hoặc icon khay hệ thống", "arrow.counterclockwise.circle",
        "killall Dock; killall ControlCenter"},
    Expected{"Mở Terminal tại thư mục Finder đang xem",
        "Mở ngay cửa sổ Terminal và cd vào folder đang mở trong Finder", "terminal.fill",
        "osascript -e 'tell application \"Finder\" to set p to (POSIX path of (target of front window as "
        "alias))' -e 'tell application \"Terminal\" to do script \"cd \\\"\" & p & \"\\\"\"' -e 'tell "
        "application \"Terminal\" to activate'"},
};

TEST(ReferenceScriptPresets, AreTheseInThisOrder)
{
    const auto& presets = referenceScriptPresets();
    ASSERT_EQ(presets.size(), expectedPresets.size());
    for (std::size_t index = 0; index < presets.size(); ++index) {
        const Expected& expected = expectedPresets.at(index);
        EXPECT_EQ(presets[index].name, QString::fromUtf8(expected.name));
        EXPECT_EQ(presets[index].desc, QString::fromUtf8(expected.desc));
        EXPECT_EQ(presets[index].icon, QString::fromUtf8(expected.icon));
        EXPECT_EQ(presets[index].code.toStdString(),
            QString::fromUtf8(expected.code)
                .replace(QStringLiteral("ADDRESS"), QLatin1String(MakerData::ipEchoAddress))
                .toStdString());
    }
}

} // namespace
} // namespace Tavrin
