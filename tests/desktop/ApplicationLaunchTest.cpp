// What programs are started with, and requests that fail or hang.
#include "Platform/Linux/Applications/XcbSession.h"
#include "support/ApplicationsFixture.h"
#include "support/CapturedOutput.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::homePath;
using Testing::readFile;
using Testing::waitFor;
using Testing::writeEntry;
using Testing::writeFile;
using Testing::writeScript;
using Testing::writeWindowEntry;

/// A script that writes what it sees of itself to a file, whole, and ends.
QString writeReporter(const QString& name)
{
    return writeScript(homePath(name),
        "{ echo \"id=$DESKTOP_STARTUP_ID\"; echo \"token=$XDG_ACTIVATION_TOKEN\"\n"
        "for word in \"$@\"; do echo \"argument=$word\"; done\n"
        "grep -E '^Sig(Blk|Ign):' /proc/self/status\n"
        "echo \"folder=$PWD\"\n"
        "echo \"descriptors=$(ls /proc/self/fd | tr '\\n' ' ')\"\n"
        "echo \"standard=$(readlink /proc/$$/fd/0 /proc/$$/fd/2 | tr '\\n' ' ')\"\n"
        "echo \"session=$(cut -d' ' -f1,6 /proc/$$/stat)\"; } > \"$HOME/report.part\"\n"
        "mv \"$HOME/report.part\" \"$HOME/report\"\n");
}

class ApplicationLaunch : public Testing::ApplicationsFixture {
protected:
    void SetUp() override { QFile::remove(homePath(QStringLiteral("report"))); }

    /// The lines of the report that begin with "key=".
    QByteArrayList report(const QByteArray& key)
    {
        const QString path = homePath(QStringLiteral("report"));
        EXPECT_TRUE(waitFor([&] { return QFile::exists(path); }));
        QByteArrayList result;
        for (const QByteArray& line : readFile(path).split('\n')) {
            if (line.startsWith(key))
                result.append(line.sliced(key.size()));
        }
        return result;
    }

    void expectCleanSurroundings()
    {
        // The fourth descriptor is the one with which ls reads the folder. The C library keeps
        // signals 32 and 33 to itself and ignores them in what it spawns.
        EXPECT_EQ(report("descriptors=").value(0), "0 1 2 3 ");
        EXPECT_EQ(report("standard=").value(0), "/dev/null /dev/null ");
        EXPECT_EQ(report("SigBlk:\t").value(0).toULongLong(nullptr, 16), 0U);
        EXPECT_EQ(report("SigIgn:\t").value(0).toULongLong(nullptr, 16) & ~0x180000000ULL, 0U);
        const QByteArrayList session = report("session=").value(0).split(' ');
        EXPECT_EQ(session.value(0), session.value(1));
    }
};

TEST_F(ApplicationLaunch, GivesAnEntrysProgramItsWordsAndCleanSurroundings)
{
    const QByteArray program = QFile::encodeName(writeReporter(QStringLiteral("báo cáo")));
    const QString path = writeEntry(QStringLiteral("words"),
        "\"" + program + "\" %F \"hai từ\" --rate=100%% %c %k", "StartupNotify=true\n");
    EXPECT_EQ(open(path, {4321, {}}), true);
    EXPECT_THAT(
        report("argument="), testing::ElementsAre("hai từ", "--rate=100%", "words", QFile::encodeName(path)));
    EXPECT_THAT(report("id=").value(0).toStdString(), testing::MatchesRegex("tavrin-[0-9]+-[0-9]+_TIME4321"));
    EXPECT_EQ(report("token="), report("id="));
    expectCleanSurroundings();
}

TEST_F(ApplicationLaunch, FillsEveryFieldCodeAndEntersThePath)
{
    const QByteArray program = QFile::encodeName(writeReporter(QStringLiteral("codes")));
    QDir().mkpath(homePath(QStringLiteral("nơi làm việc")));
    const QString path = writeEntry(QStringLiteral("codes"),
        program + R"( %f %u %F %U %i "a \\"b\\" \\$HOME" c\\ d %%f %c %k)",
        "Icon=the-icon\nPath=" + QFile::encodeName(homePath(QStringLiteral("nơi làm việc"))) + '\n');
    EXPECT_EQ(open(path), true);
    EXPECT_THAT(report("argument="),
        testing::ElementsAre(
            "--icon", "the-icon", "a \"b\" $HOME", "c d", "%f", "codes", QFile::encodeName(path)));
    EXPECT_EQ(report("folder=").value(0), QFile::encodeName(homePath(QStringLiteral("nơi làm việc"))));
}

TEST_F(ApplicationLaunch, GivesTheSameWordsToAProgramInATerminal)
{
    // A terminal that nobody knows: it is asked as Debian's policy says.
    const QString terminal
        = writeScript(homePath(QStringLiteral("own terminal")), "test \"$1\" = -e && shift && exec \"$@\"\n");
    qputenv("TERMINAL", QFile::encodeName(terminal));
    const QByteArray program = QFile::encodeName(writeReporter(QStringLiteral("inner")));
    const QString path
        = writeEntry(QStringLiteral("100%inner"), program + " %f \"hai từ\" %% %c %k", "Terminal=true\n");
    EXPECT_EQ(open(path, {77, {}}), true);
    EXPECT_THAT(
        report("argument="), testing::ElementsAre("hai từ", "%", "100%inner", QFile::encodeName(path)));
    EXPECT_TRUE(report("id=").value(0).endsWith("_TIME77"));
    qunsetenv("TERMINAL");
}

TEST_F(ApplicationLaunch, SaysWhatIsMissingWhereThereIsNoTerminal)
{
    const QString program = writeReporter(QStringLiteral("inner"));
    const QString path
        = writeEntry(QStringLiteral("inner"), QFile::encodeName(program), "Name[vi]=Trong\nTerminal=true\n");
    usePrivatePath(true);
    Testing::CapturedOutput output;
    // Entries that name a terminal by its path would count, too; this system's name programs.
    EXPECT_EQ(open(path), false);
    EXPECT_EQ(
        output.lines(), QStringList{QStringLiteral("Không mở được inner: chưa cài trình dòng lệnh nào")});
}

TEST_F(ApplicationLaunch, GivesAnExecutableCleanSurroundings)
{
    EXPECT_EQ(open(writeReporter(QStringLiteral("chạy")), {99, {}}), true);
    EXPECT_TRUE(report("argument=").isEmpty());
    EXPECT_TRUE(report("id=").value(0).endsWith("_TIME99"));
    EXPECT_EQ(report("token="), report("id="));
    expectCleanSurroundings();
}

TEST_F(ApplicationLaunch, AsksForTheTimeWhereThePressHasNone)
{
    const std::uint32_t before = XcbSession().serverTime();
    EXPECT_EQ(open(writeReporter(QStringLiteral("chạy"))), true);
    const QByteArray id = report("id=").value(0);
    const std::uint32_t time = id.sliced(id.indexOf("_TIME") + 5).toUInt();
    EXPECT_GE(time, before);
    EXPECT_LE(time, XcbSession().serverTime());
    EXPECT_GT(before, 0U);
}

TEST_F(ApplicationLaunch, HandsTheRequestsOwnTokenOn)
{
    EXPECT_EQ(open(writeReporter(QStringLiteral("chạy")), {99, QStringLiteral("panel-1_TIME77")}), true);
    EXPECT_EQ(report("id=").value(0), "panel-1_TIME77");
}

TEST_F(ApplicationLaunch, FindsTheCounterpartOfAnotherDesktopsApplication)
{
    const QString chrome = writeEntry(
        QStringLiteral("google-chrome"), QFile::encodeName(writeReporter(QStringLiteral("chrome"))));
    EXPECT_EQ(locate(QStringLiteral("com.google.Chrome")), chrome);
    EXPECT_EQ(locate(QStringLiteral("com.example.nothing-like-it")), std::nullopt);
    EXPECT_EQ(open(QStringLiteral("/Applications/Google Chrome.app")), true);
    EXPECT_EQ(report("session=").size(), 1);
}

TEST_F(ApplicationLaunch, SaysSoWhenThereIsNothingToOpen)
{
    EXPECT_EQ(open(QStringLiteral("/nonexistent/program")), false);
    EXPECT_EQ(open(QStringLiteral("/Applications/Unknown Thing.app")), false);
    EXPECT_EQ(open(QStringLiteral("/etc/passwd")), false);
    EXPECT_EQ(open(QDir::homePath()), false);
    EXPECT_EQ(open(writeEntry(QStringLiteral("broken"), "no-such-program-anywhere")), false);
    EXPECT_EQ(
        open(writeEntry(QStringLiteral("absent"), "true", "TryExec=no-such-program-anywhere\n")), false);
    EXPECT_EQ(open(writeEntry(QStringLiteral("nowhere"), "true", "Path=/no/such/folder\n")), false);
    const QString broken = writeEntry(QStringLiteral("empty"), "true");
    for (const char* contents :
        {"", "[Desktop Entry]\nType=Application\nName=No command\n", "[Desktop Entry\nType=Application\n",
            "[Desktop Entry]\nType=Application\nName=Open quote\nExec=true \"\n", "Exec=true\n"}) {
        writeFile(broken, contents);
        EXPECT_EQ(open(broken), false) << contents;
    }
    EXPECT_EQ(open(writeEntry(QStringLiteral("deleted"), "true", "Hidden=true\n")), false);
    const QString script = writeScript(homePath(QStringLiteral("lost")), "");
    writeFile(script, "#!/no/such/interpreter\n");
    EXPECT_EQ(open(script), false);
    // A failure is not a start: it is tried again at once.
    EXPECT_EQ(open(script), false);
    EXPECT_TRUE(Testing::ownChildren().isEmpty());
}

/// An application that the session bus starts, played by this test.
class Service : public QDBusVirtualObject {
public:
    explicit Service(const QString& name, bool answers = true)
        : m_name(name)
        , m_answers(answers)
    {
        auto bus = QDBusConnection::sessionBus();
        const QString path = u'/' + QString(name).replace(u'.', u'/');
        EXPECT_TRUE(bus.registerVirtualObject(path, this));
        EXPECT_TRUE(bus.registerService(name));
    }
    ~Service() override { QDBusConnection::sessionBus().unregisterService(m_name); }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        calls.append(message);
        if (m_answers)
            connection.send(message.createReply());
        return true;
    }
    void answer()
    {
        for (const QDBusMessage& call : calls)
            QDBusConnection::sessionBus().send(call.createReply());
    }

    QList<QDBusMessage> calls;

private:
    QString m_name;
    bool m_answers;
};

QString writeServiceEntry(const QString& name)
{
    return writeEntry(name, "false", "DBusActivatable=true\n");
}

TEST_F(ApplicationLaunch, StartsAServiceOfTheBusOnceWithThePressTime)
{
    const QString name = QStringLiteral("org.tavrin.test.Service");
    Service service(name);
    const QString path = writeServiceEntry(name);
    EXPECT_EQ(open(path, {1234, {}}), true);
    EXPECT_EQ(open(path, {1235, {}}), true);
    EXPECT_EQ(service.calls.size(), 1);
    ASSERT_FALSE(service.calls.isEmpty());
    EXPECT_EQ(service.calls[0].member(), QStringLiteral("Activate"));
    const auto data = qdbus_cast<QVariantMap>(service.calls[0].arguments().value(0));
    EXPECT_TRUE(data.value(QStringLiteral("desktop-startup-id")).toString().endsWith(u"_TIME1234"));
    EXPECT_EQ(
        data.value(QStringLiteral("activation-token")), data.value(QStringLiteral("desktop-startup-id")));
    EXPECT_TRUE(Testing::ownChildren().isEmpty());
}

TEST_F(ApplicationLaunch, SaysSoWhenTheBusKnowsNoSuchService)
{
    EXPECT_EQ(open(writeServiceEntry(QStringLiteral("org.tavrin.test.Nobody"))), false);
}

TEST_F(ApplicationLaunch, IsNotDelayedByHungLaunchers)
{
    QList<std::shared_ptr<Service>> hung;
    int answered = 0;
    for (int number = 0; number < 5; ++number) {
        const QString name = QStringLiteral("org.tavrin.test.Hung%1").arg(number);
        hung.append(std::make_shared<Service>(name, false));
        workspace.openApplication(
            writeServiceEntry(name), {}, [&](bool opened) { answered += opened ? 1 : 0; });
    }
    ASSERT_TRUE(waitFor([&] {
        return std::all_of(
            hung.begin(), hung.end(), [](const auto& service) { return service->calls.size() == 1; });
    }));
    EXPECT_NE(openWindow(QStringLiteral("First")), XCB_WINDOW_NONE);
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First"))), true);
    EXPECT_EQ(answered, 0);
    for (const auto& service : hung)
        service->answer();
    EXPECT_TRUE(waitFor([&] { return answered == 5; }));
}

TEST_F(ApplicationLaunch, LosesPatienceWithAServiceThatNeverAnswers)
{
    const QString name = QStringLiteral("org.tavrin.test.Silent");
    const Service silent(name, false);
    EXPECT_EQ(open(writeServiceEntry(name)), true);
}

TEST_F(ApplicationLaunch, LeavesHungRequestsBehindAtTheEnd)
{
    const auto threads = [] { return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs).size(); };
    const QString name = QStringLiteral("org.tavrin.test.Late");
    Service late(name, false);
    auto ending = std::make_unique<LinuxWorkspace>(children);
    bool completed = false;
    ending->openApplication(writeServiceEntry(name), {}, [&](bool) { completed = true; });
    ASSERT_TRUE(waitFor([&] { return late.calls.size() == 1; }));
    const auto before = threads();
    QElapsedTimer timer;
    timer.start();
    ending.reset();
    // The launcher waits for five seconds; the end does not.
    EXPECT_LT(timer.elapsed(), 3000);
    late.answer();
    EXPECT_TRUE(waitFor([&] { return threads() < before; }));
    drainEvents();
    EXPECT_FALSE(completed);
}

TEST(UnusedWorkspace, HasNoThreadAndNoDescriptor)
{
    const auto count = [](const char* folder) {
        return QDir(QLatin1StringView(folder)).entryList(QDir::Files | QDir::Dirs | QDir::System).size();
    };
    const auto threads = count("/proc/self/task");
    const auto descriptors = count("/proc/self/fd");
    ChildWatcher children;
    const LinuxWorkspace workspace(children);
    drainEvents();
    EXPECT_EQ(count("/proc/self/task"), threads);
    EXPECT_EQ(count("/proc/self/fd"), descriptors);
}

} // namespace
} // namespace Tavrin
