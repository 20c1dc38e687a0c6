#include "Platform/Linux/Process/ChildProcess.h"
#include "support/SoundServers.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <sys/socket.h>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

constexpr auto up = VolumeChange::up;

const auto refused = u"Không kết nối được máy chủ âm thanh (Connection refused)."_s;
const auto lost = u"Mất kết nối với máy chủ âm thanh (Connection terminated)."_s;
const auto noOutput = u"Không có thiết bị phát âm thanh nào (No such entity)."_s;
const auto silent = u"Máy chủ âm thanh không trả lời."_s;
const auto brokenOff = u"Chương trình âm thanh đã dừng giữa chừng."_s;

/// A server that accepts and says nothing.
class HungServer {
public:
    explicit HungServer(const TemporaryFolder& folder)
    {
        EXPECT_TRUE(m_server.listen(folder.path(u"hung"_s)));
        qputenv("PULSE_SERVER", "unix:" + m_server.fullServerName().toUtf8());
    }
    ~HungServer() { qunsetenv("PULSE_SERVER"); }
    Q_DISABLE_COPY_MOVE(HungServer)

    bool wasReached() const { return m_server.hasPendingConnections(); }

private:
    QLocalServer m_server;
};

class VolumeFaults : public VolumeTest {
protected:
    /// Waits for as many failures, all for this reason, and for the end of the helper.
    void expectFailures(const QString& reason, int count = 1)
    {
        EXPECT_TRUE(waitFor([&] { return failures.size() >= count; }));
        EXPECT_TRUE(waitFor([] { return !isHelperRunning(); }));
        EXPECT_EQ(failures, QStringList(count, reason)) << failures.join(u'|').toStdString();
        failures.clear();
    }

    void startServer()
    {
        server.reset();
        server = SoundServers::pulseAudio();
        server->setPercents({u"50"_s});
    }

    void expectThatPressesWork()
    {
        server->setPercents({u"50"_s});
        press(up);
        EXPECT_TRUE(comesTo(60));
        EXPECT_EQ(failures, QStringList());
    }

    /// A helper that is this shell script.
    void useScript(const QByteArray& script)
    {
        const QString path = folder.path(u"tavrin-sound"_s);
        folder.write(u"tavrin-sound"_s, "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        useHelper(path);
    }
};

TEST_F(VolumeFaults, WithoutAServerEveryPressFails)
{
    press(up, 3);
    expectFailures(refused, 3);
    press(VolumeChange::toggleMute);
    expectFailures(refused);
    startServer();
    expectThatPressesWork();
}

TEST_F(VolumeFaults, WithoutAnOutputAPressFails)
{
    server = SoundServers::pulseAudioWithoutSink();
    press(up);
    expectFailures(noOutput);
    server->addSink(u"late"_s);
    expectThatPressesWork();
}

TEST_F(VolumeFaults, AServerThatHangsIsGivenUp)
{
    limits.answer = std::chrono::milliseconds(500);
    {
        const HungServer hung(folder);
        QElapsedTimer time;
        time.start();
        press(up, 2);
        EXPECT_LT(time.elapsed(), 400) << "nothing waits for it";
        EXPECT_TRUE(waitFor([&] { return hung.wasReached(); }));
        expectFailures(silent, 2);
        EXPECT_GE(time.elapsed(), 450);
    }
    limits.answer = std::chrono::seconds(20);
    startServer();
    useHelper(QStringLiteral(TAVRIN_SOUND));
    expectThatPressesWork();
}

TEST_F(VolumeFaults, AServerThatStopsAnsweringIsGivenUp)
{
    limits.answer = std::chrono::seconds(4);
    startServer();
    expectThatPressesWork();
    const auto firstHelper = helpers();
    server->send(SIGSTOP);
    press(up);
    expectFailures(silent);
    server->send(SIGCONT);
    expectThatPressesWork();
    EXPECT_NE(helpers(), firstHelper);
}

TEST_F(VolumeFaults, AServerThatDiesUnderWayFailsThePress)
{
    startServer();
    expectThatPressesWork();
    server->send(SIGSTOP);
    press(up, 2);
    server->crash();
    EXPECT_TRUE(waitFor([this] { return failures.size() == 2; }));
    EXPECT_TRUE(waitFor([] { return !isHelperRunning(); }));
    for (const QString& reason : failures)
        EXPECT_TRUE(reason == lost || reason == refused) << reason.toStdString();
    failures.clear();
    startServer();
    expectThatPressesWork();
}

TEST_F(VolumeFaults, AServerThatIsStartedAnewServesTheNextPress)
{
    for (int round = 0; round < 3; ++round) {
        startServer();
        expectThatPressesWork();
        server->crash();
    }
}

TEST_F(VolumeFaults, AHelperThatHasDiedIsReplaced)
{
    startServer();
    expectThatPressesWork();
    ASSERT_EQ(helpers().size(), 1);
    EXPECT_EQ(kill(helpers().constFirst(), SIGKILL), 0);
    expectThatPressesWork();
}

TEST_F(VolumeFaults, AMissingHelperFailsThePress)
{
    useHelper(folder.path(u"missing"_s));
    press(up, 2);
    expectFailures(u"Không chạy được chương trình âm thanh (No such file or directory)."_s, 2);
}

TEST_F(VolumeFaults, AHelperThatDiesIsTriedTwice)
{
    useScript("echo started >> \"$0.log\"");
    press(up);
    expectFailures(brokenOff);
    EXPECT_EQ(folder.read(u"tavrin-sound.log"_s), "started\nstarted\n");
}

TEST_F(VolumeFaults, AHelperThatWritesGarbageIsGivenUp)
{
    useScript("exec cat /dev/zero");
    press(up);
    expectFailures(brokenOff);
}

TEST_F(VolumeFaults, AHelperThatDoesNotReadKeepsNothing)
{
    limits.answer = std::chrono::milliseconds(500);
    useScript("exec sleep 1000");
    press(up, 2000);
    expectFailures(silent, 2000);
}

TEST_F(VolumeFaults, AnEndUnderWayLeavesNoHelper)
{
    const HungServer hung(folder);
    press(up);
    EXPECT_TRUE(waitFor([&] { return hung.wasReached(); }));
    control.reset();
    EXPECT_TRUE(waitFor([] { return !isHelperRunning(); }));
    press(up);
    control.reset();
    EXPECT_TRUE(waitFor([] { return !isHelperRunning(); }));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(VolumeFaults, AFailureMayEndTheControl)
{
    const auto failureThatEnds = [this](const QString& helper) {
        useHelper(helper);
        QString failure;
        control->change(up, [&](const QString& reason) {
            control.reset();
            failure = reason;
        });
        EXPECT_TRUE(waitFor([&] { return !failure.isEmpty(); }));
        return failure;
    };
    EXPECT_NE(failureThatEnds(folder.path(u"missing"_s)), QString());
    EXPECT_EQ(failureThatEnds(QStringLiteral(TAVRIN_SOUND)), refused);
    EXPECT_EQ(failureThatEnds(u"/bin/true"_s), brokenOff);
    const HungServer hung(folder);
    limits.answer = std::chrono::milliseconds(200);
    EXPECT_EQ(failureThatEnds(QStringLiteral(TAVRIN_SOUND)), silent);
}

/// The helper by itself, as it is without us.
class VolumeHelper : public VolumeFaults {
protected:
    VolumeHelper()
    {
        int ends[2]{-1, -1};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        ours = FileDescriptor(ends[0]);
        const FileDescriptor theirs(ends[1]);
        ChildRequest request;
        request.arguments = {TAVRIN_SOUND};
        request.standardInput = theirs.number();
        request.standardOutput = theirs.number();
        const SpawnResult child = spawn(request);
        EXPECT_TRUE(child);
        children.watch(child.pid, [this](int code) { exitCode = code; });
    }

    FileDescriptor ours;
    int exitCode = -1;
};

TEST_F(VolumeHelper, EndsWithItsInput)
{
    ours = {};
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_SUCCESS; }));
}

TEST_F(VolumeHelper, EndsWithItsInputWhileTheServerHangs)
{
    startServer();
    server->send(SIGSTOP);
    ASSERT_EQ(write(ours.number(), "+-m", 3), 3);
    EXPECT_EQ(exitCode, -1);
    ours = {};
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_SUCCESS; }));
    server->send(SIGCONT);
}

TEST_F(VolumeHelper, AnswersEachChangeWithALine)
{
    startServer();
    ASSERT_EQ(write(ours.number(), "++m", 3), 3);
    QByteArray answers(4, '?');
    qsizetype length = 0;
    EXPECT_TRUE(waitFor([&] {
        length
            += std::max<ssize_t>(recv(ours.number(), answers.data() + length, 4 - length, MSG_DONTWAIT), 0);
        return length == 3;
    }));
    EXPECT_EQ(answers.first(3), "\n\n\n");
    EXPECT_TRUE(comesTo(70));
    EXPECT_TRUE(server->isMuted());
    ours = {};
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_SUCCESS; }));
}

TEST_F(VolumeHelper, RefusesWhatIsNoChange)
{
    ASSERT_EQ(write(ours.number(), "x", 1), 1);
    EXPECT_TRUE(waitFor([this] { return exitCode == EXIT_FAILURE; }));
}

} // namespace
} // namespace Tavrin
