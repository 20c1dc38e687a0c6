#include "support/WindowFixture.h"

#include <QClipboard>
#include <QGuiApplication>

namespace Tavrin {
namespace {

using Testing::waitFor;

/// The editor in the user's hands.
class ShortcutEditor : public Testing::Window {
protected:
    void SetUp() override
    {
        settings.setHasCompletedOnboarding(true);
        for (const char* name : {"Krita", "Zalo"}) {
            ApplicationInformation information;
            information.identifier = text(name).toLower();
            platform.applicationCatalog->add(text("/apps"), text(name) + u".app", information);
        }
        while (!store.shortcuts().empty())
            store.remove(store.shortcuts()[0].id);
        open();
    }
    ContentModel& content() { return *window().rootObject()->property("content").value<ContentModel*>(); }
    EditorModel& editor() { return *content().editor(); }

    void openNew()
    {
        press(Qt::Key_N, Qt::ControlModifier);
        ASSERT_TRUE(shows("Thêm Phím Tắt Mới"));
    }
    void openWith(const ShortcutItem& item)
    {
        store.add(item);
        Testing::drainEvents();
        content().edit(static_cast<int>(store.shortcuts().size()) - 1);
        Testing::drainEvents();
        ASSERT_TRUE(shows("Chỉnh Sửa Phím Tắt"));
    }
    void record(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        click(text("Ghi phím"));
        ASSERT_TRUE(platform.fakeKeyCapture.isCapturing());
        platform.fakeKeyCapture.press(keyCode, modifiers);
        Testing::drainEvents();
    }
    bool shows(const char* utf8)
    {
        layOut();
        return texts().contains(text(utf8));
    }
    /// Lays everything out, as the next frame would: what a user presses has been on screen.
    void layOut() { window().grabWindow(); }
    void click(const QString& label)
    {
        layOut();
        Window::click(label);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        layOut();
        Window::press(key, modifiers);
    }
    /// Puts the keyboard into the control that a screen reader calls so.
    void enter(const char* label)
    {
        layOut();
        QQuickItem* item = labelled(window().contentItem(), text(label));
        ASSERT_TRUE(item) << label;
        item->forceActiveFocus();
    }
    bool isOpen() { return content().isEditing(); }
    /// The control that has the keyboard, by what a screen reader says of it.
    QString focused()
    {
        for (const QQuickItem* item = window().activeFocusItem(); item; item = item->parentItem()) {
            const QString label = item->property("label").toString();
            if (!label.isEmpty())
                return label;
        }
        return {};
    }
    /// Presses a control that may have to be scrolled to.
    void reach(const char* utf8)
    {
        enter(utf8);
        click(text(utf8));
    }
    QStringList tabOrder()
    {
        QStringList order;
        while (order.size() < 40 && !order.contains(focused())) {
            order.append(focused());
            press(Qt::Key_Tab);
        }
        return order;
    }
    QString fieldText() { return window().activeFocusItem()->property("text").toString(); }

    static QQuickItem* labelled(QQuickItem* item, const QString& label)
    {
        if (!item->isVisible())
            return nullptr;
        if (item->property("label").toString() == label)
            return item;
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* found = labelled(child, label))
                return found;
        }
        return nullptr;
    }
    static ShortcutItem item(ActionType type, const QString& value)
    {
        return {QUuid::createUuid(), text("Có sẵn"), 40, 0x300, type, value, true, 1};
    }
};

TEST_F(ShortcutEditor, SaysEverythingInItsWords)
{
    openNew();
    for (const char* quoted : {"Thêm Phím Tắt Mới", "Gán tổ hợp phím để kích hoạt tác vụ mong muốn",
             "1. Phím tắt & Tên gọi", "Tên gợi nhớ:", "Vd: Mở Telegram, Khóa màn hình, Xem IP...",
             "Tổ hợp phím tắt:", "Chưa gán phím tắt", "Ghi phím", "2. Hành động thực thi", "Mở App",
             "Trang Web", "Văn bản", "Script", "Hệ thống",
             "Ứng dụng sẽ mở:", "Bấm vào đây để chọn Ứng dụng từ danh sách...", "Hủy", "Tạo Phím Tắt"})
        EXPECT_TRUE(shows(quoted)) << quoted;

    click(text("Trang Web"));
    for (const char* quoted : {"Đường dẫn trang web (URL):", "Sẽ mở bằng trình duyệt mặc định của hệ thống."})
        EXPECT_TRUE(shows(quoted)) << quoted;
    EXPECT_FALSE(shows("Ứng dụng sẽ mở:"));

    platform.accessibilityService.trusted = false;
    click(text("Văn bản"));
    for (const char* quoted : {"Mẫu văn bản có sẵn...",
             "Nội dung văn bản cần chèn / chép:", "Chèn biến:", "Ngày hiện tại", "Giờ hiện tại", "Ngày & Giờ",
             "Clipboard hiện tại", "Chế độ thực thi:", "Tự động dán (Auto Paste)",
             "Khôi phục lại nội dung Clipboard trước đó sau khi dán",
             "Chưa cấp quyền Trợ năng (Accessibility)",
             "macOS yêu cầu cấp quyền để phím tắt tự động dán vào các ứng dụng khác.", "Cấp quyền ngay"})
        EXPECT_TRUE(shows(quoted)) << quoted;

    click(text("Script"));
    for (const char* quoted : {"Lệnh Shell Script (zsh):", "Mẫu script có sẵn..."})
        EXPECT_TRUE(shows(quoted)) << quoted;

    click(text("Hệ thống"));
    for (const char* quoted : {"Chọn hành động hệ thống:", "Nguồn & Bảo mật", "Âm thanh & Hiển thị",
             "Tiện ích & Hệ thống", "Khoá màn hình", "Khởi động lại thanh Dock"})
        EXPECT_TRUE(shows(quoted)) << quoted;
}

TEST_F(ShortcutEditor, MakesAShortcutWithTheKeyboardAlone)
{
    openNew();
    EXPECT_EQ(focused(), text("Tên gợi nhớ"));
    type(text("Bảng việc"));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), text("Ghi phím"));
    press(Qt::Key_Space);
    EXPECT_TRUE(shows("Nhấn tổ hợp phím bất kỳ..."));
    platform.fakeKeyCapture.press(40, 0x300);
    Testing::drainEvents();
    for (const char* badge : {"⇧ Shift", "⌘ Command", "K"})
        EXPECT_TRUE(shows(badge)) << badge;
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), text("Mở App"));
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), text("Trang Web"));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), text("Đường dẫn trang web (URL)"));
    type(text("example.org/việc"));
    press(Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    ASSERT_EQ(store.shortcuts().size(), 1U);
    const ShortcutItem& made = store.shortcuts()[0];
    EXPECT_EQ(made.name, text("Bảng việc"));
    EXPECT_EQ(made.keyCode, 40U);
    EXPECT_EQ(made.modifiers, 0x300U);
    EXPECT_EQ(made.actionType, ActionType::openURL);
    EXPECT_EQ(made.actionValue, text("example.org/việc"));
    EXPECT_EQ(hotKeys.registeredHotKeys().size(), 1U) << "it is live at once";
    EXPECT_TRUE(shows("Bảng việc"));
}

TEST_F(ShortcutEditor, MakesAShortcutWithThePointerAlone)
{
    click(text("Thêm Phím Tắt"));
    record(96, 0);
    EXPECT_TRUE(shows("💡 Trên bàn phím MacBook, mặc định cần giữ kèm nút Fn khi bấm các phím F1–F12."));
    click(text("Hệ thống"));
    click(text("Tắt màn hình ngay (Sleep Display)"));
    click(text("Tạo Phím Tắt"));
    EXPECT_FALSE(isOpen());
    ASSERT_EQ(store.shortcuts().size(), 1U);
    EXPECT_EQ(store.shortcuts()[0].actionValue, text("sleepDisplay"));
    EXPECT_EQ(store.shortcuts()[0].name, text("Tắt màn hình ngay (Sleep Display)"));
}

TEST_F(ShortcutEditor, ChangesTheSelectedRow)
{
    store.add(item(ActionType::shellScript, text("echo 1")));
    Testing::drainEvents();
    press(Qt::Key_Return);
    ASSERT_TRUE(shows("Chỉnh Sửa Phím Tắt"));
    EXPECT_TRUE(shows("Lưu Thay Đổi"));
    press(Qt::Key_A, Qt::ControlModifier);
    type(text("Đổi tên"));
    press(Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    ASSERT_EQ(store.shortcuts().size(), 1U);
    EXPECT_EQ(store.shortcuts()[0].name, text("Đổi tên"));
    EXPECT_EQ(store.shortcuts()[0].createdAt, 1);
    EXPECT_TRUE(hasFocus(text("Danh sách phím tắt"))) << "the keyboard is back where it was";
}

TEST_F(ShortcutEditor, SaysWhatIsMissingAndKeepsWhatIsThere)
{
    openNew();
    type(text("Tên"));
    press(Qt::Key_Return);
    EXPECT_TRUE(shows("Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt."));
    record(40, 0x100);
    click(text("Tạo Phím Tắt"));
    EXPECT_TRUE(shows("Vui lòng chọn ứng dụng cần mở."));
    EXPECT_FALSE(shows("Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt."));
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(store.shortcuts().empty());
    EXPECT_EQ(editor().name(), text("Tên"));
}

TEST_F(ShortcutEditor, ClosesWithoutSaving)
{
    openNew();
    record(40, 0x100);
    click(text("Hệ thống"));
    click(text("Hủy"));
    EXPECT_FALSE(isOpen());
    openNew();
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(store.shortcuts().empty());
}

TEST_F(ShortcutEditor, EscapeEndsTheRecordingFirst)
{
    openNew();
    click(text("Ghi phím"));
    EXPECT_TRUE(platform.fakeKeyCapture.isCapturing());
    press(Qt::Key_Escape);
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    EXPECT_TRUE(isOpen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
}

TEST_F(ShortcutEditor, RecordsFromTheFieldAndClears)
{
    openNew();
    EXPECT_FALSE(control(text("Xoá phím tắt")));
    click(text("Chưa gán phím tắt"));
    EXPECT_TRUE(platform.fakeKeyCapture.isCapturing());
    click(text("Hủy"));
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing()) << "the button that started it";
    EXPECT_TRUE(isOpen());
    record(0, 0x800);
    EXPECT_TRUE(shows("⌥ Option"));
    EXPECT_FALSE(shows("A"));
    click(text("Xoá phím tắt"));
    EXPECT_TRUE(shows("Chưa gán phím tắt"));
    EXPECT_FALSE(control(text("Xoá phím tắt")));
    record(0, 0);
    EXPECT_TRUE(shows("Chưa gán phím tắt")) << "A alone counts as none";
}

TEST_F(ShortcutEditor, RecordsNothingOnceTheKeyboardIsGone)
{
    openNew();
    click(text("Ghi phím"));
    platform.fakeKeyCapture.lose();
    Testing::drainEvents();
    EXPECT_TRUE(shows("Ghi phím"));
    click(text("Ghi phím"));
    window().hide();
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    window().show({});
    EXPECT_TRUE(waitFor([this] { return shows("Ghi phím"); })) << "the editor itself stays";
}

TEST_F(ShortcutEditor, HasLinesWhereReturnMakesOneAndSavesWithControl)
{
    openNew();
    record(40, 0x100);
    click(text("Script"));
    enter("Lệnh Shell Script (zsh)");
    type(text("echo 1"));
    press(Qt::Key_Return);
    type(text("echo 2"));
    EXPECT_TRUE(isOpen());
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(isOpen());
    ASSERT_EQ(store.shortcuts().size(), 1U);
    EXPECT_EQ(store.shortcuts()[0].actionValue, text("echo 1\necho 2"));
}

TEST_F(ShortcutEditor, FillsInAScriptThatIsReady)
{
    openNew();
    click(text("Script"));
    enter("Mẫu script có sẵn");
    press(Qt::Key_Space);
    EXPECT_TRUE(shows("Giữ máy luôn sáng và không sleep trong 60 phút")) << "what each one does";
    press(Qt::Key_End);
    press(Qt::Key_Home);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_FALSE(shows("Giữ máy luôn sáng và không sleep trong 60 phút"));
    EXPECT_EQ(editor().name(), text("Chống ngủ máy 1 giờ (Caffeinate)"));
    EXPECT_EQ(editor().actionValue(), referenceScriptPresets()[1].code);
    EXPECT_EQ(control(text("Lệnh Shell Script (zsh)"))->property("text").toString(),
        referenceScriptPresets()[1].code);
    EXPECT_EQ(control(text("Tên gợi nhớ"))->property("text").toString(), editor().name());
    EXPECT_TRUE(isOpen());
}

TEST_F(ShortcutEditor, TakesBackAScriptThatReplacedTheUsersOwn)
{
    openWith(item(ActionType::shellScript, text("echo của tôi")));
    click(text("Mẫu script có sẵn..."));
    click(text("Khởi động lại Dock & Control Center"));
    EXPECT_EQ(editor().actionValue(), text("killall Dock; killall ControlCenter"));
    EXPECT_EQ(editor().name(), text("Có sẵn"));
    enter("Lệnh Shell Script (zsh)");
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor().actionValue(), text("echo của tôi"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor().actionValue(), text("echo của tôi")) << "there is nothing before that";
}

TEST_F(ShortcutEditor, PutsTextsTogether)
{
    openNew();
    click(text("Văn bản"));
    click(text("Mẫu văn bản có sẵn..."));
    click(text("Trích dẫn Clipboard"));
    EXPECT_EQ(editor().quickText(), text("> {clipboard}"));
    EXPECT_EQ(editor().name(), text("Trích dẫn Clipboard"));
    for (const char* token : {"Ngày hiện tại", "Giờ hiện tại", "Ngày & Giờ", "Clipboard hiện tại"})
        reach(token);
    EXPECT_EQ(editor().quickText(), text("> {clipboard}{date}{time}{datetime}{clipboard}"));
    enter("Nội dung văn bản cần chèn / chép");
    EXPECT_EQ(fieldText(), editor().quickText());
    type(text("!"));
    EXPECT_EQ(editor().quickText(), text("> {clipboard}{date}{time}{datetime}{clipboard}!"))
        << "the cursor is where the text ends";
}

TEST_F(ShortcutEditor, AsksAboutTheClipboardOnlyWherePasting)
{
    platform.accessibilityService.trusted = false;
    openNew();
    click(text("Văn bản"));
    reach("Khôi phục lại nội dung Clipboard trước đó sau khi dán");
    EXPECT_TRUE(editor().restoreClipboard());
    reach("Cấp quyền ngay");
    EXPECT_EQ(platform.accessibilityService.requests, 1);
    reach("Chế độ thực thi");
    click(text("Chỉ chép vào Clipboard"));
    EXPECT_EQ(editor().selectedMode(), 1);
    EXPECT_FALSE(shows("Khôi phục lại nội dung Clipboard trước đó sau khi dán"));
    EXPECT_FALSE(shows("Chưa cấp quyền Trợ năng (Accessibility)"));
    EXPECT_TRUE(editor().restoreClipboard());
    reach("Chế độ thực thi");
    click(text("Dán & Lưu vào Clipboard"));
    EXPECT_TRUE(shows("Chưa cấp quyền Trợ năng (Accessibility)"));
}

TEST_F(ShortcutEditor, GoesFromControlToControlAsOneReads)
{
    openNew();
    record(40, 0x100);
    enter("Tên gợi nhớ");
    const QStringList first{text("Tên gợi nhớ"), text("Xoá phím tắt"), text("Ghi phím")};
    const QStringList last{text("Hủy"), text("Tạo Phím Tắt")};
    const std::vector<QStringList> between{
        {text("Mở App"), text("Bấm vào đây để chọn Ứng dụng từ danh sách...")},
        {text("Trang Web"), text("Đường dẫn trang web (URL)")},
        {text("Văn bản"), text("Mẫu văn bản có sẵn"), text("Nội dung văn bản cần chèn / chép"),
            text("Ngày hiện tại"), text("Giờ hiện tại"), text("Ngày & Giờ"), text("Clipboard hiện tại"),
            text("Chế độ thực thi"), text("Khôi phục lại nội dung Clipboard trước đó sau khi dán")},
        {text("Script"), text("Mẫu script có sẵn"), text("Lệnh Shell Script (zsh)")},
        {text("Hệ thống"), text("Khoá màn hình")},
    };
    for (int type = 0; type < 5; ++type) {
        editor().setSelectedType(type);
        layOut();
        enter("Tên gợi nhớ");
        EXPECT_EQ(tabOrder(), first + between[static_cast<std::size_t>(type)] + last) << type;
        EXPECT_EQ(focused(), text("Tên gợi nhớ")) << "round and round, and never below the sheet";
    }
    press(Qt::Key_Backtab);
    EXPECT_EQ(focused(), text("Tạo Phím Tắt"));
}

TEST_F(ShortcutEditor, MovesAmongCardsWithArrows)
{
    openNew();
    enter("Mở App");
    press(Qt::Key_Left);
    EXPECT_EQ(editor().selectedType(), 0);
    for (int step = 0; step < 6; ++step)
        press(Qt::Key_Right);
    EXPECT_EQ(editor().selectedType(), 4);
    press(Qt::Key_Space);
    EXPECT_EQ(focused(), text("Hệ thống"));
    press(Qt::Key_Tab);
    for (int step = 0; step < 3; ++step)
        press(Qt::Key_Down);
    EXPECT_EQ(focused(), text("Chuyển chế độ Giao diện Sáng / Tối"));
    EXPECT_EQ(editor().selectedSystemAction(), 3);
    press(Qt::Key_Up);
    EXPECT_EQ(editor().selectedSystemAction(), 2);
}

TEST_F(ShortcutEditor, ScrollsWithTheWheel)
{
    openNew();
    click(text("Văn bản"));
    layOut();
    const auto place = [this] { return control(text("Chế độ thực thi:"))->mapToScene({0, 0}).y(); };
    const qreal before = place();
    const QPointF pointer(window().width() / 2.0, 300);
    for (int notch = 0; notch < 20; ++notch) {
        QWheelEvent event(
            pointer, window().mapToGlobal(pointer), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        // How fast the wheel turns is measured by this.
        event.setTimestamp(1000 + 20 * static_cast<quint64>(notch));
        QCoreApplication::sendEvent(&window(), &event);
        Testing::drainEvents();
    }
    EXPECT_TRUE(waitFor([&] { return place() < before - 50; }));
    EXPECT_EQ(content().isEditing(), true);
}

class EditorOfSize : public ShortcutEditor, public testing::WithParamInterface<QSize> { };

TEST_P(EditorOfSize, BringsEveryControlIntoSight)
{
    platform.accessibilityService.trusted = false;
    window().resize(GetParam());
    ASSERT_TRUE(waitFor([this] { return window().rootObject()->width() == GetParam().width(); }));
    openNew();
    press(Qt::Key_Return);
    record(99, 0x1B00);
    for (int type = 0; type < 5; ++type) {
        editor().setSelectedType(type);
        layOut();
        enter("Tên gợi nhớ");
        const QQuickItem* header = control(text("Gán tổ hợp phím để kích hoạt tác vụ mong muốn"));
        const QQuickItem* footer = control(text("Tạo Phím Tắt"));
        ASSERT_TRUE(header && footer);
        const qreal top = header->mapRectToScene(header->boundingRect()).bottom();
        const qreal bottom = footer->mapRectToScene(footer->boundingRect()).bottom();
        EXPECT_LE(bottom, GetParam().height());
        EXPECT_GE(control(text("Thêm Phím Tắt Mới"))->mapToScene({0, 0}).y(), 0);
        for (int step = 0; step < 14; ++step) {
            const QString label = focused();
            const QQuickItem* item = control(label);
            ASSERT_TRUE(item) << qPrintable(label);
            const QRectF frame = item->mapRectToScene(item->boundingRect());
            EXPECT_GE(frame.top(), top) << qPrintable(label);
            EXPECT_LE(frame.bottom(), bottom) << qPrintable(label);
            EXPECT_GE(frame.left(), 0) << qPrintable(label);
            EXPECT_LE(frame.right(), GetParam().width()) << qPrintable(label);
            press(Qt::Key_Tab);
        }
    }
    enter("Hệ thống");
    press(Qt::Key_Tab);
    for (int step = 0; step < 12; ++step)
        press(Qt::Key_Down);
    const QQuickItem* lastCard = control(text("Khởi động lại thanh Dock"));
    const QQuickItem* footer = control(text("Tạo Phím Tắt"));
    EXPECT_LE(lastCard->mapRectToScene(lastCard->boundingRect()).bottom(), footer->mapToScene({0, 0}).y());
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, EditorOfSize, testing::Values(QSize(640, 480), QSize(720, 540), QSize(1920, 1080)));

struct FieldCase {
    const char* type;
    const char* label;
};

class EditorField : public ShortcutEditor, public testing::WithParamInterface<FieldCase> {
protected:
    void enterField()
    {
        openNew();
        click(text(GetParam().type));
        enter(GetParam().label);
    }
};

TEST_P(EditorField, HasTheEditingKeys)
{
    enterField();
    QGuiApplication::clipboard()->setText(text("Tiếng Việt"));
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), text("Tiếng Việt"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), QString());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text("Tiếng Việt"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), text("Tiếng Việt"));
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(fieldText(), QString());
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    press(Qt::Key_End);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), text("Tiếng ViệtTiếng Việt"));
}

TEST_P(EditorField, TakesAnyText)
{
    enterField();
    const QString rare = text("WW👩‍👩‍👧 مرحبا e\u0302\u0301 <b>&amp;</b> ").repeated(200);
    const QString whole = rare + text("xin chào các bạn ").repeated(100'000 / 17) + rare;
    ASSERT_GE(whole.size(), 100'000);
    QGuiApplication::clipboard()->setText(whole);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(fieldText() == whole, true);
}

TEST_P(EditorField, MakesOneLineWhereThereIsOne)
{
    enterField();
    const QString lines = text("một\r\nhai\n\nba");
    QGuiApplication::clipboard()->setText(lines);
    press(Qt::Key_V, Qt::ControlModifier);
    const bool hasLines = window().activeFocusItem()->inherits("QQuickTextEdit");
    EXPECT_EQ(fieldText(), hasLines ? text("một\nhai\n\nba") : text("một hai  ba"));
    QGuiApplication::clipboard()->setText(QString(100'000, u'\n'));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(fieldText().size(), 100'000);
}

INSTANTIATE_TEST_SUITE_P(Fields, EditorField,
    testing::Values(FieldCase{"Mở App", "Tên gợi nhớ"}, FieldCase{"Trang Web", "Đường dẫn trang web (URL)"},
        FieldCase{"Văn bản", "Nội dung văn bản cần chèn / chép"},
        FieldCase{"Script", "Lệnh Shell Script (zsh)"}));

TEST_F(ShortcutEditor, ChangesNothingOfATextThatIsOnlyLookedAt)
{
    const QString script = text(" dòng 1\r\n\tdòng 2\u2028\n");
    openWith(item(ActionType::shellScript, script));
    click(text("Trang Web"));
    click(text("Script"));
    EXPECT_EQ(editor().actionValue() == script, true);
}

TEST_F(ShortcutEditor, ShowsTheApplicationThatIsChosen)
{
    openWith(item(ActionType::launchApp, text("/opt/khong-co.desktop")));
    EXPECT_TRUE(shows("/opt/khong-co.desktop"));
    EXPECT_TRUE(shows("Đổi Ứng Dụng..."));
    EXPECT_FALSE(shows("Bấm vào đây để chọn Ứng dụng từ danh sách..."));
}

TEST_F(ShortcutEditor, TakesAnApplicationFromThePicker)
{
    openNew();
    record(40, 0x100);
    enter("Bấm vào đây để chọn Ứng dụng từ danh sách...");
    press(Qt::Key_Space);
    ASSERT_TRUE(shows("Chọn Ứng Dụng"));
    ASSERT_TRUE(waitFor([this] { return shows("Zalo"); }));
    EXPECT_TRUE(hasFocus(text("Tìm ứng dụng")));
    for (int step = 0; step < 8; ++step) {
        press(Qt::Key_Tab);
        EXPECT_NE(focused(), text("Tên gợi nhớ")) << "what is covered does not get the keyboard";
    }
    press(Qt::Key_Escape);
    EXPECT_FALSE(shows("Chọn Ứng Dụng"));
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(focused(), text("Bấm vào đây để chọn Ứng dụng từ danh sách..."));

    press(Qt::Key_Return);
    ASSERT_TRUE(shows("Chọn Ứng Dụng"));
    type(text("zal"));
    press(Qt::Key_Return);
    EXPECT_FALSE(shows("Chọn Ứng Dụng"));
    ASSERT_TRUE(isOpen()) << "choosing is not saving";
    EXPECT_EQ(editor().actionValue(), text("/apps/Zalo.app"));
    EXPECT_TRUE(shows("Zalo"));
    EXPECT_EQ(focused(), text("Đổi Ứng Dụng..."));
    click(text("Tạo Phím Tắt"));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(store.shortcuts()[0].name, text("Zalo"));
}

TEST_F(ShortcutEditor, ThePickerEndsARecording)
{
    openNew();
    click(text("Ghi phím"));
    click(text("Bấm vào đây để chọn Ứng dụng từ danh sách..."));
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    EXPECT_TRUE(shows("Chọn Ứng Dụng"));
}

} // namespace
} // namespace Tavrin
