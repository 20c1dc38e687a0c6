#include "Core/Update/UpdateService.h"

#include "Platform/Fake/FakePlatform.h"

#include <gmock/gmock.h>

namespace Tavrin {

using namespace Qt::StringLiterals;

namespace {

/// What observers see of a download at one change.
struct Snapshot {
    bool isUpdating;
    double progress;
    QString message;

    bool operator==(const Snapshot&) const = default;
};

void PrintTo(const Snapshot& snapshot, std::ostream* stream)
{
    *stream << snapshot.isUpdating << ' ' << snapshot.progress << ' ' << snapshot.message.toStdString();
}

const QString archive = u"/run/user/1000/Tavrin/Tavrin-Update.zip"_s;
const QString downloading = u"Đang tải bản cập nhật v1.0.8..."_s;
const QString installing = u"Đang cài đặt và khởi động lại..."_s;

class Update : public testing::Test {
protected:
    Update() { watch(); }

    void watch()
    {
        QObject::connect(&*service, &UpdateService::changed, &receiver, [this] {
            changes.push_back({service->isUpdating(), service->downloadProgress(), service->statusMessage()});
        });
        QObject::connect(
            &*service, &UpdateService::terminationRequested, &receiver, [this] { ++terminations; });
    }

    /// A check that finds this manifest.
    void find(const AppUpdateInfo& info)
    {
        service->checkForUpdates(/*manual=*/false);
        ASSERT_TRUE(source.answer(encodeUpdateInfo(info)));
        ASSERT_EQ(service->updateInfo(), info);
        changes.clear();
    }
    void find108() { find({u"1.0.8"_s, u"Ghi chú"_s, {}, u"https://example.org/t.zip"_s, {}}); }
    /// Finds a build and starts to download it.
    void start()
    {
        find108();
        service->startAutoUpdate();
        ASSERT_TRUE(installer.isDownloading());
        changes.clear();
    }

    FakeManifestSource source;
    FakeUpdateInstaller installer;
    QObject receiver;
    std::optional<UpdateService> service{std::in_place, source, installer, UpdateServiceOptions{}};
    std::vector<Snapshot> changes;
    int terminations = 0;
};

TEST_F(Update, GoesFromTheFindToTheEndOfTheProgram)
{
    find108();
    service->startAutoUpdate();
    ASSERT_EQ(installer.requests.size(), 1U);
    EXPECT_EQ(installer.requests[0].address, QUrl(u"https://example.org/t.zip"_s));
    EXPECT_EQ(installer.requests[0].silence, std::chrono::seconds(60));
    EXPECT_TRUE(installer.progress(1, 4));
    EXPECT_TRUE(installer.progress(4, 4));
    EXPECT_TRUE(installer.end(DownloadedArchive{archive}));
    EXPECT_EQ(installer.installed, QStringList{archive});
    EXPECT_EQ(terminations, 0) << "not before the updater runs";
    installer.answerInstall(std::nullopt);
    EXPECT_EQ(terminations, 1);
    EXPECT_THAT(changes,
        testing::ElementsAre(Snapshot{true, 0.0, downloading}, Snapshot{true, 0.25, downloading},
            Snapshot{true, 1.0, downloading}, Snapshot{true, 1.0, installing}));
    EXPECT_TRUE(service->isUpdateAvailable());
}

TEST_F(Update, ShowsTheVersionAsTheManifestHasIt)
{
    find({u" 1.0.8\n"_s, {}, {}, u"https://example.org/t.zip"_s, {}});
    service->startAutoUpdate();
    EXPECT_EQ(service->statusMessage(), u"Đang tải bản cập nhật v 1.0.8\n..."_s);
}

TEST_F(Update, NeedsAFind)
{
    service->startAutoUpdate();
    EXPECT_TRUE(installer.requests.empty());
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(service->statusMessage().isNull());
}

TEST_F(Update, OfAFindThatWasPutAwayStillStarts)
{
    find108();
    service->setUpdateAvailable(false);
    service->startAutoUpdate();
    EXPECT_EQ(installer.requests.size(), 1U);
}

struct AddressCase {
    const char* name;
    std::optional<QString> downloadUrl;
    std::optional<QString> zipUrl;
    /// What is asked for; empty if nothing is.
    QString requested;
};

class Address : public Update, public testing::WithParamInterface<AddressCase> { };

TEST_P(Address, IsThatOfTheManifestOrNothingHappens)
{
    find({u"1.0.8"_s, {}, GetParam().downloadUrl, GetParam().zipUrl, {}});
    const QString before = service->statusMessage();
    service->startAutoUpdate();
    if (GetParam().requested.isEmpty()) {
        EXPECT_TRUE(installer.requests.empty());
        EXPECT_TRUE(changes.empty());
        EXPECT_EQ(service->statusMessage(), before);
    } else {
        ASSERT_EQ(installer.requests.size(), 1U);
        EXPECT_EQ(installer.requests[0].address.toString(), GetParam().requested);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, Address,
    testing::Values(AddressCase{"the zip", u"https://a.vn/d"_s, u"https://a.vn/z"_s, u"https://a.vn/z"_s},
        AddressCase{"the other", u"https://a.vn/d"_s, {}, u"https://a.vn/d"_s},
        AddressCase{"none", {}, {}, {}}, AddressCase{"empty", {}, u""_s, {}},
        AddressCase{"empty zip", u"https://a.vn/d"_s, u""_s, {}},
        AddressCase{"blank inside", {}, u"https://a.vn/a b.zip"_s, {}},
        AddressCase{"no host", {}, u"https://[::1/a.zip"_s, {}},
        // An address, though one that no server has: the download says so.
        AddressCase{"relative", {}, u"a.zip"_s, u"a.zip"_s}));

TEST_F(Update, DoesNotStartTwice)
{
    start();
    service->startAutoUpdate();
    EXPECT_EQ(installer.requests.size(), 1U);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(installer.end(DownloadedArchive{archive}));
    service->startAutoUpdate();
    installer.answerInstall(std::nullopt);
    service->startAutoUpdate();
    EXPECT_EQ(installer.requests.size(), 1U) << "nor while it is being installed";
}

TEST_F(Update, OfUnknownLengthShowsNoProgress)
{
    start();
    for (const qint64 expected : {-1, 0})
        EXPECT_TRUE(installer.progress(1000, expected));
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(service->downloadProgress(), 0.0);
}

struct FailureCase {
    DownloadResult result;
    QString message;
};

class Failure : public Update, public testing::WithParamInterface<FailureCase> { };

TEST_P(Failure, LeavesTheFindAndCanBeTriedAgain)
{
    start();
    EXPECT_TRUE(installer.progress(1, 2));
    changes.clear();
    EXPECT_TRUE(installer.end(GetParam().result));
    EXPECT_THAT(changes, testing::ElementsAre(Snapshot{false, 0.5, GetParam().message}));
    EXPECT_TRUE(service->isUpdateAvailable());
    EXPECT_TRUE(service->updateInfo());
    EXPECT_TRUE(installer.installed.isEmpty());
    EXPECT_EQ(terminations, 0);

    changes.clear();
    service->startAutoUpdate();
    EXPECT_THAT(changes, testing::ElementsAre(Snapshot{true, 0.0, downloading}));
    EXPECT_EQ(installer.requests.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Table, Failure,
    testing::Values(FailureCase{DownloadFailure{u"Máy chủ từ chối kết nối."_s},
                        u"Lỗi tải bản cập nhật: Máy chủ từ chối kết nối."_s},
        FailureCase{SaveFailure{u"Permission denied"_s}, u"Lỗi khi lưu file cập nhật: Permission denied"_s}));

TEST_F(Update, WithoutAnUpdaterLeavesTheProgramRunning)
{
    start();
    EXPECT_TRUE(installer.progress(3, 4));
    EXPECT_TRUE(installer.end(DownloadedArchive{archive}));
    changes.clear();
    installer.answerInstall(u"No such file or directory"_s);
    EXPECT_THAT(changes,
        testing::ElementsAre(
            Snapshot{false, 0.75, u"Không thể chạy tiến trình cập nhật: No such file or directory"_s}));
    EXPECT_EQ(terminations, 0);
    service->startAutoUpdate();
    EXPECT_EQ(installer.requests.size(), 2U);
}

TEST_F(Update, EndsWithTheService)
{
    start();
    service.reset();
    EXPECT_FALSE(installer.isDownloading());
    EXPECT_TRUE(changes.empty());
}

TEST_F(Update, ThatIsBeingInstalledOutlivesTheService)
{
    start();
    EXPECT_TRUE(installer.end(DownloadedArchive{archive}));
    service.reset();
    installer.answerInstall(std::nullopt);
    EXPECT_EQ(terminations, 0);
}

} // namespace
} // namespace Tavrin
