#include "support/SoundServers.h"

#include <QTimer>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

constexpr auto up = VolumeChange::up;
constexpr auto down = VolumeChange::down;
constexpr auto toggleMute = VolumeChange::toggleMute;

enum class ServerKind { pulseAudio, pipeWire };

/// Both sound servers that desktops have.
class Volume : public VolumeTest, public testing::WithParamInterface<ServerKind> {
protected:
    Volume()
    {
        server = GetParam() == ServerKind::pulseAudio ? SoundServers::pulseAudio() : SoundServers::pipeWire();
    }
    ~Volume() override { EXPECT_EQ(failures, QStringList()); }

    /// Presses mute behind what was pressed before and waits for it: what came before is done then.
    void waitForPresses()
    {
        const bool before = server->isMuted();
        press(toggleMute);
        EXPECT_TRUE(waitFor([&] { return server->isMuted() != before; }));
    }
};

INSTANTIATE_TEST_SUITE_P(Servers, Volume, testing::Values(ServerKind::pulseAudio, ServerKind::pipeWire),
    [](const auto& kind) { return kind.param == ServerKind::pulseAudio ? "PulseAudio" : "PipeWire"; });

TEST_P(Volume, StepsByTenPerCent)
{
    server->setPercents({u"37"_s});
    for (const int percent : {47, 57, 67, 77, 87, 97, 100}) {
        press(up);
        EXPECT_TRUE(comesTo(percent));
    }
    for (const int percent : {90, 80, 70, 60, 50, 40, 30, 20, 10, 0}) {
        press(down);
        EXPECT_TRUE(comesTo(percent));
    }
}

TEST_P(Volume, StopsAtBothEndsExactly)
{
    server->setPercents({u"37"_s});
    press(up, 20);
    EXPECT_TRUE(comesTo(100));
    waitForPresses();
    EXPECT_EQ(server->volumes(), (QList<int>{65536, 65536}));
    press(down, 20);
    EXPECT_TRUE(comesTo(0));
    waitForPresses();
    EXPECT_EQ(server->volumes(), (QList<int>{0, 0}));
}

TEST_P(Volume, DoesNotDrift)
{
    server->setPercents({u"37"_s});
    press(up);
    ASSERT_TRUE(comesTo(47));
    const QList<int> volumes = server->volumes();
    for (int round = 0; round < 20; ++round) {
        press(up);
        ASSERT_TRUE(comesTo(57));
        press(down);
        ASSERT_TRUE(comesTo(47));
    }
    EXPECT_EQ(server->volumes(), volumes);
}

TEST_P(Volume, FollowsTwentyPressesASecond)
{
    server->setPercents({u"0"_s});
    // To 90, 40, 80, 60 per cent.
    std::deque<VolumeChange> presses;
    for (const auto& [change, times] :
        {std::pair(up, 9), std::pair(down, 5), std::pair(up, 4), std::pair(down, 2)})
        presses.insert(presses.end(), times, change);
    ASSERT_EQ(presses.size(), 20U);
    QTimer finger;
    finger.callOnTimeout([&] {
        press(presses.front());
        presses.pop_front();
        if (presses.empty())
            finger.stop();
    });
    finger.start(50);
    ASSERT_TRUE(waitFor([&] { return presses.empty(); }));
    EXPECT_TRUE(comesTo(60));
    waitForPresses();
    EXPECT_TRUE(comesTo(60));
    EXPECT_EQ(helpers().size(), 1);
}

TEST_P(Volume, LeavesWhatIsAboveAHundred)
{
    server->setPercents({u"130"_s});
    press(up);
    waitForPresses();
    EXPECT_EQ(server->percents(), (QList<int>{130, 130}));
    for (const int percent : {120, 110, 100, 90}) {
        press(down);
        EXPECT_TRUE(comesTo(percent));
    }
}

TEST_P(Volume, KeepsTheBalance)
{
    server->setPercents({u"30"_s, u"60"_s});
    press(up);
    EXPECT_TRUE(comesTo({35, 70}));
    press(up, 3);
    EXPECT_TRUE(comesTo({50, 100}));
    press(down, 20);
    EXPECT_TRUE(comesTo(0));
    press(down);
    waitForPresses();
    press(up, 8);
    EXPECT_TRUE(comesTo({40, 80}));
}

TEST_P(Volume, MutesAndUnmutes)
{
    server->setPercents({u"50"_s});
    ASSERT_FALSE(server->isMuted());
    press(toggleMute);
    EXPECT_TRUE(waitFor([this] { return server->isMuted(); }));
    press(up);
    EXPECT_TRUE(comesTo(60));
    EXPECT_TRUE(server->isMuted());
    press(toggleMute, 2);
    press(up);
    EXPECT_TRUE(comesTo(70));
    EXPECT_TRUE(server->isMuted());
    press(toggleMute);
    EXPECT_TRUE(waitFor([this] { return !server->isMuted(); }));
    EXPECT_TRUE(comesTo(70));
}

TEST_P(Volume, FollowsTheDefaultOutput)
{
    server->setPercents({u"50"_s});
    press(up);
    EXPECT_TRUE(comesTo(60));
    server->addSink(u"second"_s);
    server->setPercents({u"20"_s});
    press(up);
    EXPECT_TRUE(comesTo(30));
    EXPECT_EQ(server->percents(u"first"_s), (QList<int>{60, 60}));
}

TEST_P(Volume, SeesWhatOthersSet)
{
    server->setPercents({u"50"_s});
    press(up);
    EXPECT_TRUE(comesTo(60));
    server->setPercents({u"15"_s});
    press(down);
    EXPECT_TRUE(comesTo(5));
}

TEST_P(Volume, NeedsAHelperForAWhileOnly)
{
    limits.idle = std::chrono::milliseconds(50);
    server->setPercents({u"50"_s});
    EXPECT_FALSE(isHelperRunning());
    for (const int percent : {60, 70}) {
        press(up);
        EXPECT_TRUE(comesTo(percent));
        EXPECT_TRUE(waitFor([] { return !isHelperRunning(); }));
    }
    QFile mappings(u"/proc/self/maps"_s);
    ASSERT_TRUE(mappings.open(QIODevice::ReadOnly));
    EXPECT_FALSE(mappings.readAll().contains("libpulse"));
}

} // namespace
} // namespace Tavrin
