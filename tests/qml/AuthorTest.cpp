#include "support/WindowFixture.h"

#include "UI/Author/AuthorModel.h"
#include "UI/Symbols/SymbolProvider.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlEngine>

namespace Tavrin {
namespace {

using Testing::collectTexts;
using Testing::drainEvents;
using Testing::waitFor;

constexpr auto check = "Kiểm tra cập nhật";
constexpr auto update = "Cập nhật ngay";

/// The author page in the user's hands, by the keyboard where nothing else is said.
class AuthorPage : public Testing::Window {
protected:
    void SetUp() override
    {
        settings.setHasCompletedOnboarding(true);
        open();
        click(text("Tác giả"));
        ASSERT_TRUE(shows("Tác giả & Phát triển ứng dụng Tavrin cho macOS"));
    }

    /// Positions are those of the last frame, and the user acts on what it shows.
    void layOut() { window().grabWindow(); }
    void click(const QString& label)
    {
        layOut();
        Window::click(label);
    }
    void press(Qt::Key key)
    {
        layOut();
        Window::press(key);
    }

    /// Goes through the controls by the tabulator until this one has the keyboard.
    testing::AssertionResult tabTo(const char* label)
    {
        constexpr int moreThanThereAre = 40;
        for (int step = 0; step < moreThanThereAre; ++step) {
            if (hasFocus(text(label)))
                return testing::AssertionSuccess();
            press(Qt::Key_Tab);
        }
        return testing::AssertionFailure() << label << " is never reached";
    }
    /// Whether all of the control is within the page.
    bool isInSight(const char* label)
    {
        layOut();
        const QQuickItem* item = control(text(label));
        const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
        return place.top() > 160 && place.bottom() <= window().height();
    }
    QString symbolOf(const char* label) { return control(text(label))->property("symbol").toString(); }
    void answer(const char* version)
    {
        ASSERT_TRUE(platform.manifestSource.answer(
            QByteArray(R"({"zipUrl":"https://a.vn/a.zip","releaseNotes":"Nhanh hơn","version":")") + version
            + "\"}"));
        drainEvents();
    }
    double barValue()
    {
        const QQuickItem* bar = control(text("Tiến độ tải bản cập nhật"));
        return bar ? bar->property("value").toDouble() : -1;
    }
};

TEST_F(AuthorPage, ShowsTheMakersDataAndTheVersion)
{
    for (const char* line :
        {MakerData::authorName, "v1.0.7", "Thông tin liên hệ", "Điện thoại:", MakerData::authorPhone,
            "Zalo:", "Telegram:", "Facebook:", "Website:", "Hướng dẫn sử dụng:", "Cập nhật ứng dụng",
            "Kiểm tra phiên bản mới nhất từ máy chủ", "Ủng hộ phát triển (Donation)",
            "Nếu ứng dụng giúp ích cho công việc và học tập của bạn, hãy mời tác giả một ly cà phê nhé! ☕",
            MakerData::bankName, "Chủ tài khoản:", MakerData::bankAccountHolder,
            "Số tài khoản:", MakerData::bankAccountNumber})
        EXPECT_TRUE(shows(line)) << line;
    EXPECT_FALSE(texts().join(u' ').contains(u"Nội dung bản cập nhật"));
    const QString onwards = text("arrow.up.right.square");
    const QString copy = text("doc.on.doc");
    const QStringList pictures{text("phone.circle.fill"), copy, text("bubble.left.and.bubble.right.fill"),
        onwards, text("paperplane.fill"), onwards, text("globe"), onwards, text("globe"), onwards,
        text("book.fill"), onwards, text("arrow.triangle.2.circlepath"), text("heart.circle.fill"), copy,
        copy};
    EXPECT_EQ(symbols().last(pictures.size()), pictures);
    EXPECT_EQ(symbols().at(symbols().size() - pictures.size() - 1), text("person.crop.circle.fill"));
}

/// With a symbol before their names or without.
TEST_F(AuthorPage, PutsValuesBelowOneAnother)
{
    layOut();
    const auto left = [this](const char* value) { return control(text(value))->mapToScene({}).x(); };
    EXPECT_DOUBLE_EQ(left(MakerData::authorPhone), left(MakerData::bankAccountNumber));
    EXPECT_DOUBLE_EQ(left(MakerData::bankAccountHolder), left(MakerData::bankAccountNumber));
}

TEST_F(AuthorPage, IsReadByTheKeyboard)
{
    constexpr auto first = "Sao chép Điện thoại";
    layOut();
    const double before = control(text(first))->mapToScene({}).y();
    press(Qt::Key_Down);
    EXPECT_DOUBLE_EQ(control(text(first))->mapToScene({}).y(), before - 40);
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(text(first))) << "on with the page, not with the window";
    press(Qt::Key_End);
    EXPECT_TRUE(isInSight("Sao chép Số tài khoản"));
}

TEST_F(AuthorPage, OpensLinksByPointerAndByKey)
{
    const QString website = QString::fromUtf8(MakerData::website);
    ASSERT_TRUE(tabTo(qUtf8Printable(u"Website: " + AuthorModel::shownAddress(website))));
    press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([this] { return desk.workspace.addresses.size() == 1; }));
    const QString guide = u"Hướng dẫn sử dụng: " + AuthorModel::shownAddress(website) + u"/guide.html";
    ASSERT_TRUE(tabTo(qUtf8Printable(guide)));
    click(guide);
    EXPECT_TRUE(waitFor([this] { return desk.workspace.addresses.size() == 2; }));
    EXPECT_EQ(desk.workspace.addresses, (QStringList{website, website + u"/guide.html"}));
}

TEST_F(AuthorPage, CopiesAndMarksWhatWasCopiedForAMoment)
{
    QGuiApplication::clipboard()->setText(text("cũ"));
    constexpr auto number = "Sao chép Số tài khoản";
    constexpr auto holder = "Sao chép Chủ tài khoản";
    ASSERT_TRUE(tabTo(number));
    EXPECT_TRUE(isInSight(number)) << "scrolled to";
    EXPECT_EQ(symbolOf(number), QStringLiteral("doc.on.doc"));
    QElapsedTimer time;
    time.start();
    press(Qt::Key_Space);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8(MakerData::bankAccountNumber));
    EXPECT_EQ(symbolOf(number), QStringLiteral("checkmark"));
    EXPECT_EQ(symbolOf(holder), QStringLiteral("doc.on.doc")) << "only its own";
    EXPECT_TRUE(waitFor([&] { return symbolOf(number) == QStringLiteral("doc.on.doc"); }));
    // Timers of the toolkit may be up to a twentieth early.
    EXPECT_GE(time.elapsed(), 1425);

    click(text(number));
    click(text(holder));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8(MakerData::bankAccountHolder));
    EXPECT_EQ(symbolOf(number), QStringLiteral("doc.on.doc")) << "the mark goes to the second";
    EXPECT_EQ(symbolOf(holder), QStringLiteral("checkmark"));
}

TEST_F(AuthorPage, GoesThroughAnUpdateByTheKeyboard)
{
    EXPECT_FALSE(control(text(update)));
    ASSERT_TRUE(tabTo(check));
    EXPECT_TRUE(isInSight(check));
    EXPECT_EQ(symbolOf(check), QStringLiteral("arrow.triangle.2.circlepath"));
    press(Qt::Key_Space);
    EXPECT_FALSE(control(text(check))) << "no second check";
    EXPECT_FALSE(control(text(update)));
    EXPECT_TRUE(shows("Đang kiểm tra bản cập nhật..."));
    press(Qt::Key_Space);
    EXPECT_EQ(platform.manifestSource.requests.size(), 1U);

    answer("9.9");
    EXPECT_TRUE(shows("Đã có bản cập nhật mới: v9.9"));
    EXPECT_TRUE(shows("Nội dung bản cập nhật v9.9"));
    EXPECT_TRUE(shows("Nhanh hơn"));
    EXPECT_FALSE(control(text(check)));
    press(Qt::Key_Space);
    ASSERT_TRUE(platform.fakeUpdateInstaller.isDownloading()) << "the keyboard went to the new button";
    EXPECT_TRUE(shows("Đang tải bản cập nhật v9.9..."));
    EXPECT_EQ(barValue(), 0.0);
    EXPECT_TRUE(platform.fakeUpdateInstaller.progress(5, -1));
    drainEvents();
    EXPECT_EQ(barValue(), 0.0) << "nobody knows of how much";
    EXPECT_EQ(texts().filter(QStringLiteral("0%")).size(), 2) << "here and in the banner";
    EXPECT_FALSE(control(text(update)));

    EXPECT_TRUE(platform.fakeUpdateInstaller.progress(5, 8));
    drainEvents();
    EXPECT_EQ(barValue(), 0.625);
    EXPECT_TRUE(shows("62%"));
    EXPECT_TRUE(platform.fakeUpdateInstaller.end(DownloadFailure{QStringLiteral("Mất mạng.")}));
    drainEvents();
    EXPECT_TRUE(shows("Lỗi tải bản cập nhật: Mất mạng."));
    EXPECT_EQ(barValue(), -1) << "no bar";
    press(Qt::Key_Return);
    EXPECT_EQ(platform.fakeUpdateInstaller.requests.size(), 2U) << "once more";
    EXPECT_TRUE(platform.fakeUpdateInstaller.end(DownloadedArchive{QStringLiteral("/t.zip")}));
    drainEvents();
    EXPECT_TRUE(shows("Đang cài đặt và khởi động lại..."));
}

TEST_F(AuthorPage, SaysThatThereIsNothingNewer)
{
    ASSERT_TRUE(tabTo(check));
    click(text(check));
    answer("1.0.7");
    EXPECT_TRUE(shows("Bạn đang dùng phiên bản mới nhất (v1.0.7)."));
    EXPECT_TRUE(hasFocus(text(check))) << "the keyboard is back";
    EXPECT_FALSE(texts().join(u' ').contains(u"Nội dung bản cập nhật"));
}

TEST_F(AuthorPage, IsReachedAndLeftByTheKeyboard)
{
    ASSERT_TRUE(tabTo("Mục"));
    press(Qt::Key_Left);
    EXPECT_TRUE(shows("Hướng Dẫn Sử Dụng Tavrin"));
    EXPECT_FALSE(shows("Thông tin liên hệ"));
    press(Qt::Key_Right);
    EXPECT_TRUE(shows("Thông tin liên hệ"));
}

/// The page of another maker.
class OtherAuthorPage : public testing::Test, protected Testing::HasFolder, protected Testing::WindowDesk {
protected:
    OtherAuthorPage()
        : WindowDesk(folder.path())
    {
    }

    QStringList textsFor(const AuthorProfile& profile)
    {
        AuthorModel author(updates, executor, profile);
        QQuickView view;
        view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        view.engine()->addImageProvider(QStringLiteral("symbol"), new SymbolProvider);
        view.setInitialProperties({{QStringLiteral("author"), QVariant::fromValue(&author)}});
        view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tavrin/Author/AuthorView.qml")));
        view.show();
        drainEvents();
        QStringList result;
        collectTexts(view.contentItem(), result);
        view.setSource({});
        return result;
    }
};

TEST_F(OtherAuthorPage, HasNoRowWithoutAValue)
{
    AuthorProfile profile{{}, {}, {}, {}, {}, {}, {}, {}, {}};
    const QStringList bare{QStringLiteral("Tác giả & Phát triển ứng dụng Tavrin cho macOS"),
        QStringLiteral("v1.0.7"), QStringLiteral("Cập nhật ứng dụng"),
        QStringLiteral("Kiểm tra phiên bản mới nhất từ máy chủ"), QStringLiteral("Kiểm tra cập nhật")};
    EXPECT_EQ(textsFor(profile), bare);
    profile.telegram = QStringLiteral("https://t.me/ten");
    profile.accountNumber = QStringLiteral("123");
    const QStringList some = textsFor(profile);
    for (const char* line : {"Thông tin liên hệ", "Telegram:", "t.me/ten", "Số tài khoản:", "123"})
        EXPECT_TRUE(some.contains(QString::fromUtf8(line))) << line;
    for (const char* line :
        {"Điện thoại:", "Zalo:", "Facebook:", "Website:", "Hướng dẫn sử dụng:", "Chủ tài khoản:"})
        EXPECT_FALSE(some.contains(QString::fromUtf8(line))) << line;
}

} // namespace
} // namespace Tavrin
