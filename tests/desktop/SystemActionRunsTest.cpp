// How actions run beside one another, and what becomes of a tool that hangs, fails or is not there.
#include "support/SystemActionsFixture.h"

#include <QElapsedTimer>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

using enum SystemActionType;

class Runs : public SystemActionsFixture { };

TEST_F(Runs, ReturnAtOnceAndStartNothingBefore)
{
    const qsizetype usualThreads = threadCount();
    LinuxSystemActions other(children, pasteboard, controls);
    EXPECT_EQ(threadCount(), usualThreads);
    standIn(u"rofi"_s, "exec sleep 1000");
    QElapsedTimer timer;
    timer.start();
    perform(openMissionControl);
    EXPECT_LT(timer.elapsed(), 100);
    EXPECT_TRUE(waitFor([this] { return log() == QStringList{u"rofi -show window"_s}; }));
    EXPECT_TRUE(waitFor([this] { return isQuiet(); })) << "what stays on screen is not waited for";
}

TEST_F(Runs, SayWhatIsMissing)
{
    EXPECT_EQ(failureOf(openMissionControl), u"Máy này không có: rofi"_s);
    EXPECT_EQ(failureOf(emptyTrash), u"Máy này không có: gio"_s);
    standIn(u"rofi"_s);
    perform(openMissionControl);
    EXPECT_TRUE(waitFor([this] { return !log().isEmpty(); })) << "what is installed today serves today";
}

TEST_F(Runs, SayWhyAToolFailed)
{
    setVariable("SWAYSOCK", "socket");
    standIn(u"swaymsg"_s, "echo 'Không mở được ổ cắm' >&2; echo more >&2; exit 3");
    EXPECT_EQ(failureOf(sleepDisplay), u"Không mở được ổ cắm"_s);
    standIn(u"swaymsg"_s, "exit 3");
    EXPECT_EQ(failureOf(sleepDisplay), u"Chương trình kết thúc với mã 3"_s);
}

TEST_F(Runs, KeepLittleOfWhatAToolSays)
{
    setVariable("SWAYSOCK", "socket");
    standIn(u"swaymsg"_s, "echo first >&2; while echo more; do :; done >&2 2>/dev/null; exit 4");
    EXPECT_EQ(failureOf(sleepDisplay), u"first"_s);
}

TEST_F(Runs, EndAToolThatHangsWithAllItStartedAndHoldNothingElseUp)
{
    setVariable("SWAYSOCK", "socket");
    standIn(u"swaymsg"_s, "sleep 1000 & echo $! > '" + folder.path(u"pid"_s).toUtf8() + "'; wait");
    perform(sleepDisplay);
    EXPECT_TRUE(waitFor([this] { return !folder.read(u"pid"_s).isEmpty(); }));
    // Pressed again meanwhile: it is under way.
    perform(sleepDisplay);
    standIn(u"rofi"_s);
    perform(openMissionControl);
    EXPECT_TRUE(waitFor([this] { return log().contains(u"rofi -show window"_s); }, 3000));
    EXPECT_EQ(failures, QStringList());
    ASSERT_TRUE(waitFor([this] { return !failures.isEmpty(); }, 15000));
    EXPECT_EQ(failures, QStringList{u"Chương trình không trả lời sau 5 giây"_s});
    const pid_t grandchild = folder.read(u"pid"_s).trimmed().toInt();
    EXPECT_TRUE(waitFor([&] { return !isRunning(grandchild); }));
    EXPECT_EQ(log().count(u"swaymsg output * dpms off"_s), 1);

    standIn(u"swaymsg"_s);
    perform(sleepDisplay);
    EXPECT_TRUE(waitFor([this] { return log().count(u"swaymsg output * dpms off"_s) == 2; }))
        << "the next press starts afresh";
}

TEST_F(Runs, TellEveryPressThatWaitedForAServiceThatHangs)
{
    MockBus session(QDBusConnection::sessionBus());
    session.own(u"org.gnome.Shell"_s);
    session.answer = [](const QDBusMessage&) { return QDBusMessage(); };
    for (int press = 0; press < 3; ++press)
        perform(openMissionControl);
    ASSERT_TRUE(waitFor([this] { return failures.size() == 3; }, 15000));
    EXPECT_EQ(failures, QStringList(3, u"Chương trình không trả lời sau 5 giây"_s));
    EXPECT_EQ(session.record.size(), 1) << "what hung once is not tried for those that waited";
}

TEST_F(Runs, OfAToggleFollowOneAnother)
{
    MockBus session(QDBusConnection::sessionBus());
    session.own(u"org.gnome.Shell"_s);
    bool isActive = false;
    QList<bool> states;
    session.answer = [&](const QDBusMessage& call) {
        if (call.member() == u"Get")
            return call.createReply(QVariant::fromValue(QDBusVariant(isActive)));
        isActive = call.arguments().at(2).value<QDBusVariant>().variant().toBool();
        states.append(isActive);
        return call.createReply();
    };
    for (int press = 0; press < 6; ++press)
        perform(openMissionControl);
    EXPECT_TRUE(waitFor([&] { return states.size() == 6; }));
    EXPECT_EQ(states, (QList<bool>{true, false, true, false, true, false}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(Runs, LeaveWhatTheyStartedWhenTheProgramEnds)
{
    standIn(u"rofi"_s, "echo $$ > '" + folder.path(u"pid"_s).toUtf8() + "'; exec sleep 1000");
    perform(openMissionControl);
    ASSERT_TRUE(waitFor([this] { return folder.read(u"pid"_s).endsWith('\n'); }));
    actions.reset();
    drainEvents();
    const pid_t pid = folder.read(u"pid"_s).trimmed().toInt();
    EXPECT_TRUE(isRunning(pid));
    EXPECT_EQ(getsid(pid), pid) << "in a session of its own";
    kill(pid, SIGKILL);
}

TEST_F(Runs, AreDroppedWhenTheProgramEndsBefore)
{
    standIn(u"rofi"_s);
    perform(openMissionControl);
    actions.reset();
    drainEvents();
    EXPECT_EQ(failures, QStringList());
}

} // namespace
} // namespace Tavrin
