#include "Core/Model/ActionType.h"

namespace Tavrin {
namespace {

struct Entry {
    QStringView rawValue;
    QStringView title;
    QStringView iconName;
};

constexpr std::array<Entry, allActionTypes.size()> actionTypes{{
    {u"launchApp", u"Mở Ứng dụng", u"app.badge.fill"},
    {u"openURL", u"Mở Đường dẫn Web", u"safari.fill"},
    {u"quickText", u"Văn bản & Clipboard", u"doc.on.clipboard.fill"},
    {u"shellScript", u"Chạy Script / Lệnh", u"terminal.fill"},
    {u"systemAction", u"Hành động Hệ thống", u"gearshape.2.fill"},
}};

constexpr std::array<Entry, allSystemActionTypes.size()> systemActions{{
    {u"lockScreen", u"Khoá màn hình", u"lock.fill"},
    {u"sleepDisplay", u"Tắt màn hình ngay (Sleep Display)", u"display"},
    {u"sleepMac", u"Đưa máy vào chế độ Ngủ (Sleep Mac)", u"moon.fill"},
    {u"toggleDarkMode", u"Chuyển chế độ Giao diện Sáng / Tối", u"circle.righthalf.filled"},
    {u"toggleMute", u"Bật / Tắt âm thanh (Mute)", u"speaker.slash.fill"},
    {u"volumeUp", u"Tăng âm lượng (+10%)", u"speaker.wave.3.fill"},
    {u"volumeDown", u"Giảm âm lượng (-10%)", u"speaker.wave.1.fill"},
    {u"emptyTrash", u"Dọn sạch thùng rác", u"trash.fill"},
    {u"toggleHiddenFiles", u"Bật / Tắt file ẩn trong Finder", u"eye.slash.fill"},
    {u"screenshotToClipboard", u"Chụp màn hình vùng chọn vào Clipboard", u"camera.viewfinder"},
    {u"openMissionControl", u"Mở Mission Control", u"macwindow.on.rectangle"},
    {u"restartFinder", u"Khởi động lại Finder", u"arrow.clockwise"},
    {u"restartDock", u"Khởi động lại thanh Dock", u"square.stack.3d.up.fill"},
}};

/// First case of the second and of the third group.
constexpr auto firstOfSoundAndDisplay = SystemActionType::toggleDarkMode;
constexpr auto firstOfUtilities = SystemActionType::emptyTrash;

const Entry& entry(ActionType type)
{
    return actionTypes.at(static_cast<std::size_t>(type));
}

const Entry& entry(SystemActionType type)
{
    return systemActions.at(static_cast<std::size_t>(type));
}

template <typename Case, std::size_t Count>
std::optional<Case> caseWithRawValue(const std::array<Entry, Count>& entries, const QString& rawValue)
{
    for (std::size_t index = 0; index < Count; ++index) {
        if (entries[index].rawValue == rawValue)
            return static_cast<Case>(index);
    }
    return std::nullopt;
}

} // namespace

QString rawValue(ActionType type)
{
    return entry(type).rawValue.toString();
}

QString title(ActionType type)
{
    return entry(type).title.toString();
}

QString iconName(ActionType type)
{
    return entry(type).iconName.toString();
}

std::optional<ActionType> actionTypeFromRawValue(const QString& rawValue)
{
    return caseWithRawValue<ActionType>(actionTypes, rawValue);
}

QString rawValue(SystemActionType type)
{
    return entry(type).rawValue.toString();
}

QString title(SystemActionType type)
{
    return entry(type).title.toString();
}

QString iconName(SystemActionType type)
{
    return entry(type).iconName.toString();
}

QString groupName(SystemActionType type)
{
    if (type < firstOfSoundAndDisplay)
        return QStringLiteral("Nguồn & Bảo mật");
    if (type < firstOfUtilities)
        return QStringLiteral("Âm thanh & Hiển thị");
    return QStringLiteral("Tiện ích & Hệ thống");
}

std::optional<SystemActionType> systemActionTypeFromRawValue(const QString& rawValue)
{
    return caseWithRawValue<SystemActionType>(systemActions, rawValue);
}

} // namespace Tavrin
