#include "Core/Update/UpdateService.h"

#include "support/UpdateCheck.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

constexpr auto checkFailed = "Lỗi khi kiểm tra: ";
constexpr auto unreachable = "Không thể kết nối đến máy chủ cập nhật.";
constexpr auto timedOut = "Lỗi khi kiểm tra: Hết thời gian chờ máy chủ trả lời.";
constexpr auto tooLarge = "Lỗi khi kiểm tra: Thông tin cập nhật lớn hơn mức cho phép.";

/// Expects that a check fails with exactly this line, or one that continues it when it ends in a blank;
/// a silent one without a line.
void expectFailure(const UpdateServiceOptions& options, const QString& message)
{
    SCOPED_TRACE(options.checkURL.toString().toStdString());
    RealUpdateService service(options);
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_TRUE(service.statusMessage().isNull()) << service.statusMessage().toStdString();
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    if (message.endsWith(u' ')) {
        EXPECT_TRUE(service.statusMessage().startsWith(message)) << service.statusMessage().toStdString();
        EXPECT_GT(service.statusMessage().size(), message.size());
    } else {
        EXPECT_EQ(service.statusMessage().toStdString(), message.toStdString());
    }
    EXPECT_FALSE(service.isUpdateAvailable());
    EXPECT_FALSE(service.updateInfo());
    EXPECT_FALSE(service.lastCheckTime().isValid());
}

QByteArray newer()
{
    return manifest(u"1.0.8"_s);
}

/// A complete answer but for its last `missing` bytes.
QByteArray cutShort(qsizetype missing)
{
    return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(newer().size()) + "\r\n\r\n"
        + newer().chopped(missing);
}

struct AnswerCase {
    HttpServer::Handler handler;
    const char* message;
};

class FaultyAnswer : public testing::TestWithParam<AnswerCase> { };

TEST_P(FaultyAnswer, FailsTheCheck)
{
    HttpServer server(GetParam().handler);
    expectFailure(optionsFor(server.address()), QString::fromUtf8(GetParam().message));
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; })) << "no connection is left";
}

INSTANTIATE_TEST_SUITE_P(Status, FaultyAnswer,
    testing::Values(AnswerCase{answering("404 Not Found", newer()), unreachable},
        AnswerCase{answering("500 Internal Server Error", newer()), unreachable},
        AnswerCase{answering("503 Service Unavailable", newer()), unreachable},
        AnswerCase{answering("201 Created", newer()), unreachable},
        AnswerCase{answering("206 Partial Content", newer()), unreachable},
        AnswerCase{answering("300 Multiple Choices", newer()), unreachable},
        AnswerCase{answering("403 Forbidden", newer()), unreachable},
        AnswerCase{
            answering("401 Unauthorized", newer(), "WWW-Authenticate: Basic realm=\"x\"\r\n"), unreachable},
        AnswerCase{sending("HTTP/1.1 304 Not Modified\r\n\r\n"), unreachable},
        AnswerCase{sending("HTTP/1.1 204 No Content\r\n\r\n"), unreachable},
        // The body of such an answer is not waited for.
        AnswerCase{sending("HTTP/1.1 404 Not Found\r\nContent-Length: 100\r\n\r\n"), unreachable}));

INSTANTIATE_TEST_SUITE_P(Manifest, FaultyAnswer,
    testing::Values(AnswerCase{answering("200 OK", ""), checkFailed},
        AnswerCase{answering("200 OK", "<html>"), checkFailed},
        AnswerCase{answering("200 OK", "[" + newer() + "]"), checkFailed},
        AnswerCase{answering("200 OK", R"({"version":"1.0.8"})"),
            "Lỗi khi kiểm tra: Thông tin cập nhật thiếu trường \"releaseNotes\"."},
        AnswerCase{answering("200 OK", R"({"version":1.08,"releaseNotes":""})"),
            "Lỗi khi kiểm tra: Trường \"version\" trong thông tin cập nhật phải là văn bản."},
        AnswerCase{answering("200 OK", "{\"version\":\"\xFF\",\"releaseNotes\":\"\"}"), checkFailed},
        AnswerCase{answering("200 OK", QByteArray("[").repeated(1'000'000)), checkFailed},
        // Packed although we have said that we do not unpack.
        AnswerCase{answering("200 OK", "\x1F\x8B\x08", "Content-Encoding: gzip\r\n"), checkFailed}));

INSTANTIATE_TEST_SUITE_P(Transport, FaultyAnswer,
    testing::Values(AnswerCase{breakingOff({}, /*isReset=*/true), checkFailed},
        AnswerCase{breakingOff({}, /*isReset=*/false), checkFailed},
        AnswerCase{breakingOff("HTTP/1.1 200 OK\r\nContent-", /*isReset=*/false), checkFailed},
        AnswerCase{breakingOff(cutShort(1), /*isReset=*/true), checkFailed},
        AnswerCase{breakingOff(cutShort(1), /*isReset=*/false), checkFailed},
        AnswerCase{breakingOff("no HTTP at all\r\n\r\n", /*isReset=*/false), checkFailed}));

TEST(RefusedConnection, FailsTheCheck)
{
    QUrl address;
    {
        const HttpServer server({});
        address = server.address();
    }
    expectFailure(optionsFor(address), u"Lỗi khi kiểm tra: Máy chủ từ chối kết nối."_s);
}

TEST(AnswerWithoutHttp, IsNoAnswerOfAnUpdateServer)
{
    const QUrl address(u"data:application/json,"_s + QString::fromUtf8(newer().toPercentEncoding()));
    expectFailure(optionsFor(address), QString::fromUtf8(unreachable));
}

struct SlowCase {
    const char* name;
    QByteArray head;
};

class SlowServer : public testing::TestWithParam<SlowCase> { };

TEST_P(SlowServer, IsWaitedForNoLongerThanTheLimitAltogether)
{
    int drops = 0;
    HttpServer server(dripping(GetParam().head, std::chrono::milliseconds(10), drops));
    UpdateServiceOptions options = optionsFor(server.address());
    EXPECT_TRUE(withEnoughTime([&](std::chrono::milliseconds limit) {
        options.timeout = limit;
        drops = 0;
        QElapsedTimer time;
        time.start();
        expectFailure(options, QString::fromUtf8(timedOut));
        EXPECT_GE(time.elapsed(), 2 * limit.count()) << "a silent and a manual check took all of the limit";
        EXPECT_LT(time.elapsed(), 2 * limit.count() + 5000) << "the answer would take a quarter of an hour";
        return drops > 4;
    })) << "bytes kept coming all the while";
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; }));
}

INSTANTIATE_TEST_SUITE_P(Dripping, SlowServer,
    testing::Values(SlowCase{"inside the head", "HTTP/1.1 200 OK\r\nX-Slow: "},
        SlowCase{"inside the body", "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n"}));

class StalledServer : public testing::TestWithParam<SlowCase> { };

TEST_P(StalledServer, IsWaitedForNoLongerThanTheLimit)
{
    HttpServer server(sending(GetParam().head));
    UpdateServiceOptions options = optionsFor(server.address());
    EXPECT_TRUE(withEnoughTime([&](std::chrono::milliseconds limit) {
        options.timeout = limit;
        const std::size_t before = server.requests().size();
        expectFailure(options, QString::fromUtf8(timedOut));
        return server.requests().size() == before + 2;
    }));
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; }));
}

INSTANTIATE_TEST_SUITE_P(Stalls, StalledServer,
    testing::Values(SlowCase{"before the head", {}}, SlowCase{"inside the head", "HTTP/1.1 200 OK\r\n"},
        SlowCase{"before the body", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n"},
        SlowCase{"inside the body", cutShort(1)}));

TEST(StalledServer, ThatGoesOnInTimeIsHeard)
{
    HttpServer server([](QTcpSocket& socket, const HttpRequest&) {
        socket.write(cutShort(1));
        QTimer::singleShot(100, &socket, [&socket] { socket.write(newer().last(1)); });
    });
    RealUpdateService service(optionsFor(server.address()));
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_TRUE(service.isUpdateAvailable());
}

class HugeBody : public testing::TestWithParam<QByteArray> { };

TEST_P(HugeBody, IsNeitherDownloadedNorHeld)
{
    constexpr qint64 total = 100 * 1000 * 1000;
    // What the system takes in on both ends before anyone has read a byte of it.
    constexpr qint64 mostInFlight = 32 * 1000 * 1000;
    qint64 sent = 0;
    HttpServer server(streaming(GetParam(), total, sent));
    expectFailure(optionsFor(server.address()), QString::fromUtf8(tooLarge));
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; })) << "the client has hung up";
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, mostInFlight);
}

INSTANTIATE_TEST_SUITE_P(LengthUnknownOrKnown, HugeBody,
    testing::Values("HTTP/1.1 200 OK\r\n\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 100000000\r\n\r\n"));

TEST(LargestBody, IsAcceptedAndOneByteMoreIsNot)
{
    HttpServer server(answering("200 OK", newer()));
    UpdateServiceOptions options = optionsFor(server.address());
    options.largestManifest = newer().size();
    {
        RealUpdateService service(options);
        ASSERT_TRUE(runCheck(service, /*manual=*/true));
        EXPECT_TRUE(service.isUpdateAvailable());
    }
    --options.largestManifest;
    expectFailure(options, QString::fromUtf8(tooLarge));
    server.setHandler(breakingOff("HTTP/1.0 200 OK\r\n\r\n" + newer(), /*isReset=*/false));
    expectFailure(options, QString::fromUtf8(tooLarge));
}

TEST(LargestBody, ArrivesWholeInManyPieces)
{
    // Close to the limit, chunked, so that no length is known beforehand.
    const QByteArray body = R"({"version":"1.0.8","releaseNotes":")" + QByteArray(1'000'000, 'a') + R"("})";
    const QByteArray chunk = QByteArray::number(body.size(), 16) + "\r\n" + body + "\r\n0\r\n\r\n";
    HttpServer server(sending("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunk));
    RealUpdateService service(optionsFor(server.address()));
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    ASSERT_TRUE(service.updateInfo()) << service.statusMessage().toStdString();
    EXPECT_EQ(service.updateInfo()->releaseNotes, QString(1'000'000, u'a'));
}

QByteArray redirectTo(const QUrl& address)
{
    return "Location: " + address.toEncoded() + "\r\n";
}

TEST(Redirect, IsFollowed)
{
    HttpServer target(answering("200 OK", newer()));
    for (const char* status : {"301 Moved", "302 Found", "303 See Other", "307 Temporary", "308 Permanent"}) {
        SCOPED_TRACE(status);
        HttpServer server(answering(status, "elsewhere", redirectTo(target.address(u"/moved.json"_s))));
        RealUpdateService service(optionsFor(server.address()));
        ASSERT_TRUE(runCheck(service, /*manual=*/true));
        EXPECT_TRUE(service.isUpdateAvailable()) << service.statusMessage().toStdString();
        ASSERT_FALSE(target.requests().empty());
        EXPECT_EQ(target.requests().back().target, "/moved.json");
        EXPECT_EQ(target.requests().back().method, "GET");
    }
    EXPECT_EQ(target.requests().size(), 5U);
}

TEST(Redirect, FailsWithItsTarget)
{
    HttpServer target(answering("404 Not Found", newer()));
    HttpServer server(answering("302 Found", "", redirectTo(target.address())));
    expectFailure(optionsFor(server.address()), QString::fromUtf8(unreachable));
    target.close();
    expectFailure(optionsFor(server.address()), u"Lỗi khi kiểm tra: Máy chủ từ chối kết nối."_s);
}

TEST(Redirect, WithoutEndOrTargetFails)
{
    HttpServer server({});
    server.setHandler(answering("302 Found", "", redirectTo(server.address())));
    expectFailure(optionsFor(server.address()), u"Lỗi khi kiểm tra: Máy chủ chuyển hướng quá nhiều lần."_s);
    server.setHandler(answering("302 Found", "", "Location: file:///etc/hostname\r\n"));
    expectFailure(optionsFor(server.address()), QString::fromUtf8(checkFailed));
    server.setHandler(answering("302 Found", ""));
    expectFailure(optionsFor(server.address()), QString::fromUtf8(checkFailed));
}

/// The helper looks for a proxy where the environment says; it inherits ours.
class ProxySearch : public testing::Test {
protected:
    ~ProxySearch() override { qunsetenv("http_proxy"); }

    // The proxy answers in the name of any host.
    HttpServer server{answering("200 OK", newer())};
    UpdateServiceOptions options = optionsFor(QUrl(u"http://updates.tavrin.invalid/version.json"_s));
};

TEST_F(ProxySearch, FindsTheOneToAsk)
{
    qputenv("http_proxy", server.address(QString()).toEncoded());
    RealUpdateService service(options);
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_TRUE(service.isUpdateAvailable()) << service.statusMessage().toStdString();
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_TRUE(server.requests()[0].target.startsWith("http://updates.tavrin.invalid/version.json?t="));
}

/// The search waits, for ever if it is let, for a script that says which proxy it is.
class ProxyScript : public ProxySearch {
protected:
    ProxyScript()
    {
        server.setHandler(sending({}));
        qputenv("http_proxy", "pac+" + server.address(u"/proxy.pac"_s).toEncoded());
    }

    bool isAskedFor()
    {
        return waitFor([this] { return !server.requests().empty(); });
    }
};

TEST_F(ProxyScript, CountsForTheTimeLimitAndBlocksNobody)
{
    EXPECT_TRUE(withEnoughTime([this](std::chrono::milliseconds limit) {
        options.timeout = limit;
        RealUpdateService service(options);
        EXPECT_TRUE(runCheck(service, /*manual=*/true)) << "the event loop runs while the search goes on";
        EXPECT_EQ(service.statusMessage().toStdString(), timedOut);
        return !server.requests().empty();
    }));
    EXPECT_EQ(server.requests().at(0).target, "/proxy.pac");
    EXPECT_TRUE(waitFor([this] { return server.openConnectionCount() == 0; })) << "the search has ended, too";

    qputenv("http_proxy", server.address(QString()).toEncoded());
    server.setHandler(answering("200 OK", newer()));
    options.timeout = std::chrono::seconds(20);
    RealUpdateService next(options);
    ASSERT_TRUE(runCheck(next, /*manual=*/false));
    EXPECT_TRUE(next.isUpdateAvailable()) << next.statusMessage().toStdString();
}

TEST_F(ProxyScript, EndsWithTheService)
{
    {
        RealUpdateService service(options);
        service.checkForUpdates(/*manual=*/false);
        ASSERT_TRUE(isAskedFor());
        EXPECT_EQ(server.openConnectionCount(), 1);
    }
    EXPECT_TRUE(waitFor([this] { return server.openConnectionCount() == 0; }));
}

} // namespace
} // namespace Tavrin
