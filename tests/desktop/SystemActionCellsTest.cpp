// One cell of the table after another: which program is started, or which service is asked, on which desktop.
#include "support/CapturedOutput.h"
#include "support/SystemActionsFixture.h"

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

using enum SystemActionType;

struct Cell {
    SystemActionType action;
    const char* description;
    /// On the session bus.
    QStringList names;
    QStringList programs;
    /// What is called in the end: a stand-in, or a service.
    QStringList calls;
    std::map<QByteArray, QByteArray> variables = {};
};

void PrintTo(const Cell& cell, std::ostream* stream)
{
    *stream << rawValue(cell.action).toStdString() << ": " << cell.description;
}

class Cells : public SystemActionsFixture, public testing::WithParamInterface<Cell> {
protected:
    MockBus session{QDBusConnection::sessionBus()};
};

TEST_P(Cells, CallWhatTheyShould)
{
    for (const QString& name : GetParam().names)
        session.own(name);
    for (const QString& name : GetParam().programs)
        standIn(name);
    for (const auto& [name, value] : GetParam().variables)
        setVariable(name, value);
    session.answer = [](const QDBusMessage& call) {
        return call.member() == u"Get" ? call.createReply(QVariant::fromValue(QDBusVariant(false)))
                                       : call.createReply();
    };
    perform(GetParam().action);
    // The last call is the last thing that happens.
    const QString last = GetParam().calls.constLast();
    EXPECT_TRUE(waitFor([&] { return (log() + session.record).contains(last); }))
        << qPrintable((log() + session.record + failures).join(u'\n'));
    EXPECT_EQ(log() + session.record, GetParam().calls);
    EXPECT_TRUE(
        waitFor([this] { return isQuiet() && (GetParam().action != lockScreen || !failures.isEmpty()); }));
    // The display's power, which comes after the lock, is not there.
    EXPECT_EQ(failures.size(), GetParam().action == lockScreen ? 1 : 0) << qPrintable(failures.join(u'\n'));
}

INSTANTIATE_TEST_SUITE_P(Lock, Cells,
    testing::Values(Cell{lockScreen, "GNOME", {u"org.gnome.Shell"_s, u"org.gnome.ScreenSaver"_s}, {},
                        {u"/org/gnome/ScreenSaver Lock"_s}},
        Cell{lockScreen, "Plasma", {u"org.kde.KWin"_s, u"org.freedesktop.ScreenSaver"_s}, {},
            {u"/org/freedesktop/ScreenSaver Lock"_s}},
        Cell{lockScreen, "Xfce", {u"org.xfce.SessionManager"_s}, {u"xflock4"_s}, {u"xflock4"_s}},
        Cell{lockScreen, "MATE", {u"org.mate.SessionManager"_s}, {u"mate-screensaver-command"_s},
            {u"mate-screensaver-command --lock"_s}},
        Cell{lockScreen, "Cinnamon", {u"org.Cinnamon"_s}, {u"cinnamon-screensaver-command"_s},
            {u"cinnamon-screensaver-command --lock"_s}},
        Cell{lockScreen, "others", {}, {u"xdg-screensaver"_s}, {u"xdg-screensaver lock"_s}}));

INSTANTIATE_TEST_SUITE_P(DisplayOff, Cells,
    testing::Values(
        Cell{sleepDisplay, "GNOME", {u"org.gnome.Shell"_s, u"org.gnome.Mutter.DisplayConfig"_s}, {},
            {u"/org/gnome/Mutter/DisplayConfig Set org.gnome.Mutter.DisplayConfig PowerSaveMode 3"_s}},
        Cell{sleepDisplay, "Plasma", {u"org.kde.KWin"_s}, {u"kscreen-doctor"_s},
            {u"kscreen-doctor --dpms off"_s}},
        Cell{sleepDisplay, "sway", {}, {u"swaymsg"_s}, {u"swaymsg output * dpms off"_s},
            {{"SWAYSOCK", "socket"}}}));

INSTANTIATE_TEST_SUITE_P(EmptyTrash, Cells,
    testing::Values(Cell{emptyTrash, "Plasma 6", {u"org.kde.KWin"_s}, {u"ktrash6"_s, u"ktrash5"_s},
                        {u"ktrash6 --empty"_s}},
        Cell{emptyTrash, "Plasma 5", {u"org.kde.KWin"_s}, {u"ktrash5"_s}, {u"ktrash5 --empty"_s}},
        Cell{emptyTrash, "GNOME", {u"org.gnome.Shell"_s, u"org.gtk.vfs.Daemon"_s}, {u"gio"_s},
            {u"gio trash --empty"_s}}));

INSTANTIATE_TEST_SUITE_P(Overview, Cells,
    testing::Values(Cell{openMissionControl, "GNOME", {u"org.gnome.Shell"_s}, {u"rofi"_s},
                        {u"/org/gnome/Shell Get org.gnome.Shell OverviewActive"_s,
                            u"/org/gnome/Shell Set org.gnome.Shell OverviewActive true"_s}},
        Cell{openMissionControl, "Plasma", {u"org.kde.KWin"_s, u"org.kde.kglobalaccel"_s}, {u"rofi"_s},
            {u"/component/kwin invokeShortcut Overview"_s}},
        Cell{openMissionControl, "Xfce", {u"org.xfce.Panel"_s}, {u"rofi"_s}, {u"rofi -show window"_s}},
        Cell{openMissionControl, "MATE", {u"org.mate.Panel"_s}, {u"rofi"_s}, {u"rofi -show window"_s}},
        Cell{openMissionControl, "Cinnamon", {u"org.Cinnamon"_s}, {u"rofi"_s}, {u"/org/Cinnamon ShowExpo"_s}},
        Cell{openMissionControl, "others", {}, {u"rofi"_s}, {u"rofi -show window"_s}}));

INSTANTIATE_TEST_SUITE_P(Dock, Cells,
    testing::Values(Cell{restartDock, "GNOME on X", {u"org.gnome.Shell"_s}, {u"gnome-shell"_s},
                        {u"gnome-shell --replace"_s}},
        Cell{restartDock, "Xfce without a panel", {u"org.xfce.SessionManager"_s}, {u"xfce4-panel"_s},
            {u"xfce4-panel"_s}},
        Cell{restartDock, "MATE", {u"org.mate.Panel"_s}, {u"mate-panel"_s}, {u"mate-panel --replace"_s}},
        Cell{restartDock, "Cinnamon", {u"org.Cinnamon"_s}, {u"cinnamon"_s}, {u"cinnamon --replace"_s}}));

class OwnControls : public SystemActionsFixture { };

TEST_F(OwnControls, TurnTheDisplayOffAfterTheKeysAreUp)
{
    controls.displayPower = true;
    perform(sleepDisplay);
    EXPECT_TRUE(waitFor([this] { return controls.record == QStringList{u"keys up"_s, u"display off"_s}; }));
    drainEvents();
    EXPECT_EQ(failures, QStringList());
}

TEST_F(OwnControls, SayThatTheDisplayStaysOn)
{
    controls.displayPower = true;
    controls.turnsOff = false;
    EXPECT_EQ(failureOf(sleepDisplay), u"Máy chủ X không tắt được màn hình"_s);
}

TEST_F(OwnControls, ChangeTheVolumeAtEachPress)
{
    for (const SystemActionType action : {volumeUp, volumeUp, volumeDown, toggleMute})
        perform(action);
    EXPECT_EQ(controls.record, (QStringList{u"volumeUp"_s, u"volumeUp"_s, u"volumeDown"_s, u"toggleMute"_s}));
}

class Bars : public SystemActionsFixture {
protected:
    /// pkill finds the bars with these names.
    void runningBars(const QByteArray& pattern) const
    {
        standIn(u"pkill"_s, "for bar; do :; done; case $bar in " + pattern + ") exit 0;; *) exit 1;; esac");
    }

    static QString signal(const QString& name, const QString& bar)
    {
        return u"pkill -%1 -x -u %2 %3"_s.arg(name).arg(getuid()).arg(bar);
    }

    const QStringList told{signal(u"USR1"_s, u"tint2"_s), signal(u"USR2"_s, u"waybar"_s)};
};

TEST_F(Bars, AreToldToStartAnew)
{
    runningBars("waybar");
    standIn(u"polybar-msg"_s);
    perform(restartDock);
    const QStringList expected = told + QStringList{u"polybar-msg cmd restart"_s};
    EXPECT_TRUE(waitFor([&] { return log() == expected; })) << qPrintable(log().join(u'\n'));
    EXPECT_TRUE(waitFor([this] { return isQuiet(); }));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(Bars, OfSwayComeBackWithItsConfiguration)
{
    runningBars("none");
    standIn(u"swaymsg"_s);
    setVariable("SWAYSOCK", "socket");
    perform(restartDock);
    EXPECT_TRUE(waitFor([&] { return log() == told + QStringList{u"swaymsg reload"_s}; }))
        << qPrintable(log().join(u'\n'));
}

TEST_F(Bars, ThatDoNotRunAreMissed)
{
    runningBars("none");
    EXPECT_EQ(failureOf(restartDock), u"Không thấy thanh nào đang chạy: tint2, waybar, polybar"_s);
}

TEST_F(Bars, OfGnomeOnWaylandCannotStartAnew)
{
    MockBus session(QDBusConnection::sessionBus());
    session.own(u"org.gnome.Shell"_s);
    standIn(u"gnome-shell"_s);
    setVariable("XDG_SESSION_TYPE", "wayland");
    const QString reason
        = u"GNOME trên Wayland không khởi động lại được thanh Dock: nó chính là phiên làm việc"_s;
    Testing::CapturedOutput output;
    EXPECT_EQ(failureOf(restartDock), reason);
    EXPECT_EQ(output.lines(), QStringList{reason});
    EXPECT_EQ(log(), QStringList());
}

} // namespace
} // namespace Tavrin
