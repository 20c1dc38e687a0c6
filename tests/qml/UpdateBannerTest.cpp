#include "support/WindowFixture.h"

#include <QRegularExpression>

namespace Tavrin {
namespace {

using Testing::drainEvents;

constexpr auto update = "Cập nhật ngay";

/// The banner over the window's tabs that leads to a new version.
class UpdateBanner : public Testing::Window {
protected:
    void SetUp() override
    {
        settings.setHasCompletedOnboarding(true);
        open();
        ASSERT_FALSE(control(text(update)));
        find();
    }
    void find()
    {
        updates.checkForUpdates(/*manual=*/false);
        ASSERT_TRUE(platform.manifestSource.answer(
            QByteArray(R"({"zipUrl":"https://a.vn/a.zip","releaseNotes":"x","version":"1.0.8"})")));
        drainEvents();
        ASSERT_TRUE(shows("Đã có bản cập nhật mới: v1.0.8"));
    }
    void click(const QString& label)
    {
        // Positions are those of the last frame.
        window().grabWindow();
        Window::click(label);
    }
    bool showsAPercentage()
    {
        return !texts().filter(QRegularExpression(QStringLiteral("^\\d+%$"))).isEmpty();
    }
};

TEST_F(UpdateBanner, FollowsADownloadToItsInstall)
{
    EXPECT_FALSE(showsAPercentage());
    click(text(update));
    ASSERT_TRUE(platform.fakeUpdateInstaller.isDownloading());
    EXPECT_FALSE(control(text(update)));
    EXPECT_TRUE(shows("Đang tải bản cập nhật v1.0.8..."));
    EXPECT_TRUE(shows("0%"));
    struct Step {
        qint64 written;
        const char* percentage;
    };
    for (const Step& step :
        {Step{9, "0%"}, Step{10, "1%"}, Step{555, "55%"}, Step{999, "99%"}, Step{1000, "100%"}}) {
        EXPECT_TRUE(platform.fakeUpdateInstaller.progress(step.written, 1000));
        drainEvents();
        EXPECT_TRUE(shows(step.percentage)) << step.percentage;
    }
    EXPECT_TRUE(platform.fakeUpdateInstaller.end(DownloadedArchive{QStringLiteral("/t.zip")}));
    drainEvents();
    EXPECT_TRUE(shows("Đang cài đặt và khởi động lại..."));
    EXPECT_EQ(platform.fakeUpdateInstaller.installed, QStringList{QStringLiteral("/t.zip")});
}

TEST_F(UpdateBanner, OffersTheButtonAgainAfterAFailure)
{
    control(text(update))->forceActiveFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(platform.fakeUpdateInstaller.isDownloading());
    EXPECT_TRUE(platform.fakeUpdateInstaller.end(SaveFailure{QStringLiteral("Đĩa đầy.")}));
    drainEvents();
    EXPECT_FALSE(showsAPercentage());
    click(text(update));
    EXPECT_EQ(platform.fakeUpdateInstaller.requests.size(), 2U);
}

TEST_F(UpdateBanner, StaysAwayOnceItIsPutAwayUntilTheNextFind)
{
    click(text("Ẩn thông báo này"));
    EXPECT_TRUE(Testing::waitFor([this] { return !shows("Đã có bản cập nhật mới: v1.0.8"); }));
    find();
}

} // namespace
} // namespace Tavrin
