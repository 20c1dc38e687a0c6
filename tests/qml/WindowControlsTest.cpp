#include "support/WindowFixture.h"

#include <QClipboard>
#include <QGuiApplication>

namespace Tavrin {
namespace {

using Testing::waitFor;

/// The main window in the user's hands.
class WindowControls : public Testing::Window {
protected:
    void SetUp() override
    {
        while (!store.shortcuts().empty())
            store.remove(store.shortcuts()[0].id);
        add(u"Máy tính", ActionType::launchApp, u"/usr/share/applications/calc.desktop");
        add(u"Bảng công việc", ActionType::openURL, u"https://example.org/board");
        add(u"Sao lưu", ActionType::shellScript, u"echo sao lưu");
        open();
    }
    void add(QStringView name, ActionType type, QStringView value)
    {
        ShortcutItem item;
        item.id = QUuid::createUuid();
        item.name = name.toString();
        item.keyCode = 40;
        item.modifiers = 0x100;
        item.actionType = type;
        item.actionValue = value.toString();
        store.add(item);
    }
    /// Names of the rows that are shown, top to bottom.
    QStringList rows()
    {
        QStringList names;
        for (const QString& text : texts()) {
            for (const ShortcutItem& item : store.shortcuts()) {
                if (item.name == text)
                    names.append(text);
            }
        }
        names.sort();
        return names;
    }
    /// Waits until these rows are shown; what is shown otherwise.
    testing::AssertionResult rowsAre(QStringList names)
    {
        names.sort();
        if (waitFor([&] { return rows() == names; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(rows());
    }
    testing::AssertionResult allRowsAreShown()
    {
        return rowsAre({text("Máy tính"), text("Bảng công việc"), text("Sao lưu")});
    }
};

TEST_F(WindowControls, SearchesAsOneTypes)
{
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(hasFocus(text("Tìm kiếm")));
    type(text("BẢNG"));
    EXPECT_TRUE(rowsAre({text("Bảng công việc")}));
    type(text("xyz"));
    EXPECT_TRUE(rowsAre({}));
    EXPECT_TRUE(shows("Không tìm thấy phím tắt phù hợp"));
    EXPECT_TRUE(shows("Tổng cộng: 3 phím tắt (3 đang bật)")) << "of the whole store";
    click(text("Xoá bộ lọc tìm kiếm"));
    EXPECT_TRUE(allRowsAreShown());
    EXPECT_EQ(control(text("Tìm kiếm"))->property("text").toString(), QString());
}

TEST_F(WindowControls, SlashFindsTheSearchFromTheListOnly)
{
    press(Qt::Key_Slash);
    EXPECT_TRUE(hasFocus(text("Tìm kiếm")));
    EXPECT_EQ(control(text("Tìm kiếm"))->property("text").toString(), QString());
    for (const char key : {'a', '/', 'b'})
        QTest::keyClick(&window(), key);
    EXPECT_EQ(control(text("Tìm kiếm"))->property("text").toString(), QStringLiteral("a/b"));
}

TEST_F(WindowControls, TheSearchIsEmptiedByItsButtonAndByEscape)
{
    press(Qt::Key_F, Qt::ControlModifier);
    type(text("sao"));
    EXPECT_TRUE(rowsAre({text("Sao lưu")}));
    click(text("Xoá"));
    EXPECT_TRUE(allRowsAreShown());
    EXPECT_TRUE(hasFocus(text("Tìm kiếm")));
    type(text("sao"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(allRowsAreShown());
    press(Qt::Key_Down);
    EXPECT_TRUE(hasFocus(text("Danh sách phím tắt"))) << "the list";
}

TEST_F(WindowControls, ALineBreakPastedIntoTheSearchIsASpace)
{
    press(Qt::Key_F, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText(QStringLiteral("echo\nsao\r\nlưu\u2028"));
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(control(text("Tìm kiếm"))->property("text").toString(), text("echo sao lưu "));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(control(text("Tìm kiếm"))->property("text").toString(), QString()) << "one step back";
}

TEST_F(WindowControls, FiltersByTypeWithTheKeyboard)
{
    control(text("Loại hành động"))->forceActiveFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(shows("Văn bản & Clipboard"));
    for (int step = 0; step < 4; ++step)
        press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_FALSE(shows("Văn bản & Clipboard"));
    EXPECT_TRUE(rowsAre({text("Sao lưu")}));
    EXPECT_TRUE(hasFocus(text("Loại hành động")));
}

TEST_F(WindowControls, FiltersByTypeWithThePointer)
{
    click(text("Loại hành động"));
    click(text("Mở Đường dẫn Web"));
    EXPECT_TRUE(rowsAre({text("Bảng công việc")}));
    click(text("Loại hành động"));
    ASSERT_TRUE(shows("Hành động Hệ thống"));
    clickAt({30, 500});
    EXPECT_FALSE(shows("Hành động Hệ thống")) << "a press elsewhere closes the list";
    EXPECT_TRUE(rowsAre({text("Bảng công việc")}));
    click(text("Loại hành động"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(shows("Hành động Hệ thống"));
}

TEST_F(WindowControls, RowsAnswerToKeys)
{
    EXPECT_TRUE(hasFocus(text("Danh sách phím tắt"))) << "where a new window has the keyboard";
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_TRUE(store.shortcuts()[0].isEnabled);
    EXPECT_FALSE(store.shortcuts()[1].isEnabled);
    EXPECT_TRUE(shows("Tổng cộng: 3 phím tắt (2 đang bật)"));
    press(Qt::Key_End);
    press(Qt::Key_Space);
    EXPECT_FALSE(store.shortcuts()[2].isEnabled);
    press(Qt::Key_Home);
    press(Qt::Key_Space);
    EXPECT_FALSE(store.shortcuts()[0].isEnabled);
}

TEST_F(WindowControls, DeletesAfterAskingOnly)
{
    press(Qt::Key_Delete);
    ASSERT_TRUE(shows("Xác nhận xóa phím tắt"));
    EXPECT_TRUE(shows(
        "Bạn có chắc chắn muốn xóa phím tắt \"Máy tính\" (⌘ K) không? Thao tác này không thể hoàn tác."));
    EXPECT_TRUE(hasFocus(text("Hủy")));
    press(Qt::Key_Escape);
    EXPECT_FALSE(shows("Xác nhận xóa phím tắt"));
    EXPECT_EQ(store.shortcuts().size(), 3U);
    EXPECT_TRUE(hasFocus(text("Danh sách phím tắt"))) << "the keyboard is back where it was";

    press(Qt::Key_Delete);
    press(Qt::Key_Return);
    EXPECT_FALSE(shows("Xác nhận xóa phím tắt"));
    EXPECT_EQ(store.shortcuts().size(), 3U);

    press(Qt::Key_Delete);
    click(text("Xóa phím tắt"));
    EXPECT_FALSE(shows("Xác nhận xóa phím tắt"));
    EXPECT_TRUE(rowsAre({text("Bảng công việc"), text("Sao lưu")}));
    EXPECT_EQ(store.shortcuts().size(), 2U);
}

TEST_F(WindowControls, TheKeyboardStaysInAnAlert)
{
    press(Qt::Key_Delete);
    for (int step = 0; step < 5; ++step) {
        EXPECT_TRUE(hasFocus(text("Hủy")) || hasFocus(text("Xóa phím tắt"))) << step;
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Backtab);
    EXPECT_TRUE(hasFocus(text("Hủy")) || hasFocus(text("Xóa phím tắt")));
    clickAt({40, 125});
    EXPECT_FALSE(settings.launchAtLogin()) << "what is covered does not answer";
    EXPECT_TRUE(shows("Xác nhận xóa phím tắt"));
}

TEST_F(WindowControls, RowsAnswerToThePointer)
{
    click(text("Bật Sao lưu"));
    EXPECT_FALSE(store.shortcuts()[2].isEnabled);
    QQuickItem* row = control(text("Sao lưu"))->parentItem();
    const auto place = [row](double right) {
        return row->mapToScene({row->width() - right, row->height() / 2});
    };
    clickAt(place(12 + 34 + 10 + 2 * 28 + 14));
    EXPECT_TRUE(waitFor([this] { return desk.scripts.shellScripts.size() == 1; })) << "also a disabled one";
    clickAt(place(12 + 34 + 10 + 14));
    EXPECT_TRUE(shows("Xác nhận xóa phím tắt"));
    EXPECT_TRUE(shows(
        "Bạn có chắc chắn muốn xóa phím tắt \"Sao lưu\" (⌘ K) không? Thao tác này không thể hoàn tác."));
}

TEST_F(WindowControls, OnlyTheCurrentRowIsOnTheWayOfTab)
{
    QStringList way;
    for (int step = 0; step < 20; ++step) {
        press(Qt::Key_Tab);
        const QString label = window().activeFocusItem()->property("label").toString();
        if (way.contains(label))
            break;
        way.append(label);
    }
    EXPECT_EQ(
        way.mid(0, 4), (QStringList{text("Chạy thử"), text("Chỉnh sửa"), text("Xóa"), text("Bật Máy tính")}));
    EXPECT_FALSE(way.contains(text("Bật Sao lưu")));
    EXPECT_EQ(way.mid(4, 4),
        (QStringList{
            text("Quyền Trợ năng: Đã cấp"), text("Tạm dừng tất cả"), text("Thêm Phím Tắt"), text("Mục")}));
}

TEST_F(WindowControls, PausesAndGoesOn)
{
    const auto registered = [this] { return platform.hotKeyBackend.entries.size(); };
    hotKeys.syncShortcuts(store.shortcuts());
    EXPECT_GT(registered(), 0U);
    click(text("Tạm dừng tất cả"));
    EXPECT_TRUE(shows("TẠM DỪNG"));
    EXPECT_FALSE(shows("Đang hoạt động"));
    EXPECT_EQ(registered(), 0U);
    press(Qt::Key_Space);
    EXPECT_EQ(registered(), 0U) << "a change while paused";
    click(text("Kích hoạt lại phím tắt"));
    EXPECT_TRUE(shows("Đang hoạt động"));
    EXPECT_GT(registered(), 0U);
}

TEST_F(WindowControls, KeepsTheSettings)
{
    click(text("Khởi động cùng máy tính"));
    EXPECT_TRUE(settings.launchAtLogin());
    const bool before = settings.hideDockIcon();
    click(text("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"));
    EXPECT_EQ(settings.hideDockIcon(), !before);
    settings.setHideDockIcon(before);
    EXPECT_TRUE(waitFor([this, before] {
        return control(text("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"))->property("isOn").toBool() == before;
    })) << "follows the menu";
}

TEST_F(WindowControls, AsksForThePermission)
{
    click(text("Quyền Trợ năng: Đã cấp"));
    EXPECT_EQ(platform.accessibilityService.requests, 0) << "nothing to ask for";
    platform.accessibilityService.trusted = false;
    EXPECT_TRUE(waitFor([this] { return shows("Quyền Trợ năng: Chưa cấp (Bấm để cấp)"); }));
    click(text("Quyền Trợ năng: Chưa cấp (Bấm để cấp)"));
    EXPECT_EQ(platform.accessibilityService.requests, 1);
}

TEST_F(WindowControls, ShowsTheTabAskedFor)
{
    notifications.post(Notification::selectAuthorTab);
    EXPECT_TRUE(rowsAre({}));
    click(text("Hướng dẫn"));
    EXPECT_TRUE(rowsAre({}));
    press(Qt::Key_Left);
    control(text("Mục"))->forceActiveFocus();
    press(Qt::Key_Left);
    EXPECT_TRUE(allRowsAreShown());
    press(Qt::Key_Right);
    EXPECT_TRUE(rowsAre({}));
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(allRowsAreShown()) << "the search brings its tab with it";
    EXPECT_TRUE(hasFocus(text("Tìm kiếm")));
}

TEST_F(WindowControls, ShowsAToolTipWhereThePointerRests)
{
    QQuickItem* row = control(text("Sao lưu"))->parentItem();
    const QPoint play
        = row->mapToScene({row->width() - (12 + 34 + 10 + 2 * 28 + 14), row->height() / 2}).toPoint();
    QTest::mouseMove(&window(), play);
    EXPECT_TRUE(waitFor([this] { return shows("Chạy thử phím tắt này ngay"); }));
    QTest::mouseMove(&window(), {300, 20});
    EXPECT_TRUE(waitFor([this] { return !shows("Chạy thử phím tắt này ngay"); }));
}

TEST_F(WindowControls, AnEmptyStoreOffersTheFirstShortcut)
{
    while (!store.shortcuts().empty())
        store.remove(store.shortcuts()[0].id);
    EXPECT_TRUE(waitFor([this] { return shows("Chưa có phím tắt nào được tạo"); }));
    EXPECT_TRUE(shows("Thêm Phím Tắt Đầu Tiên"));
    press(Qt::Key_F, Qt::ControlModifier);
    type(text("gì đó"));
    EXPECT_TRUE(shows("Chưa có phím tắt nào được tạo")) << "whatever is searched";
}

/// Everything that a user presses or reads lies inside the window, and nothing lies over anything else.
class WindowOfSize : public WindowControls, public testing::WithParamInterface<QSize> { };

TEST_P(WindowOfSize, HasRoomForAllOfIt)
{
    window().resize(GetParam());
    ASSERT_TRUE(waitFor([this] { return window().rootObject()->width() == GetParam().width(); }));
    const QRectF area(QPointF(), GetParam());
    for (const char* label :
        {"Thêm Phím Tắt", "Mục", "Khởi động cùng máy tính", "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)",
            "Tìm kiếm", "Loại hành động", "Tạm dừng tất cả", "Quyền Trợ năng: Đã cấp", "Bật Máy tính"}) {
        const QQuickItem* item = control(text(label));
        ASSERT_TRUE(item) << label;
        EXPECT_TRUE(area.contains(item->mapRectToScene(item->boundingRect()))) << label;
    }
    const auto frame = [this](const char* label) {
        const QQuickItem* item = control(text(label));
        return item->mapRectToScene(item->boundingRect());
    };
    EXPECT_FALSE(frame("Mục").intersects(frame("Thêm Phím Tắt")));
    EXPECT_FALSE(frame("Quyền Trợ năng: Đã cấp").intersects(frame("Tạm dừng tất cả")));
    EXPECT_FALSE(
        frame("Khởi động cùng máy tính").intersects(frame("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)")));
    EXPECT_LT(frame("Tìm kiếm").right(), frame("Loại hành động").left());
}

INSTANTIATE_TEST_SUITE_P(Sizes, WindowOfSize,
    testing::Values(QSize(640, 480), QSize(720, 540), QSize(1024, 768), QSize(3840, 2160)));

} // namespace
} // namespace Tavrin
