#include "Platform/Linux/SystemActions/SystemActionTable.h"

#include "support/SystemActionsDocument.h"

#include <QFile>
#include <gmock/gmock.h>
#include <set>

namespace Tavrin {

using namespace Testing;

namespace {

/// A desktop of the test's own making.
class Scenery : public Surroundings {
public:
    bool hasProgram(const char* name) override { return programs.contains(name); }
    bool isOnSessionBus(const char* busName) override { return owned.contains(busName); }
    bool canStartOnSessionBus(const char* busName) override { return startable.contains(busName); }
    bool isOnSystemBus(const char* busName) override { return system.contains(busName); }
    bool hasSetting(const QByteArray& schema, const QByteArray& key) override
    {
        return settings.contains(schema + ' ' + key);
    }
    QByteArray variable(const char* name) override
    {
        const auto found = variables.find(name);
        return found == variables.end() ? QByteArray() : found->second;
    }
    bool hasDisplayPower() override { return displayPower; }

    QByteArrayList programs, owned, startable, system, settings;
    std::map<QByteArray, QByteArray> variables;
    bool displayPower = false;
};

struct DesktopCase {
    QByteArrayList owned;
    QByteArray currentDesktop;
    Desktop desktop;
};

class RunningDesktop : public testing::TestWithParam<DesktopCase> { };

TEST_P(RunningDesktop, IsTheOneThatAnswers)
{
    Scenery scenery;
    scenery.owned = GetParam().owned;
    scenery.variables["XDG_CURRENT_DESKTOP"] = GetParam().currentDesktop;
    EXPECT_EQ(runningDesktop(scenery), GetParam().desktop);
}

INSTANTIATE_TEST_SUITE_P(Table, RunningDesktop,
    testing::Values(DesktopCase{{}, "", Desktop::other}, DesktopCase{{"org.gnome.Shell"}, "", Desktop::gnome},
        DesktopCase{{"org.kde.plasmashell"}, "", Desktop::plasma},
        DesktopCase{{"org.kde.KWin"}, "", Desktop::plasma},
        DesktopCase{{"org.xfce.Panel"}, "", Desktop::xfce},
        DesktopCase{{"org.xfce.SessionManager"}, "", Desktop::xfce},
        DesktopCase{{"org.mate.Panel"}, "", Desktop::mate},
        DesktopCase{{"org.mate.SessionManager"}, "", Desktop::mate},
        DesktopCase{{"org.Cinnamon"}, "", Desktop::cinnamon},
        // What a session is called proves nothing.
        DesktopCase{{}, "GNOME", Desktop::other},
        DesktopCase{{"org.xfce.Panel"}, "ubuntu:GNOME", Desktop::xfce},
        // One desktop's panel on another.
        DesktopCase{{"org.xfce.Panel", "org.kde.KWin"}, "XFCE", Desktop::xfce},
        DesktopCase{{"org.xfce.Panel", "org.kde.KWin"}, "KDE", Desktop::plasma},
        DesktopCase{{"org.xfce.Panel", "org.gnome.Shell"}, "ubuntu:GNOME", Desktop::gnome},
        DesktopCase{{"org.xfce.Panel", "org.kde.KWin"}, "", Desktop::plasma}));

TEST(RunningDesktopOfSway, IsKnownByItsSocket)
{
    Scenery scenery;
    scenery.owned = {"org.xfce.Panel"};
    scenery.variables["SWAYSOCK"] = "/run/user/0/sway-ipc.0.1.sock";
    EXPECT_EQ(runningDesktop(scenery), Desktop::sway);
}

struct Choice {
    const char* description;
    SystemActionType action;
    std::function<void(Scenery&)> furnish;
    const char* means;
};

void PrintTo(const Choice& choice, std::ostream* stream)
{
    *stream << rawValue(choice.action).toStdString() << ": " << choice.description;
}

class ChosenMeans : public testing::TestWithParam<Choice> { };

TEST_P(ChosenMeans, IsTheFirstThatIsThere)
{
    Scenery scenery;
    GetParam().furnish(scenery);
    const Means* means = chooseMeans(GetParam().action, scenery);
    EXPECT_STREQ(means ? means->name : nullptr, GetParam().means);
}

using enum SystemActionType;

INSTANTIATE_TEST_SUITE_P(Table, ChosenMeans,
    testing::Values(Choice{"logind before any screen saver", lockScreen,
                        [](Scenery& it) {
                            it.system = {"org.freedesktop.login1"};
                            it.owned = {"org.gnome.Shell", "org.gnome.ScreenSaver"};
                        },
                        "logind-lock"},
        Choice{"without logind", lockScreen,
            [](Scenery& it) {
                it.owned = {"org.gnome.Shell", "org.gnome.ScreenSaver"};
            },
            "gnome-screensaver"},
        Choice{"another desktop's screen saver does not count", lockScreen,
            [](Scenery& it) {
                it.owned = {"org.kde.KWin", "org.gnome.ScreenSaver", "org.freedesktop.ScreenSaver"};
            },
            "freedesktop-screensaver"},
        Choice{"nothing", lockScreen, [](Scenery&) {}, nullptr},
        Choice{"Mutter before X", sleepDisplay,
            [](Scenery& it) {
                it.owned = {"org.gnome.Shell", "org.gnome.Mutter.DisplayConfig"};
                it.displayPower = true;
            },
            "mutter-power"},
        Choice{"X", sleepDisplay,
            [](Scenery& it) {
                it.owned = {"org.xfce.Panel"};
                it.displayPower = true;
            },
            "dpms"},
        Choice{"X without DPMS", sleepDisplay, [](Scenery& it) { it.owned = {"org.xfce.Panel"}; }, nullptr},
        Choice{"Plasma without DPMS", sleepDisplay,
            [](Scenery& it) {
                it.owned = {"org.kde.KWin"};
                it.programs = {"kscreen-doctor"};
            },
            "kscreen-doctor"},
        Choice{"sway", sleepDisplay,
            [](Scenery& it) {
                it.variables["SWAYSOCK"] = "socket";
                it.programs = {"swaymsg"};
                it.displayPower = true;
            },
            "sway-dpms"},
        Choice{"a service that the bus starts", emptyTrash,
            [](Scenery& it) {
                it.programs = {"gio"};
                it.startable = {"org.gtk.vfs.Daemon"};
            },
            "gio-trash"},
        Choice{"gio without its service", emptyTrash, [](Scenery& it) { it.programs = {"gio"}; }, nullptr},
        Choice{"Plasma without that service", emptyTrash,
            [](Scenery& it) {
                it.owned = {"org.kde.KWin"};
                it.programs = {"gio", "ktrash5"};
            },
            "ktrash5"},
        Choice{"a schema without the key", toggleDarkMode,
            [](Scenery& it) { it.settings = {"org.gnome.desktop.interface gtk-theme"}; }, nullptr},
        Choice{"the key", toggleDarkMode,
            [](Scenery& it) { it.settings = {"org.gnome.desktop.interface color-scheme"}; }, "color-scheme"},
        Choice{"the file manager that runs", toggleHiddenFiles,
            [](Scenery& it) {
                it.programs = {"thunar", "xfconf-query", "dolphin"};
                it.owned = {"org.kde.dolphin-*"};
            },
            "dolphin-hidden"},
        Choice{"the file manager that is installed", restartFinder,
            [](Scenery& it) { it.programs = {"nemo"}; }, "nemo-restart"},
        Choice{"the desktop's own though another runs", restartFinder,
            [](Scenery& it) {
                it.programs = {"nautilus", "thunar"};
                it.owned = {"org.xfce.Panel", "org.gnome.Nautilus"};
            },
            "thunar-restart"},
        Choice{"grim has to have slurp", screenshotToClipboard,
            [](Scenery& it) {
                it.variables = {{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}};
                it.programs = {"grim", "flameshot"};
            },
            "flameshot"},
        Choice{"a tool for X", screenshotToClipboard,
            [](Scenery& it) {
                it.variables = {{"DISPLAY", ":0"}};
                it.programs = {"flameshot", "maim"};
            },
            "maim"},
        Choice{"the desktop's own tool", screenshotToClipboard,
            [](Scenery& it) {
                it.variables = {{"DISPLAY", ":0"}};
                it.owned = {"org.kde.KWin"};
                it.programs = {"maim", "spectacle"};
            },
            "spectacle"},
        Choice{"GNOME on Wayland", restartDock,
            [](Scenery& it) {
                it.variables = {{"XDG_SESSION_TYPE", "wayland"}};
                it.owned = {"org.gnome.Shell"};
                it.programs = {"gnome-shell"};
            },
            "gnome-wayland"},
        Choice{"GNOME on X", restartDock,
            [](Scenery& it) {
                it.variables = {{"XDG_SESSION_TYPE", "x11"}};
                it.owned = {"org.gnome.Shell"};
                it.programs = {"gnome-shell"};
            },
            "gnome-shell"},
        Choice{"Xfce's panel that runs", restartDock,
            [](Scenery& it) {
                it.owned = {"org.xfce.SessionManager", "org.xfce.Panel"};
                it.programs = {"xfce4-panel"};
            },
            "xfce-panel"},
        Choice{"Xfce's panel that does not", restartDock,
            [](Scenery& it) {
                it.owned = {"org.xfce.SessionManager"};
                it.programs = {"xfce4-panel"};
            },
            "xfce-panel-start"}));

TEST(SystemActionTable, SaysWhatIsMissing)
{
    Scenery scenery;
    scenery.programs = {"gio"};
    EXPECT_EQ(missingNeeds(emptyTrash, scenery), QByteArrayList{"D-Bus org.gtk.vfs.Daemon"});
    EXPECT_EQ(missingNeeds(toggleDarkMode, scenery),
        QByteArrayList{"GSettings org.gnome.desktop.interface color-scheme"});
    EXPECT_EQ(missingNeeds(openMissionControl, scenery), QByteArrayList{"rofi"});
    scenery.owned = {"org.kde.KWin"};
    EXPECT_EQ(
        missingNeeds(openMissionControl, scenery), (QByteArrayList{"D-Bus org.kde.kglobalaccel", "rofi"}));
}

TEST(SystemActionTable, HasAWayForEveryActionOnEveryDesktop)
{
    for (const SystemActionType action : allSystemActionTypes) {
        for (const Desktop desktop : allDesktops) {
            EXPECT_TRUE(std::ranges::any_of(systemActionTable(),
                [&](const Means& means) {
                    return means.action == action && means.desktops.testFlag(desktop);
                }))
                << qPrintable(rawValue(action)) << " on " << qPrintable(SystemActionsDocument::name(desktop));
        }
    }
}

using Row = std::pair<SystemActionType, std::string>;

TEST(SystemActionProofs, AreThereForEveryRowAndForNoOther)
{
    std::set<Row> rows;
    for (const Means& means : systemActionTable())
        rows.emplace(means.action, means.name);
    std::set<Row> proven;
    for (const SystemActionProof& proof : systemActionProofs)
        proven.emplace(proof.action, proof.means);
    EXPECT_EQ(rows, proven);
}

TEST(SystemActionProofs, NameTestsThatExist)
{
    for (const SystemActionProof& proof : systemActionProofs) {
        const QStringList name = QString::fromLatin1(proof.test).split(u'.');
        ASSERT_EQ(name.size(), 2) << proof.test;
        const QString file
            = name[0] == u"desktop" ? QString(name[1] + u"Test.cpp") : u"test_" + name[1] + u".py";
        EXPECT_TRUE(QFile::exists(QStringLiteral(TAVRIN_SOURCES "/tests/") + name[0] + u'/' + file))
            << proof.test;
    }
}

TEST(SystemActionsDocument, IsWhatTheTableSays)
{
    QFile file(QStringLiteral(TAVRIN_SOURCES "/docs/system-actions.md"));
    const QByteArray text = SystemActionsDocument().text().toUtf8();
    if (qEnvironmentVariableIsSet("TAVRIN_WRITE_DOCUMENTS")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), text.toStdString())
        << "TAVRIN_WRITE_DOCUMENTS=1 ctest --test-dir build -R unit.SystemActionTable writes it anew";
}

} // namespace
} // namespace Tavrin
