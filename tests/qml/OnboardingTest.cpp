#include "support/WindowFixture.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <algorithm>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

/// The first steps over the main window, and the guide that leads to them again.
class Onboarding : public Testing::Window {
protected:
    void openForANewUser()
    {
        settings.setHasCompletedOnboarding(false);
        open();
    }
    void resizeToTheSmallest()
    {
        window().resize(640, 480);
        ASSERT_TRUE(waitFor([this] { return window().rootObject()->height() == 480; }));
    }
    /// Where an item is in the window, as of its next frame.
    QRectF place(const QString& label)
    {
        window().grabWindow();
        const QQuickItem* item = control(label);
        return item ? item->mapRectToScene(item->boundingRect()) : QRectF();
    }
    /// Where the tabulator goes from here until it comes back.
    QStringList stops(Qt::Key key)
    {
        QStringList result;
        const auto name = [this] { return window().activeFocusItem()->property("label").toString(); };
        do {
            result.append(name());
            press(key);
        } while (name() != result.first() && result.size() < 20);
        return result;
    }
};

QStringList list(std::initializer_list<const char*> lines)
{
    QStringList result;
    for (const char* line : lines)
        result.append(QString::fromUtf8(line));
    return result;
}

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

/// Every text and every symbol of a page, top to bottom.
TEST_F(Onboarding, SaysOnEachPageWhatItIsAbout)
{
    const QList<QPair<QStringList, QStringList>> pages{
        {list({"Bỏ qua", "Chào mừng đến với Tavrin",
             "Trình quản lý & kích hoạt phím tắt toàn cục Native macOS siêu tốc.",
             "Toàn cục & Phản hồi tức thì",
             "Lắng nghe phím tắt trên toàn hệ thống bằng Carbon Event API chuẩn Apple.",
             "Đa dạng hành động tự động hoá",
             "Khởi chạy app, mở link web, gõ văn bản mẫu, thực thi Shell script & AppleScript.",
             "Siêu nhẹ & Chạy thường trực",
             "Tích hợp tinh gọn trên Menu Bar, tiêu thụ RAM cực thấp (< 25MB), không làm chậm máy.",
             "Tiếp tục"}),
            list({"command.square.fill", "bolt.fill", "slider.horizontal.3", "leaf.fill", "chevron.right"})},
        {list({"Bỏ qua", "Cấp Quyền Trợ Năng macOS",
             "Để kích hoạt phím tắt toàn cục và tự động gõ văn bản, macOS cần cấp quyền cơ bản sau:",
             "Quyền Trợ năng (Accessibility)", "ĐÃ CẤP",
             "Cho phép Tavrin lắng nghe các tổ hợp phím tắt trên toàn bộ ứng dụng và gửi chuỗi phím tự động "
             "hoá.",
             "Mở Cài đặt để Bật Quyền Trợ Năng", "Quyền Tự Động Hoá (Apple Events)",
             "Khi bạn dùng phím tắt chạy AppleScript điều khiển ứng dụng khác, macOS sẽ hiển thị hộp thoại "
             "xác nhận một lần duy nhất.",
             "💡 Gợi ý: Khi bạn gạt bật quyền trong Cài đặt hệ thống, trạng thái bên trên sẽ tự động chuyển "
             "sang màu xanh.",
             "Quay lại", "Tiếp tục"}),
            list({"checkmark.circle.fill", "arrow.up.forward.app.fill", "info.circle.fill", "chevron.left",
                "chevron.right"})},
        {list({"Bỏ qua", "4 Loại Hành Động Tự Động Hoá",
             "Tavrin giúp bạn biến mọi thao tác lặp đi lặp lại thành một phím tắt duy nhất:",
             "1. Mở Ứng dụng",
             "Bật ngay hoặc chuyển đổi sang app bất kỳ (Finder, Chrome, Terminal...) tức thì.",
             "2. Mở Website", "Mở đường dẫn web yêu thích trên trình duyệt mặc định chỉ bằng 1 thao tác bấm.",
             "3. Văn bản & Clipboard",
             "Tự động dán chữ ký email, địa chỉ, ngày giờ, số tài khoản hoặc sao chép clipboard.",
             "4. Lệnh Shell & Script", "Chạy script Bash hoặc AppleScript tự động hoá hệ thống nâng cao.",
             "Hỗ trợ ghi nhận phím bằng cách gõ trực tiếp lên bàn phím rất dễ dàng.", "Quay lại",
             "Tiếp tục"}),
            list({"app.badge.fill", "globe", "doc.on.clipboard.fill", "terminal.fill", "checkmark.seal.fill",
                "chevron.left", "chevron.right"})},
        {list({"Thiết Lập Chạy Nền & Hoàn Tất",
             "Cấu hình tuỳ chọn hoạt động tối ưu nhất cho Tavrin trên máy của bạn:",
             "Khởi động cùng máy tính", "Tự động bật Tavrin khi đăng nhập macOS để phím tắt luôn sẵn sàng.",
             "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)",
             "Giúp thanh Dock gọn gàng, Tavrin sẽ chạy nền âm thầm trên Menu Bar.",
             "Bạn luôn có thể mở lại bảng điều khiển bất kỳ lúc nào bằng cách nhấp vào icon Tavrin trên "
             "thanh Menu Bar.",
             "🎉 Bạn đã sẵn sàng làm chủ phím tắt trên macOS!", "Quay lại", "Bắt đầu sử dụng"}),
            list({"lightbulb.fill", "chevron.left", "sparkles"})}};
    settings.setHasCompletedOnboarding(true);
    open();
    const QStringList coveredTexts = texts();
    const QStringList coveredSymbols = symbols();
    settings.setShowOnboarding(true);
    drainEvents();
    for (const auto& [pageTexts, pageSymbols] : pages) {
        EXPECT_EQ(texts(), coveredTexts + pageTexts);
        EXPECT_EQ(symbols(), coveredSymbols + pageSymbols);
        press(Qt::Key_Return);
    }
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

TEST_F(Onboarding, IsGoneThroughByTheKeyboard)
{
    openForANewUser();
    EXPECT_EQ(stops(Qt::Key_Tab), list({"Tiếp tục", "Bỏ qua"}));
    press(Qt::Key_Return);
    EXPECT_EQ(
        stops(Qt::Key_Tab), list({"Tiếp tục", "Bỏ qua", "Mở Cài đặt để Bật Quyền Trợ Năng", "Quay lại"}));
    EXPECT_EQ(
        stops(Qt::Key_Backtab), list({"Tiếp tục", "Quay lại", "Mở Cài đặt để Bật Quyền Trợ Năng", "Bỏ qua"}));
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows("Cấp Quyền Trợ Năng macOS")) << "nothing is skipped by mistake";
    press(Qt::Key_Space);
    EXPECT_EQ(stops(Qt::Key_Tab), list({"Tiếp tục", "Bỏ qua", "Quay lại"}));
    press(Qt::Key_Backtab);
    press(Qt::Key_Space);
    EXPECT_TRUE(shows("Cấp Quyền Trợ Năng macOS"));
    EXPECT_TRUE(hasFocus(text("Quay lại"))) << "further back by the same key";
    press(Qt::Key_Space);
    EXPECT_TRUE(shows("Chào mừng đến với Tavrin"));
    EXPECT_TRUE(hasFocus(text("Tiếp tục"))) << "the other one is away";
    for (int page = 0; page < 3; ++page)
        press(Qt::Key_Return);
    EXPECT_EQ(stops(Qt::Key_Tab),
        list({"Bắt đầu sử dụng", "Khởi động cùng máy tính", "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)",
            "Quay lại"}));
    const bool isDockIconHidden = settings.hideDockIcon();
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(settings.launchAtLogin());
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(settings.hideDockIcon(), !isDockIconHidden);
    // What had the keyboard goes with its page.
    click(text("Quay lại"));
    EXPECT_TRUE(hasFocus(text("Tiếp tục")));
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    EXPECT_TRUE(settings.hasCompletedOnboarding());
}

TEST_F(Onboarding, KeepsTheKeyboardFromASheetThatItCovers)
{
    open();
    press(Qt::Key_N, Qt::ControlModifier);
    ASSERT_TRUE(shows("Thêm Phím Tắt Mới"));
    settings.setShowOnboarding(true);
    drainEvents();
    EXPECT_EQ(stops(Qt::Key_Tab), list({"Tiếp tục", "Bỏ qua"}));
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows("Thêm Phím Tắt Mới"));
    click(text("Bỏ qua"));
    ASSERT_TRUE(waitFor([this] { return !shows("Chào mừng đến với Tavrin"); }));
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitFor([this] { return !shows("Thêm Phím Tắt Mới"); }))
        << "the keyboard is back in the sheet";
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
    EXPECT_TRUE(symbols().contains(text("exclamationmark.triangle.fill")));
    for (const bool isTrusted : {true, false, true}) {
        QElapsedTimer time;
        time.start();
        platform.accessibilityService.trusted = isTrusted;
        EXPECT_TRUE(waitFor([&] { return shows(isTrusted ? "ĐÃ CẤP" : "CHƯA CẤP"); }));
        EXPECT_FALSE(shows(isTrusted ? "CHƯA CẤP" : "ĐÃ CẤP"));
        // The window itself looks less often.
        EXPECT_LT(time.elapsed(), 1300);
    }
    EXPECT_TRUE(symbols().contains(text("checkmark.circle.fill")));
}

TEST_F(Onboarding, AsksForAPermissionThatHasJustGone)
{
    openForANewUser();
    press(Qt::Key_Return);
    ASSERT_TRUE(shows("ĐÃ CẤP"));
    click(text("Mở Cài đặt để Bật Quyền Trợ Năng"));
    EXPECT_EQ(platform.accessibilityService.requests, 0) << "nothing to ask for";
    platform.accessibilityService.trusted = false;
    click(text("Mở Cài đặt để Bật Quyền Trợ Năng"));
    EXPECT_EQ(platform.accessibilityService.requests, 1);
    EXPECT_TRUE(shows("CHƯA CẤP"));
}

TEST_F(Onboarding, LooksForThePermissionOnlyWhereItIsSeen)
{
    openForANewUser();
    const auto looks = [this] {
        const auto objects = window().rootObject()->findChildren<QObject*>();
        return std::ranges::count_if(objects, [](const QObject* object) {
            return object->inherits("QQmlTimer") && object->property("interval") == 1000
                && object->property("running").toBool();
        });
    };
    EXPECT_EQ(looks(), 1);
    window().hide();
    EXPECT_EQ(looks(), 0);
    platform.accessibilityService.trusted = false;
    open();
    EXPECT_EQ(looks(), 1);
    press(Qt::Key_Return);
    EXPECT_TRUE(shows("CHƯA CẤP")) << "at once";
    click(text("Bỏ qua"));
    EXPECT_TRUE(waitFor([&] { return looks() == 0; }));
}

TEST_F(Onboarding, GoesOnWithoutThePermission)
{
    platform.accessibilityService.trusted = false;
    openForANewUser();
    for (int page = 0; page < 4; ++page)
        press(Qt::Key_Return);
    EXPECT_TRUE(settings.hasCompletedOnboarding());
    EXPECT_EQ(platform.accessibilityService.requests, 0);
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
    // Changed elsewhere, they change here.
    press(Qt::Key_Tab);
    const QQuickItem* control = window().activeFocusItem();
    EXPECT_TRUE(control->property("isOn").toBool());
    settings.setLaunchAtLogin(false);
    EXPECT_FALSE(control->property("isOn").toBool());
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

TEST_F(Onboarding, TheGuideSaysAllOfIt)
{
    open();
    click(text("Hướng dẫn"));
    const QStringList lines = list({"Hướng Dẫn Sử Dụng Tavrin",
        "Tối ưu hoá năng suất làm việc trên macOS với phím tắt thông minh",
        "Mở Wizard Giới Thiệu & Thiết Lập", "3 Bước bắt đầu nhanh", "Tạo phím tắt mới",
        "Bấm nút \"+ Thêm Phím Tắt\" màu xanh ở góc trên bên phải màn hình.", "Chọn hành động & Thu phím",
        "Chọn loại tác vụ (Mở App, Mở Web, Gõ text, Lệnh Shell). Bấm vào ô ghi phím và nhấn tổ hợp phím bạn "
        "muốn.",
        "Lưu & Sử dụng ngay",
        "Bấm \"Thêm Phím Tắt\". Tổ hợp phím của bạn sẽ có hiệu lực toàn cầu ngay lập tức ở mọi ứng dụng.",
        "Các loại hành động hỗ trợ", "Mở Ứng dụng",
        "Khởi chạy hoặc chuyển đổi tức thì đến ứng dụng bất kỳ trên máy.", "Mở Website",
        "Bật ngay trang web yêu thích trên trình duyệt mặc định.", "Văn bản & Clipboard",
        "Tự động dán vào ô input hoặc chép nhanh email, ngày giờ, văn bản mẫu.", "Lệnh Shell & Script",
        "Chạy các script Bash hoặc AppleScript tự động hoá chuyên sâu.", "Hành động Hệ thống",
        "Khoá màn hình, Sleep máy, tăng giảm âm lượng, bật Dark mode tức thì.", "Mẹo & Tính năng hay",
        "Nút \"Thử\": Nhấn nút Thử trên mỗi dòng phím tắt để kiểm tra hành động có chạy đúng ý không trước "
        "khi gõ phím.",
        "Tạm dừng nhanh: Bấm nút \"Tạm dừng tất cả\" ở chân trang hoặc trên Menu Bar khi cần chơi game để "
        "tránh xung đột phím.",
        "Chạy nền tối giản: Bật \"Ẩn icon thanh Dock\" và \"Khởi động cùng máy\" để Tavrin phục vụ bạn hoàn "
        "toàn âm thầm.",
        "Cấp quyền Hệ thống (Accessibility)",
        "Để bắt phím tắt toàn cục và thực hiện thao tác tự động hoá gõ phím/chạy script, macOS có thể cần "
        "cấp "
        "quyền Trợ năng (Accessibility) cho Tavrin.",
        "Mở Cài đặt"});
    EXPECT_EQ(texts().mid(texts().indexOf(lines.first())), lines);
    const QStringList pictures = list({"book.pages.fill", "sparkles", "bolt.circle.fill", "plus.circle.fill",
        "keyboard.fill", "checkmark.circle.fill", "square.grid.2x2.fill", "app.gift.fill", "globe",
        "doc.on.clipboard.fill", "terminal.fill", "gearshape.2.fill", "lightbulb.fill", "play.circle.fill",
        "pause.circle.fill", "menubar.rectangle", "lock.shield.fill", "gearshape.fill"});
    EXPECT_EQ(symbols().mid(symbols().indexOf(pictures.first())), pictures);
    // Controls that it speaks of by their captions.
    const QStringList captions = texts().first(texts().indexOf(lines.first()));
    for (const char* caption : {"Thêm Phím Tắt", "Ẩn icon thanh Dock", "Khởi động cùng máy"}) {
        EXPECT_EQ(captions.filter(QRegularExpression(u'^' + text(caption))).size(), 1) << caption;
        EXPECT_FALSE(lines.filter(text(caption)).isEmpty()) << caption;
    }
    click(text("Phím tắt"));
    EXPECT_TRUE(shows("Tạm dừng tất cả"));
}

TEST_F(Onboarding, TheGuideIsReadByTheKeyboard)
{
    open();
    click(text("Hướng dẫn"));
    const double before = place(text("Mở Cài đặt")).y();
    EXPECT_GT(before, window().height());
    press(Qt::Key_PageDown);
    EXPECT_LT(place(text("Mở Cài đặt")).y(), before);
    press(Qt::Key_End);
    EXPECT_LT(place(text("Mở Cài đặt")).bottom(), window().height());
    press(Qt::Key_Home);
    EXPECT_DOUBLE_EQ(place(text("Mở Cài đặt")).y(), before);
    press(Qt::Key_Backtab);
    EXPECT_EQ(window().activeFocusItem()->property("label"), text("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"));
    click(text("Phím tắt"));
    click(text("Hướng dẫn"));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(text("Mở Wizard Giới Thiệu & Thiết Lập")))
        << "on with the page, not with the window";
    press(Qt::Key_Down);
    EXPECT_DOUBLE_EQ(place(text("Mở Cài đặt")).y(), before - 40)
        << "it scrolls wherever the keyboard is in it";
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(text("Mở Cài đặt")));
    EXPECT_LT(place(text("Mở Cài đặt")).bottom(), window().height()) << "brought into sight";
    press(Qt::Key_Return);
    EXPECT_EQ(platform.accessibilityService.settingsOpened, 1);
}

TEST_F(Onboarding, IsAsLargeAsItIsMeantToBe)
{
    openForANewUser();
    const QRectF back = place(text("Bỏ qua"));
    EXPECT_EQ(window().size(), QSize(720, 540));
    const QQuickItem* panel = control(text("Tiếp tục"))->parentItem()->parentItem();
    EXPECT_EQ(panel->mapRectToScene(panel->boundingRect()), QRectF(70, 10, 580, 520));
    EXPECT_TRUE(panel->mapRectToScene(panel->boundingRect()).contains(back));
}

/// At the smallest size of the window every page can be reached to its end, by the keyboard alone.
TEST_F(Onboarding, FitsTheSmallestWindow)
{
    openForANewUser();
    resizeToTheSmallest();
    const QRectF sight(0, 56, 640, 354);
    for (const char* last :
        {"Tích hợp tinh gọn trên Menu Bar, tiêu thụ RAM cực thấp (< 25MB), không làm chậm máy.",
            "💡 Gợi ý: Khi bạn gạt bật quyền trong Cài đặt hệ thống, trạng thái bên trên sẽ tự động chuyển "
            "sang "
            "màu xanh.",
            "Hỗ trợ ghi nhận phím bằng cách gõ trực tiếp lên bàn phím rất dễ dàng.",
            "🎉 Bạn đã sẵn sàng làm chủ phím tắt trên macOS!"}) {
        // Keys act on what the last frame shows.
        place(text(last));
        press(Qt::Key_End);
        EXPECT_TRUE(sight.contains(place(text(last)))) << last;
        const char* forward = shows("Tiếp tục") ? "Tiếp tục" : "Bắt đầu sử dụng";
        EXPECT_TRUE(QRectF(0, 0, 640, 480).contains(place(text(forward))));
        press(Qt::Key_Return);
    }
    EXPECT_TRUE(settings.hasCompletedOnboarding());
}

} // namespace
} // namespace Tavrin
