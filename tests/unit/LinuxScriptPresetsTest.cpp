#include "Platform/Linux/LinuxScriptPresets.h"

#include "MakerData.h"
#include "support/StandIns.h"
#include "support/Wait.h"

#include <QProcess>
#include <QRegularExpression>
#include <gmock/gmock.h>

/// Texts in the words of a failed test.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << qPrintable(text);
}

namespace Tavrin {
namespace {

using testing::ElementsAre;
using Testing::waitFor;

enum Preset { address, awake, memory, note, names, panel, terminal, count };

const QString& codeOf(Preset preset)
{
    return linuxScriptPresets().at(static_cast<std::size_t>(preset)).code;
}

/// The scripts, among programs that only write down how they were called.
class LinuxScripts : public testing::Test, protected Testing::StandIns {
protected:
    LinuxScripts()
    {
        standIn(QStringLiteral("notify-send"));
        setVariable("HOME", home.toLocal8Bit());
        setVariable("XDG_CURRENT_DESKTOP", {});
        setVariable("XDG_SESSION_TYPE", "x11");
        setVariable("TERMINAL", {});
        EXPECT_TRUE(QDir().mkpath(home));
    }

    /// Runs the script to its end; what it says itself goes into the words of a failed test.
    void run(Preset preset)
    {
        QProcess shell;
        shell.setProcessChannelMode(QProcess::MergedChannels);
        shell.setWorkingDirectory(QStringLiteral("/"));
        shell.start(QStringLiteral("/bin/zsh"), {QStringLiteral("-c"), codeOf(preset)});
        EXPECT_TRUE(waitFor([&] { return shell.state() == QProcess::NotRunning; }));
        output = QString::fromUtf8(shell.readAll());
    }

    void useReal(std::initializer_list<const char*> programs) const
    {
        for (const char* program : programs)
            StandIns::useReal(QLatin1String(program));
    }

    QString home = folder.path(QStringLiteral("nhà 'của' \"tôi\" $HOME"));
    QString output;
};

TEST(LinuxScriptPresets, AreTheReferencesInTheSameOrder)
{
    const auto& reference = referenceScriptPresets();
    const auto& presets = linuxScriptPresets();
    ASSERT_EQ(presets.size(), reference.size());
    ASSERT_EQ(presets.size(), static_cast<std::size_t>(count));
    // Where the reference names a program that is not here, so may the name and the description differ.
    static const QRegularExpression foreign(QStringLiteral("Caffeinate|Apple Notes|Dock|Finder"));
    static const QRegularExpression foreignCode(
        QStringLiteral("osascript|caffeinate|killall|ipconfig|dscacheutil"));
    for (std::size_t index = 0; index < presets.size(); ++index) {
        EXPECT_EQ(presets[index].icon, reference[index].icon);
        EXPECT_EQ(presets[index].name == reference[index].name, !reference[index].name.contains(foreign))
            << presets[index].name.toStdString();
        EXPECT_EQ(presets[index].desc == reference[index].desc, !reference[index].desc.contains(foreign))
            << presets[index].desc.toStdString();
        for (const QString& text : {presets[index].name, presets[index].desc})
            EXPECT_FALSE(text.contains(foreign)) << text.toStdString();
        EXPECT_FALSE(presets[index].code.contains(foreignCode)) << presets[index].code.toStdString();
        EXPECT_EQ(presets[index].code, presets[index].code.trimmed());
    }
}

TEST(LinuxScriptPresets, AreZshScripts)
{
    for (const ScriptPreset& preset : linuxScriptPresets()) {
        QProcess shell;
        shell.start(QStringLiteral("/bin/zsh"), {QStringLiteral("-fnc"), preset.code});
        EXPECT_TRUE(waitFor([&] { return shell.state() == QProcess::NotRunning; }));
        EXPECT_EQ(shell.exitCode(), 0)
            << preset.code.toStdString() << shell.readAllStandardError().toStdString();
    }
}

TEST_F(LinuxScripts, ShowTheAddressThatTheWorldSees)
{
    standIn(QStringLiteral("curl"), "echo 203.0.113.7");
    run(address);
    EXPECT_THAT(log(),
        ElementsAre(QStringLiteral("curl -sf --max-time 2 ") + QLatin1String(MakerData::ipEchoAddress),
            QStringLiteral("notify-send Tavrin Network Địa chỉ IP máy: 203.0.113.7")))
        << output.toStdString();
}

TEST_F(LinuxScripts, ShowTheLocalAddressWithoutTheWorld)
{
    useReal({"awk"});
    standIn(QStringLiteral("curl"), "exit 6");
    standIn(QStringLiteral("ip"),
        "echo '2: eth0    inet 192.0.2.4/24 brd 192.0.2.255 scope global eth0'; echo '3: x inet 10.0.0.1/8 "
        "s'");
    run(address);
    EXPECT_EQ(log().value(2), QStringLiteral("notify-send Tavrin Network Địa chỉ IP máy: 192.0.2.4"))
        << output.toStdString();
}

TEST_F(LinuxScripts, ShowTheLocalAddressWithoutItsUsualTools)
{
    useReal({"awk"});
    standIn(QStringLiteral("hostname"), "echo '192.0.2.9 2001:db8::1 '");
    run(address);
    EXPECT_THAT(log(),
        ElementsAre(QStringLiteral("hostname -I"),
            QStringLiteral("notify-send Tavrin Network Địa chỉ IP máy: 192.0.2.9")))
        << output.toStdString();
}

TEST_F(LinuxScripts, SayThatThereIsNoAddress)
{
    useReal({"awk"});
    standIn(QStringLiteral("curl"), "exit 6");
    standIn(QStringLiteral("ip"));
    standIn(QStringLiteral("hostname"), "echo");
    run(address);
    EXPECT_EQ(log().value(3),
        QStringLiteral("notify-send Tavrin Network Không lấy được địa chỉ IP: máy chưa nối mạng"))
        << output.toStdString();
}

TEST_F(LinuxScripts, KeepAwakeForAnHour)
{
    useReal({"zsh"});
    standIn(QStringLiteral("systemd-inhibit"), "shift 3; exec \"$@\"");
    standIn(QStringLiteral("true"));
    standIn(QStringLiteral("xset"));
    standIn(QStringLiteral("sleep"));
    run(awake);
    const auto called = [this](const QString& call) { return log().count(call); };
    // The lock is kept in the background.
    const QString nap = QStringLiteral("sleep 50");
    ASSERT_TRUE(waitFor([&] { return called(nap) == 72; })) << called(nap) << output.toStdString();
    EXPECT_EQ(called(QStringLiteral("xset s reset")), 72);
    EXPECT_EQ(
        called(QStringLiteral("notify-send Tavrin Inhibit Chế độ chống ngủ máy đã kích hoạt trong 1 giờ")),
        1);
    const QString lock
        = QStringLiteral("systemd-inhibit --what=idle:sleep --who=Tavrin --why=Chống ngủ máy 1 giờ ");
    EXPECT_EQ(log().constFirst(), lock + u"true") << "tried first";
    EXPECT_EQ(log().filter(lock + u"zsh -fc ").size(), 1);
    EXPECT_EQ(output, QString());
}

TEST_F(LinuxScripts, KeepAwakeWithGnomesOwnLock)
{
    setVariable("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    standIn(QStringLiteral("systemd-inhibit"));
    standIn(QStringLiteral("gnome-session-inhibit"));
    run(awake);
    ASSERT_TRUE(waitFor([this] { return log().size() == 3; })) << output.toStdString();
    EXPECT_TRUE(log().constFirst().endsWith(u" gnome-session-inhibit --inhibit idle:suspend true"));
    EXPECT_EQ(log().filter(QStringLiteral("--inhibit idle:suspend zsh -fc for")).size(), 1);
}

TEST_F(LinuxScripts, SayThatTheyCannotKeepAwake)
{
    standIn(QStringLiteral("systemd-inhibit"), "exit 1");
    run(awake);
    EXPECT_EQ(
        log().value(1), QStringLiteral("notify-send Tavrin Inhibit Không bật được chế độ chống ngủ máy"))
        << output.toStdString();
    EXPECT_EQ(log().size(), 2);
}

TEST_F(LinuxScripts, FreeMemory)
{
    standIn(QStringLiteral("sync"));
    standIn(QStringLiteral("pkexec"), "echo vm.drop_caches = 3");
    run(memory);
    EXPECT_THAT(log(),
        ElementsAre(QStringLiteral("sync"), QStringLiteral("pkexec /sbin/sysctl vm.drop_caches=3"),
            QStringLiteral("notify-send Tavrin Memory Đã dọn dẹp bộ nhớ đệm RAM thành công")));
    EXPECT_EQ(output, QString());
}

TEST_F(LinuxScripts, TakeACancelledPasswordForNoSuccess)
{
    standIn(QStringLiteral("sync"));
    standIn(QStringLiteral("pkexec"), "exit 126");
    run(memory);
    EXPECT_EQ(log().value(2),
        QStringLiteral("notify-send Tavrin Memory Không dọn dẹp được bộ nhớ đệm RAM: cần quyền quản trị"));
    EXPECT_EQ(log().size(), 3);
}

struct NotesCase {
    const char* program;
    const char* call;
};

class NotesProgram : public LinuxScripts, public testing::WithParamInterface<NotesCase> { };

TEST_P(NotesProgram, OpensANewNote)
{
    standIn(QLatin1String(GetParam().program));
    run(note);
    EXPECT_THAT(log(), ElementsAre(QString::fromUtf8(GetParam().call))) << output.toStdString();
    standIn(QLatin1String(GetParam().program), "exit 1");
    run(note);
    EXPECT_EQ(log().value(2), QStringLiteral("notify-send Tavrin Notes Không tạo được ghi chú mới"));
}

INSTANTIATE_TEST_SUITE_P(Table, NotesProgram,
    testing::Values(NotesCase{"gnote", "gnote --new-note"}, NotesCase{"bijiben", "bijiben --new-note"},
        NotesCase{"xpad", "xpad --new"}));

TEST_F(LinuxScripts, OpenANewTextWhereThereIsNoProgramForNotes)
{
    useReal({"date", "mkdir", "touch"});
    standIn(QStringLiteral("xdg-user-dir"), "echo \"$HOME/Tài liệu của tôi\"");
    standIn(QStringLiteral("xdg-open"));
    run(note);
    const QString documents = home + u"/Tài liệu của tôi";
    const QStringList files = QDir(documents).entryList(QDir::Files);
    ASSERT_EQ(files.size(), 1) << output.toStdString();
    static const QRegularExpression dated(
        QStringLiteral("^Ghi chú \\d{4}-\\d\\d-\\d\\d \\d\\d\\.\\d\\d\\.\\d\\d\\.txt$"));
    EXPECT_TRUE(files[0].contains(dated)) << files[0].toStdString();
    EXPECT_THAT(log(),
        ElementsAre(
            QStringLiteral("xdg-user-dir DOCUMENTS"), QString(u"xdg-open " + documents + u'/' + files[0])));
}

TEST_F(LinuxScripts, OpenANewTextAtHomeWithoutFoldersOfTheUsers)
{
    useReal({"date", "mkdir", "touch"});
    standIn(QStringLiteral("xdg-open"), "exit 4");
    run(note);
    EXPECT_EQ(QDir(home).entryList(QDir::Files).size(), 1) << output.toStdString();
    EXPECT_EQ(log().value(1), QStringLiteral("notify-send Tavrin Notes Không tạo được ghi chú mới"))
        << "nobody sees a note that did not open";
}

TEST_F(LinuxScripts, SayThatNoNoteCouldBeMade)
{
    useReal({"date", "mkdir", "touch"});
    standIn(QStringLiteral("xdg-user-dir"), "echo /proc/nowhere");
    standIn(QStringLiteral("xdg-open"));
    run(note);
    EXPECT_EQ(log().value(1), QStringLiteral("notify-send Tavrin Notes Không tạo được ghi chú mới"));
    EXPECT_EQ(log().size(), 2);
}

constexpr auto flushed = "notify-send Tavrin Network Đã xóa DNS Cache thành công";

TEST_F(LinuxScripts, FlushTheNamesOfTheUsualService)
{
    standIn(QStringLiteral("resolvectl"));
    run(names);
    EXPECT_THAT(log(), ElementsAre(QStringLiteral("resolvectl flush-caches"), QString::fromUtf8(flushed)));
    EXPECT_EQ(output, QString());
}

TEST_F(LinuxScripts, FlushTheNamesOfOtherServices)
{
    standIn(QStringLiteral("resolvectl"), "exit 1");
    standIn(QStringLiteral("pgrep"), "[ \"$2\" = dnsmasq ]");
    standIn(QStringLiteral("pkexec"));
    run(names);
    EXPECT_THAT(log(),
        ElementsAre(QStringLiteral("resolvectl flush-caches"), QStringLiteral("pgrep -x nscd"),
            QStringLiteral("pgrep -x dnsmasq"), QStringLiteral("pkexec pkill -HUP -x dnsmasq"),
            QString::fromUtf8(flushed)));
    standIn(QStringLiteral("pgrep"), "[ \"$2\" = nscd ]");
    run(names);
    EXPECT_EQ(log().value(7), QStringLiteral("pkexec /usr/sbin/nscd --invalidate=hosts"));
    EXPECT_EQ(log().value(8), QString::fromUtf8(flushed));
}

TEST_F(LinuxScripts, SayThatNoNamesWereFlushed)
{
    const QString failed = QStringLiteral(
        "notify-send Tavrin Network Không xóa được DNS Cache: không có bộ đệm nào hoặc chưa được phép");
    standIn(QStringLiteral("pgrep"), "exit 1");
    standIn(QStringLiteral("pkexec"));
    run(names);
    EXPECT_EQ(log().constLast(), failed);
    standIn(QStringLiteral("pgrep"));
    standIn(QStringLiteral("pkexec"), "exit 126");
    run(names);
    EXPECT_EQ(log().constLast(), failed) << "the password was not given";
    EXPECT_FALSE(log().contains(QString::fromUtf8(flushed)));
}

struct PanelCase {
    const char* desktop;
    const char* session;
    const char* program;
    const char* call;
};

class PanelOfADesktop : public LinuxScripts, public testing::WithParamInterface<PanelCase> { };

TEST_P(PanelOfADesktop, StartsAnew)
{
    setVariable("XDG_CURRENT_DESKTOP", GetParam().desktop);
    setVariable("XDG_SESSION_TYPE", GetParam().session);
    useReal({"setsid"});
    standIn(QLatin1String(GetParam().program));
    run(panel);
    ASSERT_TRUE(waitFor([this] { return !log().isEmpty(); })) << output.toStdString();
    EXPECT_THAT(log(), ElementsAre(QString::fromUtf8(GetParam().call))) << output.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Table, PanelOfADesktop,
    testing::Values(PanelCase{"GNOME", "x11", "gnome-shell", "gnome-shell --replace"},
        PanelCase{"KDE", "wayland", "systemctl", "systemctl --user restart plasma-plasmashell"},
        PanelCase{"KDE", "x11", "plasmashell", "plasmashell --replace"},
        PanelCase{"XFCE", "x11", "xfce4-panel", "xfce4-panel --restart"},
        PanelCase{"MATE", "x11", "mate-panel", "mate-panel --replace"},
        PanelCase{"X-Cinnamon", "x11", "cinnamon", "cinnamon --replace"},
        PanelCase{"", "x11", "pkill", "pkill -USR1 -x tint2"},
        PanelCase{"sway", "wayland", "polybar-msg", "polybar-msg cmd restart"}));

TEST_F(LinuxScripts, RestartTheBarThatRuns)
{
    standIn(QStringLiteral("pkill"), "[ \"$3\" = waybar ]");
    run(panel);
    EXPECT_THAT(
        log(), ElementsAre(QStringLiteral("pkill -USR1 -x tint2"), QStringLiteral("pkill -USR2 -x waybar")));
}

TEST_F(LinuxScripts, SayThatThePanelCannotStartAnew)
{
    const QString failed = QStringLiteral(
        "notify-send Tavrin Panel Không khởi động lại được thanh panel của phiên làm việc này");
    run(panel);
    EXPECT_EQ(log().value(0), failed) << "no bar";
    setVariable("XDG_CURRENT_DESKTOP", "GNOME");
    setVariable("XDG_SESSION_TYPE", "wayland");
    standIn(QStringLiteral("gnome-shell"));
    run(panel);
    EXPECT_THAT(log(), ElementsAre(failed, failed)) << "the shell is the session itself";
    setVariable("XDG_CURRENT_DESKTOP", "MATE");
    run(panel);
    EXPECT_THAT(log(), ElementsAre(failed, failed, failed)) << "not installed";
}

struct FolderCase {
    /// What the file manager says, ROOT for the test's own folder.
    const char* answer;
    /// Below that folder; null for home.
    const char* folder;
};

class TerminalAtFolder : public LinuxScripts, public testing::WithParamInterface<FolderCase> { };

TEST_P(TerminalAtFolder, Opens)
{
    useReal({"setsid"});
    standIn(QStringLiteral("gdbus"),
        "cat <<'ANSWER'\n" + QByteArray(GetParam().answer).replace("ROOT", folder.path().toUtf8())
            + "\nANSWER");
    useReal({"cat"});
    standIn(QStringLiteral("xterm"), "printf 'in %s\\n' \"$(pwd)\" >> '" + logFile().toUtf8() + "'");
    QString place = home;
    if (GetParam().folder) {
        place = folder.path(QString::fromUtf8(GetParam().folder));
        ASSERT_TRUE(QDir().mkpath(place));
    }
    run(terminal);
    ASSERT_TRUE(waitFor([this] { return log().size() >= 3; })) << output.toStdString();
    EXPECT_THAT(log(),
        ElementsAre(QStringLiteral("gdbus call --session --timeout 3 --dest org.freedesktop.FileManager1 "
                                   "--object-path /org/freedesktop/FileManager1 --method "
                                   "org.freedesktop.DBus.Properties.Get org.freedesktop.FileManager1 "
                                   "OpenWindowsWithLocations"),
            QStringLiteral("xterm"), QString(u"in " + place)));
    EXPECT_EQ(output, QString());
}

INSTANTIATE_TEST_SUITE_P(Table, TerminalAtFolder,
    testing::Values(FolderCase{"(<{'/org/gnome/Nautilus/window/1': ['file://ROOT/plain']}>,)", "plain"},
        FolderCase{"(<{'/w/1': ['file://ROOT/T%C3%A0i%20li%E1%BB%87u', 'file:///usr']}>,)", "Tài liệu"},
        FolderCase{"(<{'/w/1': [\"file://ROOT/it's%20%22%24(touch%20x)%22%20%60y%60%5Cn\"]}>,)",
            "it's \"$(touch x)\" `y`\\n"},
        FolderCase{"(<{'/w/1': ['file://ROOT/100%25ab']}>,)", "100%ab"},
        FolderCase{"(<{'/w/1': ['sftp://host/away'], '/w/2': ['file://ROOT/near']}>,)", "near"},
        FolderCase{"(<{'/w/1': ['file://ROOT/gone']}>,)", nullptr},
        FolderCase{"(<{'/w/1': ['trash:///']}>,)", nullptr}, FolderCase{"(<@a{sas} {}>,)", nullptr},
        FolderCase{"", nullptr}));

TEST_F(LinuxScripts, OpenTheTerminalThatTheUserWants)
{
    useReal({"setsid"});
    standIn(QStringLiteral("gdbus"), "exit 1");
    standIn(QStringLiteral("xterm"));
    standIn(QStringLiteral("of my own"));
    setVariable("TERMINAL", folder.path(QStringLiteral("bin/of my own")).toLocal8Bit());
    run(terminal);
    ASSERT_TRUE(waitFor([this] { return log().size() >= 2; })) << output.toStdString();
    EXPECT_EQ(log().value(1), QStringLiteral("of my own"));
    setVariable("TERMINAL", "missing");
    run(terminal);
    ASSERT_TRUE(waitFor([this] { return log().size() >= 4; })) << output.toStdString();
    EXPECT_EQ(log().value(3), QStringLiteral("xterm"));
}

TEST_F(LinuxScripts, SayThatThereIsNoTerminal)
{
    run(terminal);
    EXPECT_THAT(log(),
        ElementsAre(QStringLiteral("notify-send Tavrin Terminal Không tìm thấy chương trình terminal nào")))
        << output.toStdString();
}

} // namespace
} // namespace Tavrin
