#include "Platform/Linux/Applications/LaunchLedger.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

const QString editor = QStringLiteral("editor");
const QString browser = QStringLiteral("browser");

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
    ledger.started(editor, 10);
    EXPECT_FALSE(ledger.claim(editor));
    EXPECT_EQ(ledger.processOf(editor), 10);
    EXPECT_EQ(ledger.processOf(browser), 0);
}

TEST_F(Ledger, LosesPatienceWithWhatShowsNoWindow)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, 10);
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
    ledger.started(editor, 10);
    ledger.ended(11);
    EXPECT_FALSE(ledger.claim(editor));
    ledger.ended(10);
    EXPECT_EQ(ledger.processOf(editor), 0);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, TakesAWindowAsTheEndOfStarting)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, 10);
    ledger.windowSeen(editor);
    EXPECT_EQ(ledger.processOf(editor), 10);
    // Its window is closed again, the process stays: the next press starts it anew.
    EXPECT_TRUE(ledger.claim(editor));

    EXPECT_TRUE(ledger.claim(browser));
    ledger.started(browser, 0);
    EXPECT_FALSE(ledger.claim(browser));
    ledger.windowSeen(browser);
    EXPECT_TRUE(ledger.claim(browser));
}

TEST_F(Ledger, IgnoresWhatItDoesNotKnow)
{
    ledger.started(editor, 10);
    ledger.windowSeen(editor);
    ledger.failed(editor);
    ledger.ended(10);
    EXPECT_EQ(ledger.processOf(editor), 0);
    EXPECT_TRUE(ledger.claim(editor));
}

TEST_F(Ledger, ForgetsNotTheNewProcessWhenTheOldOneEnds)
{
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, 10);
    now += LaunchLedger::patience;
    EXPECT_TRUE(ledger.claim(editor));
    ledger.started(editor, 11);
    ledger.ended(10);
    EXPECT_EQ(ledger.processOf(editor), 11);
}

} // namespace
} // namespace Tavrin
