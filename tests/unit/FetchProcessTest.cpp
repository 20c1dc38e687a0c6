#include "Platform/Linux/Network/FetchProcess.h"

#include "Fetch/FetchOrder.h"
#include "Platform/Linux/Process/ChildProcess.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"
#include "support/UpdateCheck.h"

#include <QElapsedTimer>
#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

const auto brokenOff = u"Chương trình tải đã dừng giữa chừng."_s;
const auto malformed = u"Chương trình tải trả lời sai quy cách."_s;
const auto timedOut = u"Hết thời gian chờ máy chủ trả lời."_s;

class Fetch : public testing::Test {
protected:
    ~Fetch() override
    {
        fetch.reset();
        EXPECT_TRUE(waitFor([this] { return hasNoChild(); }));
    }

    /// Every start has been reported, and every helper has been collected.
    bool hasNoChild() const
    {
        return threadCount() == usualThreads && children.runningCount() == 0 && ownChildren().isEmpty();
    }

    /// A helper that is this shell script.
    QString helper(const QByteArray& script) const
    {
        folder.write(u"helper"_s, "#!/bin/sh\n" + script);
        QFile::setPermissions(
            folder.path(u"helper"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return folder.path(u"helper"_s);
    }

    void start(FetchProcess& source)
    {
        fetch = source.fetch(server.address(), limits, [this](const ManifestAnswer& newAnswer) {
            ++completions;
            answer = newAnswer;
        });
        EXPECT_EQ(completions, 0) << "never from within the call";
    }

    /// Fetches to the end; why it failed, or nothing.
    QString failureOf(FetchProcess& source)
    {
        start(source);
        EXPECT_TRUE(waitFor([this] { return completions == 1; }));
        EXPECT_TRUE(waitFor([this] { return hasNoChild(); })) << "although the fetch still exists";
        const auto* failure = std::get_if<ManifestFailure>(&answer);
        return failure ? failure->reason : QString();
    }
    QString failureOfScript(const QByteArray& script)
    {
        FetchProcess source(children, helper(script));
        return failureOf(source);
    }

    /// Starts a fetch and waits until its helper waits for the server.
    pid_t helperInFlight()
    {
        start(real);
        EXPECT_TRUE(waitFor([this] { return !server.requests().empty(); }));
        const QList<pid_t> found = ownChildren();
        EXPECT_EQ(found.size(), 1);
        return found.value(0);
    }

    const qsizetype usualThreads = threadCount();
    TemporaryFolder folder;
    HttpServer server{sending({})};
    ChildWatcher children;
    FetchProcess real{children, QStringLiteral(TAVRIN_FETCH)};
    ManifestSource::Limits limits{std::chrono::seconds(20), 1024};
    std::unique_ptr<ManifestFetch> fetch;
    ManifestAnswer answer;
    int completions = 0;
};

TEST_F(Fetch, BringsTheBody)
{
    server.setHandler(answering("200 OK", "body"));
    EXPECT_EQ(failureOf(real), QString());
    EXPECT_EQ(std::get<QByteArray>(answer), "body");
    drainEvents();
    EXPECT_EQ(completions, 1);
}

TEST_F(Fetch, BringsARefusal)
{
    server.setHandler(answering("404 Not Found", "body"));
    EXPECT_EQ(failureOf(real), QString());
    EXPECT_TRUE(std::holds_alternative<ManifestRefused>(answer));
}

TEST_F(Fetch, RunsBesideOthers)
{
    server.setHandler([](QTcpSocket& socket, const HttpRequest& request) {
        answering("200 OK", request.target)(socket, request);
    });
    QByteArrayList bodies;
    std::vector<std::unique_ptr<ManifestFetch>> fetches;
    for (const auto* path : {u"/1", u"/2", u"/3"}) {
        fetches.push_back(real.fetch(server.address(QString::fromUtf16(path)), limits,
            [&](const ManifestAnswer& body) { bodies.append(std::get<QByteArray>(body)); }));
    }
    ASSERT_TRUE(waitFor([&] { return bodies.size() == 3; }));
    std::ranges::sort(bodies);
    EXPECT_EQ(bodies, (QByteArrayList{"/1", "/2", "/3"}));
}

TEST_F(Fetch, FailsWithoutItsHelper)
{
    FetchProcess source(children, folder.path(u"missing"_s));
    EXPECT_EQ(failureOf(source), u"Không chạy được chương trình tải (No such file or directory)."_s);
}

TEST_F(Fetch, FailsWhenItsHelperDiesUnderWay)
{
    const pid_t helper = helperInFlight();
    ASSERT_GT(helper, 0);
    EXPECT_EQ(kill(helper, SIGKILL), 0);
    ASSERT_TRUE(waitFor([this] { return completions == 1; }));
    EXPECT_EQ(std::get<ManifestFailure>(answer).reason, brokenOff);
}

TEST_F(Fetch, FailsWhenItsHelperSaysNothingOrHalf)
{
    EXPECT_EQ(failureOfScript("exit 0"), brokenOff);
    completions = 0;
    EXPECT_EQ(failureOfScript("printf 'ok 5\\nbod'; kill -ABRT $$"), brokenOff);
}

TEST_F(Fetch, FailsWhenItsHelperWritesGarbage)
{
    EXPECT_EQ(failureOfScript("echo '<html>'"), malformed);
}

TEST_F(Fetch, TakesNoMoreThanIsAllowed)
{
    EXPECT_EQ(failureOfScript("exec cat /dev/zero"), malformed);
    completions = 0;
    EXPECT_EQ(failureOfScript("echo 'ok 1000'; exec cat /dev/zero"), malformed);
}

TEST_F(Fetch, EndsAHelperThatHangsWithAllItHasStarted)
{
    pid_t grandchild = 0;
    ASSERT_TRUE(withEnoughTime([&](std::chrono::milliseconds limit) {
        completions = 0;
        limits.time = limit;
        EXPECT_EQ(failureOfScript("sleep 1000 & echo $! > \"$0.child\"; wait"), timedOut);
        grandchild = folder.read(u"helper.child"_s).trimmed().toInt();
        return grandchild > 0;
    }));
    EXPECT_TRUE(waitFor([&] { return !isRunning(grandchild); }));
}

TEST_F(Fetch, EndsAHelperThatComesTooLate)
{
    limits.time = std::chrono::milliseconds(0);
    EXPECT_EQ(failureOfScript("exec sleep 1000"), timedOut);
    EXPECT_EQ(completions, 1);
}

TEST_F(Fetch, LeavesNoHelperWhenItIsCancelledUnderWay)
{
    const pid_t helper = helperInFlight();
    fetch.reset();
    ASSERT_TRUE(waitFor([this] { return hasNoChild(); }));
    EXPECT_FALSE(isRunning(helper));
    EXPECT_TRUE(waitFor([this] { return server.openConnectionCount() == 0; }));
    EXPECT_EQ(completions, 0);
}

TEST_F(Fetch, LeavesNoHelperWhenItIsCancelledAtOnce)
{
    FetchProcess source(children, helper("exec sleep 1000"));
    for (int round = 0; round < 10; ++round) {
        start(source);
        fetch.reset();
    }
    ASSERT_TRUE(waitFor([this] { return hasNoChild(); }));
    EXPECT_EQ(completions, 0);
}

TEST_F(Fetch, MayBeDestroyedFromWithinItsEnd)
{
    server.setHandler(answering("200 OK", "body"));
    QByteArray body;
    fetch = real.fetch(server.address(), limits, [&](const ManifestAnswer& newAnswer) {
        fetch.reset();
        body = std::get<QByteArray>(newAnswer);
    });
    EXPECT_TRUE(waitFor([&] { return body == "body"; }));
}

TEST_F(Fetch, LeavesNoHelperWhenTheServiceEndsMidCheck)
{
    {
        FakeUpdateInstaller installer;
        UpdateService service(real, installer, optionsFor(server.address()));
        service.checkForUpdates(/*manual=*/true);
        ASSERT_TRUE(waitFor([this] { return !server.requests().empty(); }));
        EXPECT_EQ(ownChildren().size(), 1);
    }
    EXPECT_TRUE(waitFor([this] { return hasNoChild(); }));
}

TEST_F(Fetch, OfEndlessHeadersEndsWithTheHelper)
{
    constexpr qint64 total = 4'000'000'000;
    qint64 sent = 0;
    server.setHandler(streaming("HTTP/1.1 200 OK\r\nX-Endless: ", total, sent));
    EXPECT_TRUE(withEnoughTime([&](std::chrono::milliseconds limit) {
        completions = 0;
        limits.time = limit;
        EXPECT_EQ(failureOf(real), timedOut);
        return sent > 1'000'000;
    })) << "they kept coming";
    EXPECT_LT(sent, total);
}

#ifndef TAVRIN_SANITIZED // Sanitizers need more addresses than any limit would leave.
TEST_F(Fetch, LimitsTheHelpersMemory)
{
    QFile helperLimits(QStringLiteral("/proc/%1/limits").arg(helperInFlight()));
    ASSERT_TRUE(helperLimits.open(QIODevice::ReadOnly));
    EXPECT_THAT(
        helperLimits.readAll().toStdString(), testing::ContainsRegex("Max data size +268435456 +268435456"));
}
#endif

/// The helper by itself, as it is without us.
class Helper : public Fetch {
protected:
    void startHelper(const QByteArrayList& arguments)
    {
        int ends[2]{-1, -1};
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        reader = FileDescriptor(ends[0]);
        const FileDescriptor writer(ends[1]);
        ChildRequest request;
        request.arguments = QByteArrayList{TAVRIN_FETCH} + arguments;
        request.standardOutput = writer.number();
        const SpawnResult child = spawn(request);
        ASSERT_TRUE(child);
        children.watch(child.pid, [this](int code) { exitCode = code; });
    }

    FileDescriptor reader;
    int exitCode = -1;
};

TEST_F(Helper, RefusesAnythingButAnOrder)
{
    startHelper({"version.json", "1024"});
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_FAILURE; }));
}

TEST_F(Helper, EndsWhenNobodyReadsAnyMore)
{
    startHelper(fetchArguments({server.address(), 1024}));
    ASSERT_TRUE(waitFor([this] { return !server.requests().empty(); }));
    EXPECT_EQ(exitCode, -1);
    reader = {};
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_FAILURE; }));
}

TEST_F(Helper, EndsWhenNobodyReadsWhileItsMainThreadIsBlocked)
{
    qputenv("http_proxy", "pac+" + server.address(u"/proxy.pac"_s).toEncoded());
    startHelper({"http://updates.tavrin.invalid/version.json", "1024"});
    EXPECT_TRUE(waitFor([this] { return !server.requests().empty(); }));
    qunsetenv("http_proxy");
    ASSERT_EQ(server.requests().at(0).target, "/proxy.pac");
    reader = {};
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_FAILURE; }));
}

} // namespace
} // namespace Tavrin
