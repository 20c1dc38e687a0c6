#include "Core/Model/ActionType.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

TEST(ActionTypes, HaveTheirRawValuesTitlesAndSymbolsInOrder)
{
    const QStringList expected{
        QStringLiteral("launchApp|Mở Ứng dụng|app.badge.fill"),
        QStringLiteral("openURL|Mở Đường dẫn Web|safari.fill"),
        QStringLiteral("quickText|Văn bản & Clipboard|doc.on.clipboard.fill"),
        QStringLiteral("shellScript|Chạy Script / Lệnh|terminal.fill"),
        QStringLiteral("systemAction|Hành động Hệ thống|gearshape.2.fill"),
    };
    QStringList actual;
    for (const ActionType type : allActionTypes) {
        actual.append(QStringList{rawValue(type), title(type), iconName(type)}.join(u'|'));
        EXPECT_EQ(actionTypeFromRawValue(rawValue(type)), type);
    }
    EXPECT_EQ(actual, expected);
}

TEST(ActionTypes, AreMadeFromExactRawValuesOnly)
{
    for (const char* wrong : {"", "LaunchApp", "launchapp", " launchApp", "launchApp ", "none"})
        EXPECT_EQ(actionTypeFromRawValue(QString::fromUtf8(wrong)), std::nullopt) << wrong;
}

TEST(SystemActionTypes, HaveTheirTextsInOrder)
{
    const QStringList expected{
        QStringLiteral("lockScreen|Khoá màn hình|lock.fill|Nguồn & Bảo mật"),
        QStringLiteral("sleepDisplay|Tắt màn hình ngay (Sleep Display)|display|Nguồn & Bảo mật"),
        QStringLiteral("sleepMac|Đưa máy vào chế độ Ngủ (Sleep Mac)|moon.fill|Nguồn & Bảo mật"),
        QStringLiteral(
            "toggleDarkMode|Chuyển chế độ Giao diện Sáng / Tối|circle.righthalf.filled|Âm thanh & Hiển thị"),
        QStringLiteral("toggleMute|Bật / Tắt âm thanh (Mute)|speaker.slash.fill|Âm thanh & Hiển thị"),
        QStringLiteral("volumeUp|Tăng âm lượng (+10%)|speaker.wave.3.fill|Âm thanh & Hiển thị"),
        QStringLiteral("volumeDown|Giảm âm lượng (-10%)|speaker.wave.1.fill|Âm thanh & Hiển thị"),
        QStringLiteral("emptyTrash|Dọn sạch thùng rác|trash.fill|Tiện ích & Hệ thống"),
        QStringLiteral("toggleHiddenFiles|Bật / Tắt file ẩn trong Finder|eye.slash.fill|Tiện ích & Hệ thống"),
        QStringLiteral("screenshotToClipboard|Chụp màn hình vùng chọn vào Clipboard|camera.viewfinder|Tiện "
                       "ích & Hệ thống"),
        QStringLiteral("openMissionControl|Mở Mission Control|macwindow.on.rectangle|Tiện ích & Hệ thống"),
        QStringLiteral("restartFinder|Khởi động lại Finder|arrow.clockwise|Tiện ích & Hệ thống"),
        QStringLiteral("restartDock|Khởi động lại thanh Dock|square.stack.3d.up.fill|Tiện ích & Hệ thống"),
    };
    QStringList actual;
    for (const SystemActionType type : allSystemActionTypes) {
        actual.append(QStringList{rawValue(type), title(type), iconName(type), groupName(type)}.join(u'|'));
        EXPECT_EQ(systemActionTypeFromRawValue(rawValue(type)), type);
    }
    EXPECT_EQ(actual, expected);
}

TEST(SystemActionTypes, AreMadeFromExactRawValuesOnly)
{
    EXPECT_EQ(systemActionTypeFromRawValue(QStringLiteral("restartDock")), SystemActionType::restartDock);
    EXPECT_EQ(systemActionTypeFromRawValue(QStringLiteral("RestartDock")), std::nullopt);
    EXPECT_EQ(systemActionTypeFromRawValue(QStringLiteral("LockScreen")), std::nullopt);
    EXPECT_EQ(systemActionTypeFromRawValue({}), std::nullopt);
}

} // namespace
} // namespace Tavrin
