#include "Core/Update/UpdateService.h"

#include "Platform/Fake/FakePlatform.h"
#include "support/UpdateCheck.h"

#include <gmock/gmock.h>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

const QString checking = u"Đang kiểm tra bản cập nhật..."_s;
const QString found108 = u"Đã có bản cập nhật mới: v1.0.8"_s;
const QString upToDate107 = u"Bạn đang dùng phiên bản mới nhất (v1.0.7)."_s;
const QString unreachable = u"Không thể kết nối đến máy chủ cập nhật."_s;

/// What observers see at one change.
struct Snapshot {
    bool isChecking;
    bool isUpdateAvailable;
    bool hasInfo;
    bool hasTime;
    QString message;

    bool operator==(const Snapshot&) const = default;
};

class UpdateCheck : public testing::Test {
protected:
    UpdateCheck() { watch(service); }

    void watch(const UpdateService& watched)
    {
        QObject::connect(&watched, &UpdateService::changed, &server, [this, &watched] {
            changes.push_back(
                {watched.isChecking(), watched.isUpdateAvailable(), watched.updateInfo().has_value(),
                    watched.lastCheckTime().isValid(), watched.statusMessage()});
        });
    }

    void serve(const QString& version) { server.setHandler(answering("200 OK", manifest(version))); }

    HttpServer server{answering("200 OK", manifest(u"1.0.8"_s))};
    RealUpdateService service{optionsFor(server.address())};
    std::vector<Snapshot> changes;
};

TEST_F(UpdateCheck, StartsWithNothingKnown)
{
    EXPECT_FALSE(service.isChecking());
    EXPECT_FALSE(service.isUpdating());
    EXPECT_EQ(service.downloadProgress(), 0.0);
    EXPECT_FALSE(service.isUpdateAvailable());
    EXPECT_FALSE(service.updateInfo());
    EXPECT_FALSE(service.lastCheckTime().isValid());
    EXPECT_TRUE(service.statusMessage().isNull());
    drainEvents();
    EXPECT_EQ(server.connectionCount(), 0);
    EXPECT_TRUE(changes.empty());
}

TEST_F(UpdateCheck, ManualOneTellsOfAFind)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_THAT(changes,
        testing::ElementsAre(
            Snapshot{true, false, false, false, checking}, Snapshot{false, true, true, true, found108}));
    ASSERT_TRUE(service.updateInfo());
    EXPECT_EQ(*service.updateInfo(),
        (AppUpdateInfo{u"1.0.8"_s, u"Ghi chú"_s, {}, u"https://example.org/t.zip"_s, {}}));
}

TEST_F(UpdateCheck, SilentOneTellsOfAFindToo)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_THAT(changes,
        testing::ElementsAre(
            Snapshot{true, false, false, false, {}}, Snapshot{false, true, true, true, found108}));
}

TEST_F(UpdateCheck, ManualOneTellsThatNothingIsNewer)
{
    serve(u"1.0.7"_s);
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_THAT(changes,
        testing::ElementsAre(
            Snapshot{true, false, false, false, checking}, Snapshot{false, false, false, true, upToDate107}));
}

TEST_F(UpdateCheck, SilentOneSaysNothingWhenNothingIsNewer)
{
    serve(u"1.0.6"_s);
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_THAT(changes,
        testing::ElementsAre(
            Snapshot{true, false, false, false, {}}, Snapshot{false, false, false, true, {}}));
}

TEST_F(UpdateCheck, TakesAFindBackWhenTheServerDoes)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    ASSERT_TRUE(service.isUpdateAvailable());
    serve(u"1.0.7"_s);
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_FALSE(service.isUpdateAvailable());
    EXPECT_FALSE(service.updateInfo());
    EXPECT_EQ(service.statusMessage(), found108) << "a silent check found nothing and leaves the line alone";
}

struct VersionCase {
    QString current;
    QString latest;
    bool isNewer;
    QString message;
};

class VersionsOfCheck : public testing::TestWithParam<VersionCase> { };

TEST_P(VersionsOfCheck, AreTrimmedAndCompared)
{
    HttpServer server(answering("200 OK", manifest(GetParam().latest)));
    UpdateServiceOptions options = optionsFor(server.address());
    options.currentVersion = GetParam().current;
    RealUpdateService service(options);
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_EQ(service.isUpdateAvailable(), GetParam().isNewer);
    EXPECT_EQ(service.updateInfo().has_value(), GetParam().isNewer);
    EXPECT_EQ(service.statusMessage().toStdString(), GetParam().message.toStdString());
    EXPECT_EQ(service.updateInfo().value_or(AppUpdateInfo{}).version,
        GetParam().isNewer ? GetParam().latest : QString())
        << "the manifest itself stays as it came";
}

INSTANTIATE_TEST_SUITE_P(Table, VersionsOfCheck,
    testing::Values(VersionCase{u"1.0.9"_s, u"1.0.10"_s, true, u"Đã có bản cập nhật mới: v1.0.10"_s},
        VersionCase{u"1.0.7"_s, u" 1.0.8\n"_s, true, found108},
        VersionCase{u"1.0.7"_s, u"\u00A0\t1.0.7\r\n"_s, false, upToDate107},
        VersionCase{u" 1.0.7\n"_s, u"1.0.7"_s, false, upToDate107},
        VersionCase{u"1.0.10"_s, u"1.0.9"_s, false, u"Bạn đang dùng phiên bản mới nhất (v1.0.10)."_s},
        VersionCase{u"1.0.7"_s, u"1.0.7.1"_s, true, u"Đã có bản cập nhật mới: v1.0.7.1"_s},
        VersionCase{u"1.0.8"_s, u"1.0.8-beta"_s, true, u"Đã có bản cập nhật mới: v1.0.8-beta"_s},
        VersionCase{u"1.0.0"_s, u"1.0"_s, false, u"Bạn đang dùng phiên bản mới nhất (v1.0.0)."_s},
        VersionCase{u""_s, u"1.0.7"_s, false, upToDate107}, VersionCase{u""_s, u"1.0.8"_s, true, found108},
        VersionCase{u"1.0.7"_s, u""_s, false, upToDate107}));

TEST_F(UpdateCheck, AsksWithGetPastEveryCache)
{
    UpdateServiceOptions options = optionsFor(server.address());
    QDateTime now = QDateTime::fromMSecsSinceEpoch(1'700'000'000'999);
    options.now = [&now] { return now; };
    RealUpdateService timed(options);
    ASSERT_TRUE(runCheck(timed, /*manual=*/false));
    EXPECT_EQ(timed.lastCheckTime(), now);
    now = now.addMSecs(1);
    ASSERT_TRUE(runCheck(timed, /*manual=*/false));
    EXPECT_EQ(timed.lastCheckTime(), now);

    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(server.requests()[0].target, "/version.json?t=1700000000");
    EXPECT_EQ(server.requests()[1].target, "/version.json?t=1700000001");
    for (const HttpRequest& request : server.requests()) {
        EXPECT_EQ(request.method, "GET");
        EXPECT_EQ(request.headers.value("cache-control"), "no-cache");
        EXPECT_EQ(request.headers.value("pragma"), "no-cache");
        EXPECT_FALSE(request.headers.contains("if-none-match"));
        EXPECT_FALSE(request.headers.contains("if-modified-since"));
    }
}

TEST_F(UpdateCheck, KeepsNothingOpenAfterwards)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; }));
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; }));
    EXPECT_EQ(server.connectionCount(), 2);
}

TEST_F(UpdateCheck, RunsOnceHoweverOftenItIsAskedFor)
{
    server.setHandler(sending({}));
    service.checkForUpdates(/*manual=*/false);
    service.checkForUpdates(/*manual=*/true);
    ASSERT_TRUE(waitFor([&] { return !server.requests().empty(); }));
    service.checkForUpdates(/*manual=*/true);
    drainEvents();
    EXPECT_TRUE(service.isChecking());
    EXPECT_TRUE(service.statusMessage().isNull()) << "a call without effect sets no message";
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(changes.size(), 1U);
}

TEST_F(UpdateCheck, StartsAgainFromWithinTheEndOfAnother)
{
    bool isFirstEnd = true;
    QObject::connect(&service, &UpdateService::changed, &server, [&] {
        if (!service.isChecking() && std::exchange(isFirstEnd, false))
            service.checkForUpdates(/*manual=*/true);
    });
    service.checkForUpdates(/*manual=*/false);
    ASSERT_TRUE(waitFor([&] { return server.requests().size() == 2 && !service.isChecking(); }));
    EXPECT_EQ(service.statusMessage(), found108);
    EXPECT_EQ(changes.size(), 4U);
}

TEST_F(UpdateCheck, DoesNotStartDuringAnInstall)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    service.startAutoUpdate();
    changes.clear();
    service.checkForUpdates(/*manual=*/true);
    EXPECT_FALSE(service.isChecking());
    EXPECT_EQ(service.statusMessage(), u"Đang tải bản cập nhật v1.0.8..."_s);
    drainEvents();
    EXPECT_EQ(server.connectionCount(), 1);
    EXPECT_TRUE(changes.empty());

    EXPECT_TRUE(service.installer().end(DownloadFailure{}));
    EXPECT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_EQ(server.connectionCount(), 2);
}

TEST_F(UpdateCheck, FailureLeavesEverythingElse)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    const auto info = service.updateInfo();
    const QDateTime time = service.lastCheckTime();
    for (const auto& handler :
        {answering("404 Not Found", "{}"), answering("200 OK", "{}"), breakingOff({}, true)}) {
        server.setHandler(handler);
        ASSERT_TRUE(runCheck(service, /*manual=*/false));
        EXPECT_TRUE(service.isUpdateAvailable());
        EXPECT_EQ(service.updateInfo(), info);
        EXPECT_EQ(service.lastCheckTime(), time);
        EXPECT_EQ(service.statusMessage(), found108);
    }
    server.setHandler(answering("404 Not Found", "{}"));
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_EQ(service.statusMessage(), unreachable);
    EXPECT_TRUE(service.isUpdateAvailable());
    EXPECT_EQ(service.updateInfo(), info);
    EXPECT_EQ(service.lastCheckTime(), time);
}

TEST_F(UpdateCheck, FindIsPutAwayUntilTheNextOne)
{
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    changes.clear();
    EXPECT_TRUE(service.setProperty("isUpdateAvailable", false));
    EXPECT_THAT(changes, testing::ElementsAre(Snapshot{false, false, true, true, found108}));
    service.setUpdateAvailable(false);
    EXPECT_EQ(changes.size(), 1U) << "nothing has changed";
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_TRUE(service.isUpdateAvailable());
}

TEST_F(UpdateCheck, EndsInSilenceWithTheService)
{
    server.setHandler(sending("HTTP/1.1 200 OK\r\n"));
    {
        RealUpdateService shortLived(optionsFor(server.address()));
        watch(shortLived);
        shortLived.checkForUpdates(/*manual=*/true);
        ASSERT_TRUE(waitFor([&] { return !server.requests().empty(); }));
        EXPECT_EQ(server.openConnectionCount(), 1);
    }
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; }));
    EXPECT_EQ(changes.size(), 1U);
}

TEST(UpdateServiceVersion, IsTheBuildsOrAConcreteRelease)
{
    FakeManifestSource source;
    FakeUpdateInstaller installer;
    UpdateServiceOptions options;
    EXPECT_EQ(UpdateService(source, installer).currentVersion(), QString::fromUtf8(MakerData::version));
    EXPECT_EQ(options.checkURL.path(), u"/version.json"_s);
    EXPECT_EQ(options.timeout, std::chrono::seconds(10));
    options.currentVersion = u"2.5"_s;
    EXPECT_EQ(UpdateService(source, installer, options).property("currentVersion").toString(), u"2.5"_s);
    options.currentVersion.clear();
    EXPECT_EQ(UpdateService(source, installer, options).currentVersion(), u"1.0.7"_s);
}

TEST(SharedUpdateService, IsTheFirstOneBuilt)
{
    FakeManifestSource source;
    FakeUpdateInstaller installer;
    {
        const UpdateService first(source, installer);
        const UpdateService second(source, installer);
        EXPECT_EQ(&UpdateService::shared(), &first);
    }
    const UpdateService next(source, installer);
    EXPECT_EQ(&UpdateService::shared(), &next);
}

TEST(UpdateServiceDeathTest, AddressThatIsNoneEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    FakeManifestSource source;
    FakeUpdateInstaller installer;
    UpdateServiceOptions options;
    for (const QUrl& address :
        {QUrl(), QUrl(u"version.json"_s), QUrl(u"https://exa mple.org/"_s, QUrl::StrictMode)}) {
        options.checkURL = address;
        EXPECT_DEATH(UpdateService(source, installer, options), "update address is not valid");
    }
}

} // namespace
} // namespace Tavrin
