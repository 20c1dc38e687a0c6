// What is restarted is asked to quit, has gone before it is started again, and is ended if it does not go.
#include "support/Program.h"
#include "support/SystemActionsFixture.h"

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

using enum SystemActionType;

class Restart : public SystemActionsFixture {
protected:
    Restart()
    {
        // Seen in the log, each look at whether the old one has gone is one.
        QFile::remove(folder.path(u"bin/sleep"_s));
        standIn(u"sleep"_s, "exec /usr/bin/sleep \"$@\"");
    }

    qsizetype looks() const { return log().count(u"sleep 0.1"_s); }
    QStringList calls() const
    {
        QStringList lines = log();
        lines.removeAll(u"sleep 0.1"_s);
        return lines;
    }

    MockBus session{QDBusConnection::sessionBus()};
};

/// Desktop's name on the bus, the file manager's, and its program.
class FileManagers : public Restart, public testing::WithParamInterface<QStringList> { };

TEST_P(FileManagers, GoBeforeTheyComeBack)
{
    const QString program = GetParam().at(2);
    if (!GetParam().at(0).isEmpty())
        session.own(GetParam().at(0));
    session.own(GetParam().at(1));
    standIn(program);
    perform(restartFinder);
    EXPECT_TRUE(waitFor([this] { return looks() >= 3; }));
    EXPECT_EQ(calls(), QStringList{program + u" -q"});
    session.release(GetParam().at(1));
    EXPECT_TRUE(waitFor([&] {
        return calls() == QStringList{program + u" -q", program} && isQuiet();
    })) << qPrintable(log().join(u'\n'));
    EXPECT_EQ(failures, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Table, FileManagers,
    testing::Values(QStringList{u"org.gnome.Shell"_s, u"org.gnome.Nautilus"_s, u"nautilus"_s},
        QStringList{u"org.xfce.SessionManager"_s, u"org.xfce.Thunar"_s, u"thunar"_s},
        QStringList{u"org.mate.SessionManager"_s, u"org.mate.Caja"_s, u"caja"_s},
        QStringList{u"org.Cinnamon"_s, u"org.Nemo"_s, u"nemo"_s}, QStringList{{}, u"org.Nemo"_s, u"nemo"_s}));

TEST_F(Restart, StartsAFileManagerThatDoesNotRun)
{
    session.own(u"org.xfce.SessionManager"_s);
    standIn(u"thunar"_s);
    perform(restartFinder);
    EXPECT_TRUE(waitFor([this] { return log() == QStringList{u"thunar"_s} && isQuiet(); }));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(Restart, EndsAFileManagerThatDoesNotGo)
{
    session.own(u"org.xfce.SessionManager"_s);
    standIn(u"thunar"_s, "[ \"$1\" = -q ] && exec /usr/bin/sleep 1000");
    Program hung(u"/usr/bin/python3"_s,
        {u"-c"_s,
            u"import gi; from gi.repository import Gio, GLib\n"
            "Gio.bus_own_name(Gio.BusType.SESSION, 'org.xfce.Thunar', 0, None,\n"
            "                 lambda *_: print('owned', flush=True), None)\n"
            "GLib.MainLoop().run()"_s});
    ASSERT_TRUE(waitFor([&] { return hung.lines() == QStringList{u"owned"_s}; }));
    perform(restartFinder);
    EXPECT_TRUE(waitFor([&] { return hung.hasEnded(); }, 20000));
    EXPECT_TRUE(waitFor([this] { return calls().contains(u"thunar"_s) && isQuiet(); }));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(Restart, QuitsEveryDolphinOverTheBus)
{
    session.own(u"org.kde.plasmashell"_s);
    session.own(u"org.kde.dolphin-1"_s);
    session.own(u"org.kde.dolphin-22"_s);
    standIn(u"dolphin"_s);
    const QString names[]{u"org.kde.dolphin-1"_s, u"org.kde.dolphin-22"_s};
    int quits = 0;
    session.answer = [&](const QDBusMessage& call) {
        session.release(names[quits++]);
        return call.createReply();
    };
    perform(restartFinder);
    EXPECT_TRUE(waitFor([this] { return calls() == QStringList{u"dolphin"_s} && isQuiet(); }))
        << qPrintable(failures.join(u'\n'));
    EXPECT_EQ(session.record, QStringList(2, u"/MainApplication quit"_s));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(Restart, QuitsPlasmasShellAndStartsItAgain)
{
    session.own(u"org.kde.plasmashell"_s);
    standIn(u"plasmashell"_s);
    session.answer = [&](const QDBusMessage& call) {
        session.release(u"org.kde.plasmashell"_s);
        return call.createReply();
    };
    perform(restartDock);
    EXPECT_TRUE(waitFor([this] { return calls() == QStringList{u"plasmashell"_s} && isQuiet(); }))
        << qPrintable(failures.join(u'\n'));
    EXPECT_EQ(session.record, QStringList{u"/MainApplication quit"_s});
    EXPECT_EQ(failures, QStringList());
}

/// Xfce's panel, asked to restart itself.
class XfcePanel : public Restart {
protected:
    XfcePanel()
    {
        session.own(name);
        standIn(u"xfce4-panel"_s);
        perform(restartDock);
        EXPECT_TRUE(waitFor([this] { return looks() >= 2; }));
        EXPECT_EQ(calls(), QStringList{u"xfce4-panel --restart"_s});
    }

    const QString name = u"org.xfce.Panel"_s;
};

TEST_F(XfcePanel, ComesBackByItself)
{
    session.release(name);
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"new panel"_s);
    EXPECT_TRUE(bus.registerService(name));
    EXPECT_TRUE(waitFor([this] { return isQuiet(); }));
    EXPECT_EQ(calls(), QStringList{u"xfce4-panel --restart"_s});
    EXPECT_EQ(failures, QStringList());
    QDBusConnection::disconnectFromBus(u"new panel"_s);
}

TEST_F(XfcePanel, IsStartedWhereTheNewOneMetTheOld)
{
    session.release(name);
    const QStringList expected{u"xfce4-panel --restart"_s, u"xfce4-panel"_s};
    EXPECT_TRUE(waitFor([&] { return calls() == expected && isQuiet(); })) << qPrintable(log().join(u'\n'));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(Restart, LeavesPlasmasShellToTheSessionsServicesWhereTheyRunIt)
{
    session.own(u"org.kde.plasmashell"_s);
    standIn(u"plasmashell"_s);
    standIn(u"systemctl"_s);
    perform(restartDock);
    EXPECT_TRUE(waitFor([this] { return log().size() == 2 && isQuiet(); }));
    EXPECT_EQ(log(),
        (QStringList{u"systemctl --user --quiet is-active plasma-plasmashell.service"_s,
            u"systemctl --user restart plasma-plasmashell.service"_s}));
    EXPECT_EQ(session.record, QStringList());
}

} // namespace
} // namespace Tavrin
