#include "Platform/Linux/Applications/LaunchLedger.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

const QString editor = QStringLiteral("editor");
const QString browser = QStringLiteral("browser");
const QByteArray id = "tavrin-1_TIME5";

class Ledger : public testing::Test {
protected:
    LaunchLedger::Clock::time_point now{};
    LaunchLedger ledger{[this] { return now; }};
};

TEST_F(Ledger, LetsOneCallerStartAnApplication)
{
    EXPECT_TRUE(ledger.claim(editor));
    EXPECT_FALSE(ledger.claim(editor));
    EXPECT_TRUE(ledger.claim(browser));
    ledger.started(editor, {10, id}, WindowPromise::none);
    EXPECT_FALSE(ledger.claim(editor));
    EXPECT_EQ(ledger.lastLaunch(editor).process, 10);
    EXPECT_EQ(ledger.lastLaunch(browser).process, 0);
}

TEST_F(Ledger, LosesPatienceWithWhatShowsNoWindow)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::none);
    now += LaunchLedger::patience - std::chrono::milliseconds(1);
    EXPECT_FALSE(ledger.claim(editor));
    now += std::chrono::milliseconds(1);
    EXPECT_TRUE(ledger.claim(editor));
    EXPECT_FALSE(ledger.claim(editor));
}

TEST_F(Ledger, LetsAFailedOneBeTriedAgainAtOnce)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.failed(editor);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, LetsAnEndedOneBeStartedAgainAtOnce)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::none);
    ledger.ended(11);
    EXPECT_FALSE(ledger.claim(editor));
    ledger.ended(10);
    EXPECT_EQ(ledger.lastLaunch(editor).process, 0);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, TakesAWindowAsTheEndOfStarting)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::none);
    ledger.windowSeen(editor);
    EXPECT_EQ(ledger.lastLaunch(editor).process, 10);
    // Its window is closed again, the process stays: the next press starts it anew.
    EXPECT_TRUE(ledger.claim(editor));

    EXPECT_TRUE(ledger.claim(browser));
    ledger.started(browser, {0, id}, WindowPromise::none);
    EXPECT_FALSE(ledger.claim(browser));
    ledger.windowSeen(browser);
    EXPECT_TRUE(ledger.claim(browser));
}

TEST_F(Ledger, WaitsALittleForTheWindowOfWhatWasHandedOver)
{
    // The session bus has answered for one; the other's program has ended and its window is announced.
    EXPECT_TRUE(ledger.claim(browser));
    ledger.started(browser, {0, id}, WindowPromise::none);
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::announced);
    now += std::chrono::seconds(1);
    ledger.ended(10);
    EXPECT_EQ(ledger.lastLaunch(editor).process, 0);
    EXPECT_FALSE(ledger.claim(browser));
    EXPECT_FALSE(ledger.claim(editor));
    now += LaunchLedger::settling - std::chrono::seconds(1);
    EXPECT_TRUE(ledger.claim(browser));
    EXPECT_FALSE(ledger.claim(editor));
    now += std::chrono::seconds(1);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, DoesNotWaitLongerBecauseAProgramEnds)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::announced);
    now += LaunchLedger::patience - std::chrono::milliseconds(1);
    ledger.ended(10);
    now += std::chrono::milliseconds(1);
    EXPECT_TRUE(ledger.claim(editor));

    ledger.started(editor, {11, id}, WindowPromise::announced);
    ledger.windowSeen(editor);
    ledger.ended(11);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, RemembersWhatAnApplicationWasLaunchedWith)
{
    EXPECT_TRUE(ledger.lastLaunch(editor).startupId.isEmpty());
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::none);
    ledger.windowSeen(editor);
    ledger.ended(10);
    EXPECT_EQ(ledger.lastLaunch(editor).startupId, id);
    EXPECT_EQ(ledger.lastLaunch(editor).process, 0);
}

TEST_F(Ledger, IgnoresWhatItDoesNotKnow)
{
    ledger.started(editor, {10, id}, WindowPromise::none);
    ledger.windowSeen(editor);
    ledger.failed(editor);
    ledger.ended(10);
    EXPECT_EQ(ledger.lastLaunch(editor).process, 0);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, ForgetsNotTheNewProcessWhenTheOldOneEnds)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {10, id}, WindowPromise::none);
    now += LaunchLedger::patience;
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, {11, id}, WindowPromise::none);
    ledger.ended(10);
    EXPECT_EQ(ledger.lastLaunch(editor).process, 11);
}

} // namespace
} // namespace Tavrin
