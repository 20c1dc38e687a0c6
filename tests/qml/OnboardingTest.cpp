#include "support/WindowFixture.h"

namespace Tavrin {
namespace {

using Testing::waitFor;

/// The first steps over the main window, and the guide that leads to them again.
class Onboarding : public Testing::Window {
protected:
    void openForANewUser()
    {
        settings.setHasCompletedOnboarding(false);
        open();
    }
};

TEST_F(Onboarding, CoversTheWindowOfANewUser)
{
    openForANewUser();
    EXPECT_TRUE(shows("Chào mừng đến với Tavrin"));
    EXPECT_TRUE(shows("Trình quản lý & kích hoạt phím tắt toàn cục Native macOS siêu tốc."));
    EXPECT_TRUE(shows("Siêu nhẹ & Chạy thường trực"));
    EXPECT_TRUE(hasFocus(text("Tiếp tục")));
    EXPECT_FALSE(control(text("Quay lại")));
    for (int step = 0; step < 6; ++step) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(hasFocus(text("Tiếp tục")) || hasFocus(text("Bỏ qua"))
            || window().activeFocusItem()->inherits("QQuickFlickable"))
            << step;
    }
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_FALSE(shows("Thêm Phím Tắt Mới")) << "what is covered does not answer";
}

TEST_F(Onboarding, GoesPageByPageBothWays)
{
    openForANewUser();
    press(Qt::Key_Return);
    EXPECT_TRUE(shows("Cấp Quyền Trợ Năng macOS"));
    EXPECT_FALSE(shows("Chào mừng đến với Tavrin"));
    click(text("Tiếp tục"));
    for (const char* line : {"4 Loại Hành Động Tự Động Hoá", "1. Mở Ứng dụng", "2. Mở Website",
             "3. Văn bản & Clipboard", "4. Lệnh Shell & Script",
             "Hỗ trợ ghi nhận phím bằng cách gõ trực tiếp lên bàn phím rất dễ dàng."})
        EXPECT_TRUE(shows(line)) << line;
    click(text("Quay lại"));
    EXPECT_TRUE(shows("Cấp Quyền Trợ Năng macOS"));
    click(text("Quay lại"));
    EXPECT_TRUE(shows("Chào mừng đến với Tavrin"));
    EXPECT_FALSE(settings.hasCompletedOnboarding());
}

TEST_F(Onboarding, TheLastPageStartsTheProgram)
{
    openForANewUser();
    for (int page = 0; page < 3; ++page)
        click(text("Tiếp tục"));
    EXPECT_TRUE(shows("Thiết Lập Chạy Nền & Hoàn Tất"));
    EXPECT_FALSE(control(text("Bỏ qua")));
    EXPECT_FALSE(control(text("Tiếp tục")));
    click(text("Bắt đầu sử dụng"));
    EXPECT_TRUE(settings.hasCompletedOnboarding());
    EXPECT_FALSE(settings.showOnboarding());
    EXPECT_TRUE(waitFor([this] { return !shows("Thiết Lập Chạy Nền & Hoàn Tất"); }));
    EXPECT_TRUE(hasFocus(text("Danh sách phím tắt")));
}

TEST_F(Onboarding, SkippingIsFinishing)
{
    openForANewUser();
    click(text("Bỏ qua"));
    EXPECT_TRUE(settings.hasCompletedOnboarding());
    EXPECT_TRUE(waitFor([this] { return !shows("Chào mừng đến với Tavrin"); }));
}

TEST_F(Onboarding, FollowsThePermission)
{
    platform.accessibilityService.trusted = false;
    openForANewUser();
    press(Qt::Key_Return);
    ASSERT_TRUE(shows("CHƯA CẤP"));
    click(text("Mở Cài đặt để Bật Quyền Trợ Năng"));
    EXPECT_EQ(platform.accessibilityService.requests, 1);
    platform.accessibilityService.trusted = true;
    EXPECT_TRUE(waitFor([this] { return shows("ĐÃ CẤP"); }));
    EXPECT_FALSE(shows("CHƯA CẤP"));
}

TEST_F(Onboarding, KeepsTheSettingsAtOnce)
{
    openForANewUser();
    for (int page = 0; page < 3; ++page)
        press(Qt::Key_Return);
    const bool before = settings.hideDockIcon();
    click(text("Tự động bật Tavrin khi đăng nhập macOS để phím tắt luôn sẵn sàng."));
    EXPECT_TRUE(settings.launchAtLogin());
    click(text("Giúp thanh Dock gọn gàng, Tavrin sẽ chạy nền âm thầm trên Menu Bar."));
    EXPECT_EQ(settings.hideDockIcon(), !before);
}

TEST_F(Onboarding, ComesAgainFromTheGuide)
{
    open();
    click(text("Hướng dẫn"));
    ASSERT_TRUE(shows("Hướng Dẫn Sử Dụng Tavrin"));
    click(text("Mở Wizard Giới Thiệu & Thiết Lập"));
    EXPECT_TRUE(settings.showOnboarding());
    EXPECT_TRUE(settings.hasCompletedOnboarding());
    EXPECT_TRUE(shows("Chào mừng đến với Tavrin"));
    click(text("Bỏ qua"));
    EXPECT_FALSE(settings.showOnboarding());
    EXPECT_TRUE(waitFor([this] { return !shows("Chào mừng đến với Tavrin"); }));
    EXPECT_TRUE(shows("Hướng Dẫn Sử Dụng Tavrin"));
}

TEST_F(Onboarding, TheGuideSaysAllOfItAndScrollsByKeys)
{
    open();
    click(text("Hướng dẫn"));
    for (const char* line : {"Tối ưu hoá năng suất làm việc trên macOS với phím tắt thông minh",
             "3 Bước bắt đầu nhanh", "Bấm nút \"+ Thêm Phím Tắt\" màu xanh ở góc trên bên phải màn hình.",
             "Các loại hành động hỗ trợ", "Mở Website", "Mẹo & Tính năng hay",
             "Tạm dừng nhanh: Bấm nút \"Tạm dừng tất cả\" ở chân trang hoặc trên Menu Bar khi cần chơi game "
             "để "
             "tránh xung đột phím.",
             "Cấp quyền Hệ thống (Accessibility)"})
        EXPECT_TRUE(shows(line)) << line;
    const QQuickItem* button = control(text("Mở Cài đặt"));
    const double before = button->mapToScene({}).y();
    EXPECT_GT(before, window().height());
    press(Qt::Key_PageDown);
    EXPECT_LT(button->mapToScene({}).y(), before);
    press(Qt::Key_End);
    EXPECT_LT(button->mapToScene({}).y(), window().height());
    click(text("Mở Cài đặt"));
    EXPECT_EQ(platform.accessibilityService.settingsOpened, 1);
    press(Qt::Key_Home);
    EXPECT_DOUBLE_EQ(button->mapToScene({}).y(), before);
}

/// At the smallest size of the window every page can be reached to its end.
TEST_F(Onboarding, FitsTheSmallestWindow)
{
    openForANewUser();
    window().resize(640, 480);
    ASSERT_TRUE(waitFor([this] { return window().rootObject()->height() == 480; }));
    for (int page = 0; page < 4; ++page) {
        const QQuickItem* forward = control(text(page < 3 ? "Tiếp tục" : "Bắt đầu sử dụng"));
        ASSERT_TRUE(forward);
        EXPECT_TRUE(QRectF(0, 0, 640, 480).contains(forward->mapRectToScene(forward->boundingRect())));
        press(Qt::Key_Return);
    }
    EXPECT_TRUE(settings.hasCompletedOnboarding());
}

} // namespace
} // namespace Tavrin
