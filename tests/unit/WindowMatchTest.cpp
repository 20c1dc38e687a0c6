#include "Platform/Linux/Applications/WindowMatch.h"

#include "Platform/Linux/Applications/XcbSession.h"
#include "Platform/Linux/Process/ChildProcess.h"
#include "support/Wait.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/wait.h>

namespace Tavrin {
namespace {

DesktopEntry makeEntry(const QString& id, const QString& windowClass, const QStringList& commandLine)
{
    DesktopEntry entry;
    entry.id = id;
    entry.windowClass = windowClass;
    entry.commandLine = commandLine;
    return entry;
}

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

ProcessDescription noProcess(pid_t)
{
    return {};
}

struct ClassCase {
    const char* id;
    const char* declaredClass;
    const char* command;
    const char* instance;
    const char* className;
    bool matches;
};

class WindowClass : public testing::TestWithParam<ClassCase> { };

TEST_P(WindowClass, TellsTheApplication)
{
    const ClassCase& each = GetParam();
    const ApplicationTarget target{
        makeEntry(QLatin1StringView(each.id), QLatin1StringView(each.declaredClass), words(each.command)),
        {}};
    const QList<WindowDescription> windows{
        {7, QString::fromLatin1(each.instance), QString::fromLatin1(each.className), 0}};
    EXPECT_EQ(findWindow(identityOf(target, {}), windows, noProcess), each.matches ? 7U : 0U);
}

INSTANTIATE_TEST_SUITE_P(Table, WindowClass,
    testing::Values(ClassCase{"code", "Code", "/usr/share/code/code", "code", "Code", true},
        ClassCase{"a", "TermA", "xterm -class TermA", "terma", "TermA", true},
        ClassCase{"b", "TermB", "xterm -class TermB", "terma", "TermA", false},
        ClassCase{"a", "crx_x", "chrome --app=x", "crx_x", "Google-chrome", true},
        ClassCase{"google-chrome", "", "/opt/google-chrome-stable", "google-chrome", "Google-chrome", true},
        ClassCase{"org.gnome.Nautilus", "", "nautilus --new-window", "org.gnome.Nautilus", "", true},
        ClassCase{"org.gnome.gedit", "", "/usr/bin/gedit-launcher", "gedit", "Gedit", true},
        ClassCase{"editor", "", "/usr/bin/mousepad", "mousepad", "Mousepad", true},
        // With further arguments one program may be many applications.
        ClassCase{"calc", "", "office --calc", "office", "Office", false},
        ClassCase{"snap_it", "", "env A=b C=d /snap/bin/it", "it", "It", true},
        ClassCase{"firefox_firefox", "",
            "env BAMF_DESKTOP_FILE_HINT=/x/firefox_firefox.desktop /snap/bin/firefox", "firefox_firefox",
            "firefox_firefox", true},
        ClassCase{"firefox_firefox", "",
            "env BAMF_DESKTOP_FILE_HINT=/x/firefox_firefox.desktop /snap/bin/firefox", "Navigator", "firefox",
            true},
        ClassCase{"org.gnome.gedit", "", "/usr/bin/flatpak run --arch=x86_64 org.gnome.gedit @@u %u @@",
            "org.gnome.gedit", "Org.gnome.gedit", true},
        ClassCase{"org.x.Tool", "",
            "/usr/bin/flatpak run --branch=stable --command=/app/bin/the-tool --file-forwarding org.x.App "
            "@@u @@",
            "the-tool", "The-tool", true},
        ClassCase{"org.x.Tool", "", "/usr/bin/flatpak run --command=the-tool org.x.App --other", "the-tool",
            "The-tool", false},
        ClassCase{
            "org.x.Tool", "", "/usr/bin/flatpak run --command=a org.x.App", "flatpak", "Flatpak", false},
        ClassCase{"org.x.Tool", "", "/usr/bin/flatpak run --command=a", "a", "A", false},
        ClassCase{"x", "", "xterm", "", "", false}, ClassCase{"", "", "", "", "", false}));

TEST(WindowChoice, TakesTheBestMatchThenTheLastUsed)
{
    const ApplicationTarget target{
        makeEntry(QStringLiteral("app"), QStringLiteral("Declared"), words("program")), {}};
    const auto identity = identityOf(target, {});
    const QList<WindowDescription> windows{{1, QStringLiteral("other"), QStringLiteral("Other"), 0},
        {2, QStringLiteral("program"), QStringLiteral("Program"), 0},
        {3, QStringLiteral("x"), QStringLiteral("declared"), 0},
        {4, QStringLiteral("x"), QStringLiteral("Declared"), 0}};
    EXPECT_EQ(findWindow(identity, windows, noProcess), 3U);
    EXPECT_EQ(findWindow(identity, windows.first(2), noProcess), 2U);
    EXPECT_EQ(findWindow(identity, windows.first(1), noProcess), 0U);
    EXPECT_EQ(findWindow(identity, {}, noProcess), 0U);
}

TEST(WindowChoice, AsksForTheProcessOnlyWhereNoClassIsDeclared)
{
    const auto shell = [](pid_t pid) {
        ProcessDescription process;
        process.executable = QFileInfo(QStringLiteral("/bin/sh")).canonicalFilePath();
        return pid == 20 ? process : ProcessDescription();
    };
    const QList<WindowDescription> windows{{1, QStringLiteral("x"), QStringLiteral("X"), 0},
        {2, QStringLiteral("y"), QStringLiteral("Y"), 10}, {3, QStringLiteral("z"), QStringLiteral("Z"), 20}};
    const ApplicationTarget plain{makeEntry(QStringLiteral("app"), {}, words("sh")), {}};
    EXPECT_EQ(findWindow(identityOf(plain, {}), windows, shell), 3U);
    const ApplicationTarget declared{
        makeEntry(QStringLiteral("app"), QStringLiteral("App"), words("sh")), {}};
    EXPECT_EQ(findWindow(identityOf(declared, {}), windows, shell), 0U);
}

TEST(WindowChoice, KnowsWhatWasLaunchedByItsStartupIdWhateverItsClass)
{
    const ApplicationTarget target{
        makeEntry(QStringLiteral("app"), QStringLiteral("Declared"), words("program")), {}};
    const QList<WindowDescription> windows{{1, QStringLiteral("x"), QStringLiteral("X"), 0, "a_TIME1"},
        {2, QStringLiteral("y"), QStringLiteral("Y"), 0, "b_TIME2"},
        {3, QStringLiteral("z"), QStringLiteral("Z"), 0, {}}};
    EXPECT_EQ(findWindow(identityOf(target, {0, "b_TIME2"}), windows, noProcess), 2U);
    EXPECT_EQ(findWindow(identityOf(target, {0, "c_TIME3"}), windows, noProcess), 0U);
    EXPECT_EQ(findWindow(identityOf(target, {}), windows, noProcess), 0U);
}

TEST(ProcessMatch, NeverTakesANumberFromInsideASandbox)
{
    const auto identity = identityOf(
        {makeEntry(QStringLiteral("org.x.App"), {}, words("/usr/bin/flatpak run org.x.App")), {}}, {40, {}});
    ProcessDescription process;
    process.commandLine = words("/usr/bin/flatpak run org.x.App");
    process.executable = QStringLiteral("/usr/bin/flatpak");
    process.session = 40;
    EXPECT_FALSE(isProcessOf(identity, process));
}

TEST(ProcessMatch, ComparesTheWholeCommandWhereThereAreArguments)
{
    const auto identity
        = identityOf({makeEntry(QStringLiteral("mail"), {}, words("/usr/bin/suite --mail")), {}}, {});
    ProcessDescription process;
    process.executable = QStringLiteral("/usr/bin/suite");
    const auto runs = [&](const char* command) {
        process.commandLine = words(command);
        return isProcessOf(identity, process);
    };
    EXPECT_TRUE(runs("suite --mail"));
    EXPECT_TRUE(runs("/opt/bin/suite --mail letter.eml"));
    EXPECT_FALSE(runs("suite --calendar"));
    EXPECT_FALSE(runs("suite"));
    EXPECT_FALSE(runs("other --mail"));
}

TEST(ProcessMatch, KnowsExecutablesScriptsAndAppImages)
{
    const QTemporaryDir folder;
    const QString program = QFileInfo(folder.path()).canonicalFilePath() + u"/Tool.AppImage";
    QFile file(program);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const auto identity = identityOf({std::nullopt, program}, {400, {}});

    ProcessDescription process;
    EXPECT_FALSE(isProcessOf(identity, process));
    process.executable = program;
    EXPECT_TRUE(isProcessOf(identity, process));
    process = {};
    process.appImage = program;
    EXPECT_TRUE(isProcessOf(identity, process));
    process = {};
    process.commandLine = QStringList{QStringLiteral("/bin/sh"), program, QStringLiteral("x")};
    EXPECT_TRUE(isProcessOf(identity, process));
    process.commandLine = QStringList{program + u"2"};
    EXPECT_FALSE(isProcessOf(identity, process));
    process = {};
    process.session = 400;
    EXPECT_TRUE(isProcessOf(identity, process));
    process.session = 401;
    EXPECT_FALSE(isProcessOf(identity, process));
}

TEST(ProcessMatch, KnowsATerminalsProgramByTheSessionOnly)
{
    DesktopEntry entry = makeEntry(QStringLiteral("top"), {}, words("top"));
    entry.terminal = true;
    ProcessDescription process;
    process.session = 12;
    EXPECT_TRUE(isProcessOf(identityOf({entry, {}}, {12, {}}), process));
    EXPECT_FALSE(isProcessOf(identityOf({entry, {}}, {}), process));
    entry.terminal = false;
    EXPECT_FALSE(isProcessOf(identityOf({entry, {}}, {12, {}}), process));
}

TEST(WindowList, IsEmptyWithoutAServer)
{
    XcbSession session;
    EXPECT_FALSE(session.isConnected());
    EXPECT_TRUE(session.windowsFromTop().isEmpty());
    EXPECT_EQ(session.serverTime(), 0U);
    session.activate(1);
    session.waitForChange(std::chrono::milliseconds(1));
    EXPECT_EQ(session.activeWindow(), 0U);
    EXPECT_EQ(session.lastUserTime(1), std::nullopt);
}

TEST(ProcessReading, SeesARunningChild)
{
    ChildRequest request;
    request.arguments = {"sleep", "1000"};
    request.environmentChanges = {{"APPIMAGE", QByteArray("/home/ng/Công cụ.AppImage")}};
    const SpawnResult child = spawn(request);
    ASSERT_TRUE(child);
    // A child that has just been started is for an instant still without its own command line.
    ProcessDescription process;
    EXPECT_TRUE(Testing::waitFor([&] {
        process = describeProcess(child.pid);
        return process.commandLine == words("sleep 1000");
    }));
    kill(child.pid, SIGKILL);
    waitpid(child.pid, nullptr, 0);
    EXPECT_EQ(QFileInfo(process.executable).fileName(), QStringLiteral("sleep"));
    EXPECT_EQ(process.appImage, QStringLiteral("/home/ng/Công cụ.AppImage"));
    EXPECT_EQ(process.session, child.pid);

    const ProcessDescription gone = describeProcess(child.pid);
    EXPECT_TRUE(gone.executable.isEmpty() && gone.appImage.isEmpty());
    EXPECT_EQ(gone.session, 0);
}

} // namespace
} // namespace Tavrin
