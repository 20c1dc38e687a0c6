#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "support/Wait.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/wait.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

struct Pipe {
    FileDescriptor reader;
    FileDescriptor writer;
};

Pipe openPipe()
{
    int ends[2]{-1, -1};
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

QByteArray readToEnd(const FileDescriptor& reader)
{
    QFile file;
    EXPECT_TRUE(file.open(reader.number(), QIODevice::ReadOnly));
    return file.readAll();
}

ChildRequest shellRequest(const QByteArray& script)
{
    ChildRequest request;
    request.arguments = {"/bin/sh", "-c", script};
    return request;
}

/// What the script prints to standard output; it is waited for.
QByteArray outputOf(ChildRequest request)
{
    Pipe pipe = openPipe();
    request.standardOutput = pipe.writer.number();
    const SpawnResult child = spawn(request);
    EXPECT_TRUE(child) << child.error.toStdString();
    pipe.writer = {};
    QByteArray output = readToEnd(pipe.reader);
    EXPECT_EQ(waitpid(child.pid, nullptr, 0), child.pid);
    return output;
}

QByteArray outputOf(const QByteArray& script)
{
    return outputOf(shellRequest(script));
}

bool isGone(pid_t pid)
{
    return kill(pid, 0) < 0 && errno == ESRCH;
}

TEST(Spawn, ReportsWhyAProgramCannotBeStarted)
{
    ChildRequest request;
    EXPECT_FALSE(spawn(request));
    request.arguments = {"/nonexistent/program"};
    SpawnResult result = spawn(request);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error, QStringLiteral("No such file or directory"));
    request.arguments = {"tavrin-no-such-program"};
    EXPECT_FALSE(spawn(request));
    request.arguments = {"/etc/passwd"};
    result = spawn(request);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error, QStringLiteral("Permission denied"));
}

TEST(Spawn, ReportsAnOutputThatIsNotOpen)
{
    ChildRequest request = shellRequest("exit 0");
    request.standardOutput = 987;
    EXPECT_EQ(spawn(request).error, QStringLiteral("Bad file descriptor"));
}

TEST(Spawn, SearchesAProgramWithoutSlashInThePath)
{
    ChildRequest request;
    request.arguments = {"printf", "%s|", "một", "hai ba", ""};
    EXPECT_EQ(outputOf(request), "một|hai ba||");
}

TEST(Spawn, GivesTheChildNoBlockedOrIgnoredSignal)
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigaddset(&blocked, SIGCHLD);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto pipeHandler = signal(SIGPIPE, SIG_IGN);
    const auto userHandler = signal(SIGUSR2, SIG_IGN);
    // grep does not touch signals, a shell would set some of its own.
    ChildRequest request;
    request.arguments = {"grep", "-E", "^Sig(Blk|Ign)", "/proc/self/status"};
    const QByteArray output = outputOf(request);
    signal(SIGUSR2, userHandler);
    signal(SIGPIPE, pipeHandler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    const QRegularExpression lines(QStringLiteral("^SigBlk:\\s(\\w+)\nSigIgn:\\s(\\w+)\n$"));
    const auto match = lines.match(QString::fromLatin1(output));
    ASSERT_TRUE(match.hasMatch()) << output.toStdString();
    // The C library ignores signals 32 and 33, which it keeps to itself, in what it spawns.
    constexpr quint64 reserved = 0x180000000;
    EXPECT_EQ(match.captured(1).toULongLong(nullptr, 16) & ~reserved, 0U);
    EXPECT_EQ(match.captured(2).toULongLong(nullptr, 16) & ~reserved, 0U);
}

TEST(Spawn, HandsDownNoDescriptorBeyondTheStandardThree)
{
    const FileDescriptor leaky(open("/etc/passwd", O_RDONLY));
    ASSERT_GT(leaky.number(), 2);
    // The fourth is the one with which ls reads the folder.
    EXPECT_EQ(outputOf("ls /proc/self/fd"), "0\n1\n2\n3\n");
    EXPECT_EQ(outputOf("readlink /proc/self/fd/0 /proc/self/fd/2"), "/dev/null\n/dev/null\n");
}

TEST(Spawn, ConnectsBothOutputsToOnePipe)
{
    Pipe pipe = openPipe();
    ChildRequest request = shellRequest("printf out; printf err >&2");
    request.standardOutput = pipe.writer.number();
    request.standardError = pipe.writer.number();
    const SpawnResult child = spawn(request);
    ASSERT_TRUE(child);
    pipe.writer = {};
    EXPECT_EQ(readToEnd(pipe.reader), "outerr");
    EXPECT_EQ(waitpid(child.pid, nullptr, 0), child.pid);
}

TEST(Spawn, ReadsFromTheGivenInput)
{
    Pipe input = openPipe();
    ASSERT_EQ(write(input.writer.number(), "given", 5), 5);
    input.writer = {};
    ChildRequest request = shellRequest("cat");
    request.standardInput = input.reader.number();
    EXPECT_EQ(outputOf(request), "given");
    EXPECT_EQ(outputOf("readlink /proc/self/fd/0"), "/dev/null\n");
}

TEST(Spawn, StartsASessionOfItsOwn)
{
    // Fields 1 and 6 of stat: the process and its session.
    const QByteArray output = outputOf("cut -d' ' -f1,6 /proc/$$/stat").trimmed();
    const QByteArrayList fields = output.split(' ');
    ASSERT_EQ(fields.size(), 2);
    EXPECT_EQ(fields[0], fields[1]);
}

TEST(Spawn, ChangesTheEnvironmentOnlyAsAsked)
{
    qputenv("TAVRIN_TEST_KEPT", "kept");
    qputenv("TAVRIN_TEST_CHANGED", "old");
    qputenv("TAVRIN_TEST_REMOVED", "there");
    ChildRequest request = shellRequest(
        "echo \"$TAVRIN_TEST_KEPT|$TAVRIN_TEST_CHANGED|${TAVRIN_TEST_REMOVED-gone}|$TAVRIN_TEST_NEW\"");
    request.environmentChanges = {{"TAVRIN_TEST_CHANGED", QByteArray("new=value")},
        {"TAVRIN_TEST_REMOVED", std::nullopt}, {"TAVRIN_TEST_NEW", QByteArray("added")}};
    EXPECT_EQ(outputOf(request), "kept|new=value|gone|added\n");
    for (const char* name : {"TAVRIN_TEST_KEPT", "TAVRIN_TEST_CHANGED", "TAVRIN_TEST_REMOVED"})
        qunsetenv(name);
}

/// Both roads to the end of a child: the kernel's descriptor, and the waiting thread without it.
class Watcher : public testing::TestWithParam<bool> {
protected:
    static ChildWatcher::OpenPidDescriptor opener()
    {
        return GetParam() ? ChildWatcher::OpenPidDescriptor() : [](pid_t) { return -1; };
    }
};

INSTANTIATE_TEST_SUITE_P(BothRoads, Watcher, testing::Bool(),
    [](const auto& parameter) { return parameter.param ? "Descriptor" : "Thread"; });

TEST_P(Watcher, CollectsEveryChildAndTellsHowItEnded)
{
    ChildWatcher watcher(opener());
    QList<int> codes(3, -1);
    const QByteArrayList scripts{"exit 0", "exit 7", "kill -TERM $$"};
    QList<pid_t> pids;
    for (int index = 0; index < scripts.size(); ++index) {
        const SpawnResult child = spawn(shellRequest(scripts[index]));
        ASSERT_TRUE(child);
        pids.append(child.pid);
        watcher.watch(child.pid, [&codes, index](int exitCode) { codes[index] = exitCode; });
    }
    EXPECT_EQ(watcher.runningCount(), 3);
    ASSERT_TRUE(waitFor([&] { return watcher.runningCount() == 0; }));
    EXPECT_THAT(codes, testing::ElementsAre(0, 7, 128 + SIGTERM));
    for (const pid_t pid : pids)
        EXPECT_TRUE(isGone(pid));
}

TEST_P(Watcher, CollectsAChildThatHasEndedBeforeItIsWatched)
{
    ChildWatcher watcher(opener());
    const SpawnResult child = spawn(shellRequest("exit 3"));
    ASSERT_TRUE(child);
    siginfo_t info{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child.pid), &info, WEXITED | WNOWAIT), 0);
    int exitCode = -1;
    watcher.watch(child.pid, [&](int code) { exitCode = code; });
    ASSERT_TRUE(waitFor([&] { return exitCode == 3; }));
    EXPECT_TRUE(isGone(child.pid));
}

TEST_P(Watcher, LeavesOtherPeoplesChildrenAlone)
{
    ChildWatcher watcher(opener());
    const SpawnResult foreign = spawn(shellRequest("exit 5"));
    const SpawnResult own = spawn(shellRequest("exit 0"));
    ASSERT_TRUE(foreign && own);
    watcher.watch(own.pid);
    ASSERT_TRUE(waitFor([&] { return watcher.runningCount() == 0; }));
    int status = 0;
    ASSERT_EQ(waitpid(foreign.pid, &status, 0), foreign.pid);
    EXPECT_EQ(WEXITSTATUS(status), 5);
}

TEST_P(Watcher, IsNotHeldUpByAHungChild)
{
    const SpawnResult hung = spawn(shellRequest("exec sleep 1000"));
    ASSERT_TRUE(hung);
    bool hungEnded = false;
    {
        ChildWatcher watcher(opener());
        watcher.watch(hung.pid, [&](int) { hungEnded = true; });
        bool quickEnded = false;
        const SpawnResult quick = spawn(shellRequest("exit 0"));
        ASSERT_TRUE(quick);
        watcher.watch(quick.pid, [&](int) { quickEnded = true; });
        EXPECT_TRUE(waitFor([&] { return quickEnded; }));
    }
    EXPECT_FALSE(isGone(hung.pid));
    kill(hung.pid, SIGKILL);
    if (GetParam())
        EXPECT_EQ(waitpid(hung.pid, nullptr, 0), hung.pid);
    else
        EXPECT_TRUE(waitFor([&] { return isGone(hung.pid); }));
    drainEvents();
    EXPECT_FALSE(hungEnded);
}

TEST(WatcherPipes, StayOpenUnreadUntilTheLastWriterIsGone)
{
    ChildWatcher watcher;
    Pipe output = openPipe();
    Pipe gate = openPipe();
    // The grandchild keeps the pipe; data in it must neither close it nor wake the event loop.
    ChildRequest request = shellRequest("printf data; (read -r line; printf more) <&2 & exit 0");
    request.standardOutput = output.writer.number();
    request.standardError = gate.reader.number();
    const SpawnResult child = spawn(request);
    ASSERT_TRUE(child);
    output.writer = {};
    gate.reader = {};
    watcher.watch(child.pid);
    const int readingEnd = output.reader.number();
    watcher.keepUntilHangUp(std::move(output.reader));
    ASSERT_TRUE(waitFor([&] { return watcher.runningCount() == 0; }));
    pollfd poller{readingEnd, POLLIN, 0};
    ASSERT_EQ(poll(&poller, 1, 10000), 1);
    drainEvents();
    EXPECT_EQ(watcher.keptCount(), 1);
    gate.writer = {};
    EXPECT_TRUE(waitFor([&] { return watcher.keptCount() == 0; }));
    EXPECT_EQ(fcntl(readingEnd, F_GETFD), -1);
}

TEST(WatcherPipes, WithoutWritersAreClosedAtOnce)
{
    ChildWatcher watcher;
    Pipe pipe = openPipe();
    pipe.writer = {};
    watcher.keepUntilHangUp(std::move(pipe.reader));
    EXPECT_TRUE(waitFor([&] { return watcher.keptCount() == 0; }));
    watcher.keepUntilHangUp(FileDescriptor());
    EXPECT_EQ(watcher.keptCount(), 0);
}

} // namespace
} // namespace Tavrin
