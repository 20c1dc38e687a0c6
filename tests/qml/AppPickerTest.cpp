#include "Core/Applications/AppScanner.h"
#include "UI/Picker/AppPickerModel.h"
#include "support/WindowFixture.h"

#include <QQmlComponent>
#include <QSemaphore>
#include <QSignalSpy>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using testing::Contains;
using Testing::drainEvents;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Testing::waitFor;

const QString apps = QStringLiteral("/apps");

class AppPickerView : public Testing::Window {
protected:
    ~AppPickerView() override { m_sheet.reset(); }

    void add(const char* id, const char* name, const char* color = "")
    {
        platform.applicationCatalog->add(apps, QString::fromUtf8(name) + u".app",
            {QString::fromUtf8(id), QString::fromUtf8(name), {}, QString::fromUtf8(color)});
    }
    void addSome()
    {
        add("com.example.chrome", "Google Chrome", "#ff0000");
        add("org.sample.term", "Terminal", "#00ff00");
        add("", "Công cụ nhỏ", "#0000ff");
    }
    void addMany(int count)
    {
        for (int number = 0; number < count; ++number)
            add(qPrintable(QStringLiteral("org.sample.app%1").arg(number)),
                qPrintable(QStringLiteral("Ứng dụng %1").arg(number, 4, 10, QLatin1Char('0'))));
    }

    /// Puts the sheet before the window, and waits for the list unless it is to be looked at before.
    void openSheet(bool awaitsList = true)
    {
        open();
        // Only the sheet is looked at here.
        window().rootObject()->setVisible(false);
        scanner = std::make_unique<AppScanner>(platform.applicationCatalog);
        picker = std::make_unique<AppPickerModel>(*scanner, platform.fakeOpenPanel, [this](const auto& app) {
            chosen.push_back(app.id().toStdString());
            EXPECT_EQ(closed->count(), 0) << "the choice comes first";
        });
        QQmlComponent component(
            window().engine(), QUrl(QStringLiteral("qrc:/qt/qml/Tavrin/Picker/AppPickerSheet.qml")));
        m_sheet.reset(qobject_cast<QQuickItem*>(component.beginCreate(window().rootContext())));
        ASSERT_TRUE(m_sheet) << qPrintable(component.errorString());
        m_sheet->setParentItem(window().contentItem());
        fitSheet();
        component.setInitialProperties(
            m_sheet.get(), {{QStringLiteral("picker"), QVariant::fromValue(picker.get())}});
        component.completeCreate();
        closed = std::make_unique<QSignalSpy>(m_sheet.get(), SIGNAL(closed()));
        if (awaitsList)
            awaitRows();
        drainEvents();
    }
    void awaitRows()
    {
        EXPECT_TRUE(waitFor([this] { return !scanner->isLoading() && control(QStringLiteral("Chọn")); }));
    }
    void fitSheet() { m_sheet->setSize(window().contentItem()->size()); }
    void pressSeveral(Qt::Key key, int times)
    {
        for (int time = 0; time < times; ++time)
            press(key);
    }
    /// Names in the rows that can be seen, top to bottom.
    std::vector<std::string> names()
    {
        std::vector<std::string> result;
        for (int row = 0; row < picker->count(); ++row) {
            QString name = picker->index(row).data(AppPickerModel::nameRole).toString();
            if (texts().contains(name))
                result.push_back(name.toStdString());
        }
        return result;
    }
    /// The name in the row with the keyboard.
    QString focusedRow() { return window().activeFocusItem()->property("name").toString(); }
    QColor colorAt(QPointF place)
    {
        return window().grabWindow().pixelColor((place * window().devicePixelRatio()).toPoint());
    }
    QRectF place(const QString& label)
    {
        const QQuickItem* item = control(label);
        return item ? item->mapRectToScene({0, 0, item->width(), item->height()}) : QRectF();
    }

    /// Of the sheet's ground, which is what the search field lies on.
    QSizeF groundSize() { return control(QStringLiteral("Tìm ứng dụng"))->parentItem()->size(); }

    std::unique_ptr<AppScanner> scanner;
    std::unique_ptr<AppPickerModel> picker;
    std::unique_ptr<QSignalSpy> closed;
    std::vector<std::string> chosen;

private:
    std::unique_ptr<QQuickItem> m_sheet;
};

const QString search = QStringLiteral("Tìm ứng dụng");
const QString nothingFound = QStringLiteral("Không tìm thấy ứng dụng phù hợp");

TEST_F(AppPickerView, WaitsForTheScanAndThenListsByItself)
{
    QSemaphore gate;
    addSome();
    platform.applicationCatalog->listing = [&](const QString&) { gate.acquire(); };
    openSheet(/*awaitsList=*/false);
    for (const char* text : {"Chọn Ứng Dụng", "Chọn app trên máy để gán vào phím tắt", "Đóng",
             "Tìm ứng dụng (Chrome, Terminal, Telegram...)", "Đang quét ứng dụng trên máy...",
             "0 ứng dụng đã cài đặt", "Duyệt file từ ổ cứng...", "Hủy"})
        EXPECT_THAT(texts(), Contains(QString::fromUtf8(text)));
    EXPECT_THAT(texts(), Not(Contains(nothingFound)));
    gate.release();
    awaitRows();
    EXPECT_THAT(names(), ElementsAre("Công cụ nhỏ", "Google Chrome", "Terminal"));
    for (const char* text :
        {"/apps/Công cụ nhỏ.app", "com.example.chrome", "org.sample.term", "Chọn", "3 ứng dụng đã cài đặt"})
        EXPECT_THAT(texts(), Contains(QString::fromUtf8(text)));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Đang quét ứng dụng trên máy..."))));
}

TEST_F(AppPickerView, SearchesWhileTheUserTypes)
{
    addSome();
    openSheet();
    EXPECT_TRUE(hasFocus(search)) << "from the beginning";
    type(QStringLiteral("CHR"));
    EXPECT_THAT(names(), ElementsAre("Google Chrome"));
    type(QStringLiteral("x"));
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(texts(), Contains(nothingFound));
    EXPECT_THAT(texts(), Contains(QStringLiteral("3 ứng dụng đã cài đặt")));
    press(Qt::Key_Return);
    EXPECT_THAT(chosen, IsEmpty());
    click(QStringLiteral("Xoá"));
    EXPECT_THAT(names(), ElementsAre("Công cụ nhỏ", "Google Chrome", "Terminal"));
    EXPECT_TRUE(hasFocus(search));
    EXPECT_FALSE(control(QStringLiteral("Xoá"))) << "nothing is left to empty";
    type(QString(100'000, u'\u0301') + u"\n\u202Eمرحبا😀");
    EXPECT_THAT(texts(), Contains(nothingFound));
}

TEST_F(AppPickerView, ChoosesByPointer)
{
    addSome();
    openSheet();
    type(QStringLiteral("term"));
    click(QStringLiteral("Chọn"));
    EXPECT_THAT(chosen, ElementsAre("org.sample.term"));
    EXPECT_EQ(closed->count(), 1);
}

TEST_F(AppPickerView, ChoosesByTwoClicksOnARow)
{
    addSome();
    openSheet();
    const QPoint row = place(QStringLiteral("Google Chrome")).center().toPoint();
    clickAt(row);
    EXPECT_THAT(chosen, IsEmpty());
    QTest::mouseDClick(&window(), Qt::LeftButton, {}, row);
    EXPECT_THAT(chosen, ElementsAre("com.example.chrome"));
}

TEST_F(AppPickerView, ChoosesByKeysFromTheSearch)
{
    addSome();
    openSheet();
    pressSeveral(Qt::Key_Down, 2);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre("com.example.chrome"));
    EXPECT_EQ(closed->count(), 1);
}

TEST_F(AppPickerView, ChoosesTheFirstMatch)
{
    addSome();
    openSheet();
    pressSeveral(Qt::Key_Down, 9);
    type(QStringLiteral("e"));
    press(Qt::Key_Enter);
    EXPECT_THAT(chosen, ElementsAre("com.example.chrome"));
}

TEST_F(AppPickerView, IsWalkedThroughInReadingOrder)
{
    addSome();
    openSheet();
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), QStringLiteral("Google Chrome"));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Duyệt file từ ổ cứng...")));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Hủy")));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(QStringLiteral("Đóng")));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(search)) << "round, and never out of the sheet";
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedRow(), QStringLiteral("Google Chrome"));
    press(Qt::Key_Space);
    EXPECT_THAT(chosen, ElementsAre("com.example.chrome"));
}

TEST_F(AppPickerView, ClosesWithoutAChoice)
{
    addSome();
    openSheet();
    click(QStringLiteral("Đóng"));
    EXPECT_EQ(closed->count(), 1);
    click(QStringLiteral("Hủy"));
    EXPECT_EQ(closed->count(), 2);
    control(search)->forceActiveFocus();
    type(QStringLiteral("chr"));
    press(Qt::Key_Escape);
    EXPECT_EQ(closed->count(), 3);
    press(Qt::Key_Tab);
    press(Qt::Key_Escape);
    EXPECT_EQ(closed->count(), 4) << "wherever the keyboard is";
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(AppPickerView, BrowsesForAFile)
{
    addSome();
    platform.applicationCatalog->known[QStringLiteral("/opt/Nameless.app")] = {};
    openSheet();
    click(QStringLiteral("Duyệt file từ ổ cứng..."));
    EXPECT_EQ(platform.fakeOpenPanel.requests, 1);
    platform.fakeOpenPanel.answer(std::nullopt);
    drainEvents();
    EXPECT_EQ(closed->count(), 0);
    click(QStringLiteral("Duyệt file từ ổ cứng..."));
    platform.fakeOpenPanel.answer(QStringLiteral("/opt/Nameless.app"));
    EXPECT_TRUE(waitFor([this] { return closed->count() == 1; }));
    EXPECT_THAT(chosen, ElementsAre("/opt/Nameless.app"));
}

TEST_F(AppPickerView, DrawsThePictures)
{
    addSome();
    openSheet();
    const auto iconOf = [this](const char* name) {
        const QRectF row = place(QString::fromUtf8(name));
        return colorAt({row.x() - 12 - 16, row.center().y() + 8});
    };
    EXPECT_TRUE(waitFor([&] { return iconOf("Google Chrome") == QColor(Qt::red); }));
    EXPECT_TRUE(waitFor([&] { return iconOf("Terminal") == QColor(Qt::green); }));
    EXPECT_TRUE(waitFor([&] { return iconOf("Công cụ nhỏ") == QColor(Qt::blue); }));
    type(QStringLiteral("term"));
    EXPECT_TRUE(waitFor([&] { return iconOf("Terminal") == QColor(Qt::green); })) << "in another row now";
}

TEST_F(AppPickerView, FitsIntoTheSmallestWindow)
{
    addMany(30);
    openSheet();
    for (const QSize size : {QSize(720, 540), QSize(640, 480), QSize(1400, 1000)}) {
        window().resize(size);
        drainEvents();
        fitSheet();
        const QSizeF sheet = groundSize();
        EXPECT_EQ(sheet.width(), 480);
        EXPECT_EQ(sheet.height(), std::min(500, size.height() - 24));
        const QRectF whole{QPointF(), QSizeF(size)};
        for (const char* label : {"Đóng", "Tìm ứng dụng", "Chọn", "Duyệt file từ ổ cứng...", "Hủy"})
            EXPECT_TRUE(whole.contains(place(QString::fromUtf8(label)))) << label;
    }
}

TEST_F(AppPickerView, ShowsAnyNameWithinItsRow)
{
    add("x", "<b>đậm</b> \u202Eمرحبا");
    add(qPrintable(QString(10'000, u'i')), qPrintable(QString(10'000, u'W')));
    openSheet();
    EXPECT_THAT(texts(), Contains(QStringLiteral("<b>đậm</b> \u202Eمرحبا")));
    const QRectF button = place(QStringLiteral("Chọn"));
    EXPECT_LT(button.right(), place(search).right() + 20);
    EXPECT_LT(place(QStringLiteral("<b>đậm</b> \u202Eمرحبا")).right(), button.left());
}

TEST_F(AppPickerView, BuildsOnlyTheRowsThatCanBeSeen)
{
    addMany(500);
    openSheet();
    EXPECT_LT(names().size(), 30U);
    EXPECT_THAT(names(), Contains("Ứng dụng 0000"));
    press(Qt::Key_Tab);
    press(Qt::Key_End);
    EXPECT_TRUE(waitFor([this] { return texts().contains(QStringLiteral("Ứng dụng 0499")); }));
    EXPECT_LT(names().size(), 30U);
    press(Qt::Key_Home);
    EXPECT_TRUE(waitFor([this] { return texts().contains(QStringLiteral("Ứng dụng 0000")); }));
    pressSeveral(Qt::Key_PageDown, 2);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen.size(), 1U);
    EXPECT_NE(chosen, std::vector<std::string>{"org.sample.app0"});
}

} // namespace
} // namespace Tavrin
