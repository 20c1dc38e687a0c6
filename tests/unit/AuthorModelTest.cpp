#include "UI/Author/AuthorModel.h"

#include "support/TemporaryFolder.h"
#include "support/Wait.h"
#include "support/WindowDesk.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

/// The author page over the program's real services, on a system in memory.
class Author : public testing::Test, protected Testing::HasFolder, protected Testing::WindowDesk {
protected:
    Author()
        : WindowDesk(folder.path())
    {
    }

    void find(const char* version)
    {
        updates.checkForUpdates(/*manual=*/false);
        ASSERT_TRUE(platform.manifestSource.answer(
            QByteArray(R"({"zipUrl":"https://a.vn/a.zip","releaseNotes":"Nhanh\nhơn","version":")") + version
            + "\"}"));
    }

    AuthorModel author{updates, executor};
};

TEST_F(Author, IsWhoTheBuildSays)
{
    EXPECT_EQ(author.name(), QString::fromUtf8(MakerData::authorName));
    EXPECT_EQ(author.phone(), QString::fromUtf8(MakerData::authorPhone));
    EXPECT_EQ(author.zalo(), QString::fromUtf8(MakerData::authorZalo));
    EXPECT_EQ(author.telegram(), QString::fromUtf8(MakerData::authorTelegram));
    EXPECT_EQ(author.facebook(), QString::fromUtf8(MakerData::authorFacebook));
    EXPECT_EQ(author.website(), QString::fromUtf8(MakerData::website));
    EXPECT_EQ(author.bankName(), QString::fromUtf8(MakerData::bankName));
    EXPECT_EQ(author.accountHolder(), QString::fromUtf8(MakerData::bankAccountHolder));
    EXPECT_EQ(author.accountNumber(), QString::fromUtf8(MakerData::bankAccountNumber));
    EXPECT_EQ(author.currentVersion(), updates.currentVersion());
}

TEST_F(Author, HasOnlyWhatThereIs)
{
    const AuthorProfile nobody{{}, {}, {}, {}, {}, {}, {}, {}, {}};
    AuthorModel empty(updates, executor, nobody);
    EXPECT_FALSE(empty.hasContacts());
    EXPECT_FALSE(empty.hasAccount());
    EXPECT_EQ(empty.guide(), QString());
    for (QString AuthorProfile::*contact : {&AuthorProfile::phone, &AuthorProfile::zalo,
             &AuthorProfile::telegram, &AuthorProfile::facebook, &AuthorProfile::website}) {
        AuthorProfile profile = nobody;
        profile.*contact = QStringLiteral("https://a.vn");
        EXPECT_TRUE(AuthorModel(updates, executor, profile).hasContacts());
        EXPECT_FALSE(AuthorModel(updates, executor, profile).hasAccount());
    }
    for (QString AuthorProfile::*part :
        {&AuthorProfile::bankName, &AuthorProfile::accountHolder, &AuthorProfile::accountNumber}) {
        AuthorProfile profile = nobody;
        profile.*part = QStringLiteral("một");
        EXPECT_TRUE(AuthorModel(updates, executor, profile).hasAccount());
        EXPECT_FALSE(AuthorModel(updates, executor, profile).hasContacts());
    }
    AuthorProfile profile = nobody;
    profile.website = QStringLiteral("https://a.vn");
    EXPECT_EQ(AuthorModel(updates, executor, profile).guide(), QStringLiteral("https://a.vn/guide.html"));
}

TEST_F(Author, IsReachedInTheBrowser)
{
    EXPECT_EQ(AuthorModel::shownAddress(QStringLiteral("https://a.vn/b")), QStringLiteral("a.vn/b"));
    EXPECT_EQ(AuthorModel::shownAddress(QStringLiteral("a.vn")), QStringLiteral("a.vn"));
    author.open(QStringLiteral("https://a.vn/b"));
    EXPECT_TRUE(Testing::waitFor([this] { return !desk.workspace.addresses.isEmpty(); }));
    EXPECT_EQ(desk.workspace.addresses, QStringList{QStringLiteral("https://a.vn/b")});
}

TEST_F(Author, OffersOneThingAtATimeOfAnUpdate)
{
    int changes = 0;
    QObject::connect(&author, &AuthorModel::updateChanged, &author, [&] { ++changes; });
    EXPECT_EQ(author.updateState(), AuthorModel::Idle);
    EXPECT_EQ(author.updateStatus(), QString());
    EXPECT_EQ(author.releaseTitle(), QString());
    EXPECT_EQ(author.releaseNotes(), QString());

    author.checkForUpdates();
    EXPECT_EQ(author.updateState(), AuthorModel::Checking);
    EXPECT_EQ(author.updateStatus(), QStringLiteral("Đang kiểm tra bản cập nhật..."));
    author.checkForUpdates();
    EXPECT_EQ(platform.manifestSource.requests.size(), 1U);
    ASSERT_TRUE(platform.manifestSource.answer(ManifestRefused{}));
    EXPECT_EQ(author.updateState(), AuthorModel::Idle);

    find("9.9");
    EXPECT_EQ(author.updateState(), AuthorModel::UpdateAvailable);
    EXPECT_EQ(author.updateStatus(), QStringLiteral("Đã có bản cập nhật mới: v9.9"));
    EXPECT_EQ(author.releaseTitle(), QStringLiteral("Nội dung bản cập nhật v9.9"));
    EXPECT_EQ(author.releaseNotes(), QStringLiteral("Nhanh\nhơn"));
    updates.checkForUpdates(/*manual=*/false);
    EXPECT_EQ(author.updateState(), AuthorModel::Checking) << "also of what was found before";
    ASSERT_TRUE(platform.manifestSource.answer(ManifestRefused{}));

    author.startUpdate();
    EXPECT_EQ(author.updateState(), AuthorModel::Updating);
    EXPECT_EQ(author.updatePercentage(), QStringLiteral("0%"));
    EXPECT_TRUE(platform.fakeUpdateInstaller.progress(1000, -1));
    EXPECT_EQ(author.updatePercentage(), QStringLiteral("0%")) << "nobody knows of how much";
    EXPECT_TRUE(platform.fakeUpdateInstaller.progress(999, 1000));
    EXPECT_EQ(author.updatePercentage(), QStringLiteral("99%")) << "not rounded up";
    EXPECT_EQ(author.updateProgress(), 0.999);
    EXPECT_TRUE(platform.fakeUpdateInstaller.end(DownloadFailure{QStringLiteral("Lỗi.")}));
    EXPECT_EQ(author.updateState(), AuthorModel::UpdateAvailable);
    EXPECT_EQ(author.updateStatus(), QStringLiteral("Lỗi tải bản cập nhật: Lỗi."));

    updates.setUpdateAvailable(false);
    EXPECT_EQ(author.updateState(), AuthorModel::Idle);
    EXPECT_EQ(author.releaseTitle(), QStringLiteral("Nội dung bản cập nhật v9.9")) << "still known";
    EXPECT_GT(changes, 8);
}

} // namespace
} // namespace Tavrin
