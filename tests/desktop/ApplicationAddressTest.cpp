// Addresses, and the generic openers that stand in where the workspace finds nothing.
#include "support/ApplicationsFixture.h"

#include <QUrl>

namespace Tavrin {
namespace {

using Testing::homePath;
using Testing::readFile;
using Testing::waitFor;
using Testing::writeEntry;
using Testing::writeFile;
using Testing::writeScript;

class ApplicationAddress : public Testing::ApplicationsFixture {
protected:
    /// Written once, before GIO reads it: it takes note of later changes in its own time.
    static void SetUpTestSuite()
    {
        writeFile(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/mimeapps.list",
            "[Default Applications]\nx-scheme-handler/https=fake-browser.desktop\n"
            "x-scheme-handler/http=fake-browser.desktop\n");
        writeEntry(QStringLiteral("fake-browser"),
            QFile::encodeName(writeRecorder(homePath(QStringLiteral("browser")))) + " --open %u",
            "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
    }

    void SetUp() override { QFile::remove(homePath(QStringLiteral("record"))); }

    /// A program that writes down how it was called, whole.
    static QString writeRecorder(const QString& path)
    {
        return writeScript(path,
            "{ echo \"${0##*/}\"; for word in \"$@\"; do echo \"$word\"; done; echo \"$DESKTOP_STARTUP_ID\"\n"
            "} > \"$HOME/record.part\"\n/bin/mv \"$HOME/record.part\" \"$HOME/record\"\n");
    }

    /// The program's name, its arguments, its startup id.
    QStringList record()
    {
        const QString path = homePath(QStringLiteral("record"));
        EXPECT_TRUE(waitFor([&] { return QFile::exists(path); }));
        return QString::fromUtf8(readFile(path)).trimmed().split(u'\n');
    }

    QStringList recordedCommand() { return record().sliced(0, std::max<qsizetype>(0, record().size() - 1)); }
};

TEST_F(ApplicationAddress, GoesToTheDefaultBrowserPercentEncoded)
{
    workspace.openURL(
        QUrl(QStringLiteral("https://vi.wikipedia.org/wiki/Tiếng Việt?q=à&b=1#đầu")), {5555, {}});
    const QStringList words = record();
    ASSERT_EQ(words.size(), 4);
    EXPECT_EQ(words[0], QStringLiteral("browser"));
    EXPECT_EQ(words[1], QStringLiteral("--open"));
    EXPECT_EQ(words[2],
        QStringLiteral(
            "https://vi.wikipedia.org/wiki/Ti%E1%BA%BFng%20Vi%E1%BB%87t?q=%C3%A0&b=1#%C4%91%E1%BA%A7u"));
    EXPECT_TRUE(words[3].endsWith(u"_TIME5555"));
}

TEST_F(ApplicationAddress, GoesToXdgOpenWhereNothingHandlesItsScheme)
{
    writeRecorder(usePrivatePath() + u"/xdg-open");
    workspace.openURL(QUrl(QStringLiteral("tavrin-unknown://x/y")), {});
    EXPECT_EQ(
        recordedCommand(), (QStringList{QStringLiteral("xdg-open"), QStringLiteral("tavrin-unknown://x/y")}));
}

TEST_F(ApplicationAddress, IsReportedWhereNothingCanOpenIt)
{
    usePrivatePath(true);
    testing::internal::CaptureStdout();
    workspace.openURL(QUrl(QStringLiteral("tavrin-unknown://x")), {});
    EXPECT_TRUE(waitFor([] { return readFile(QStringLiteral("/proc/self/fd/1")).contains('\n'); }));
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(), "Không mở được địa chỉ: không có trình duyệt mặc định\n");
}

TEST_F(ApplicationAddress, FallbackForAnIdentifierIsGtkLaunch)
{
    writeRecorder(usePrivatePath() + u"/gtk-launch");
    workspace.openWithFallback(FallbackTarget::bundleIdentifier, QStringLiteral("com.example.App"));
    EXPECT_EQ(
        recordedCommand(), (QStringList{QStringLiteral("gtk-launch"), QStringLiteral("com.example.App")}));
}

TEST_F(ApplicationAddress, FallbackForAPathIsGioOpen)
{
    writeRecorder(usePrivatePath() + u"/gio");
    workspace.openWithFallback(FallbackTarget::path, QStringLiteral("/home/tài liệu"));
    EXPECT_EQ(recordedCommand(),
        (QStringList{QStringLiteral("gio"), QStringLiteral("open"), QStringLiteral("/home/tài liệu")}));
}

TEST_F(ApplicationAddress, FallbackForAPathIsXdgOpenWhereGioIsMissing)
{
    writeRecorder(usePrivatePath(true) + u"/xdg-open");
    workspace.openWithFallback(FallbackTarget::path, QStringLiteral("/x"));
    EXPECT_EQ(recordedCommand(), (QStringList{QStringLiteral("xdg-open"), QStringLiteral("/x")}));
}

TEST_F(ApplicationAddress, FallbackForANameIsTheProgramOfThatName)
{
    writeRecorder(usePrivatePath() + u"/my-tool");
    workspace.openWithFallback(FallbackTarget::applicationName, QStringLiteral("my-tool"));
    EXPECT_EQ(recordedCommand(), QStringList{QStringLiteral("my-tool")});
}

TEST_F(ApplicationAddress, FallbackForANameIsElseTheEntryOfThatName)
{
    usePrivatePath();
    writeEntry(QStringLiteral("named"),
        QFile::encodeName(writeRecorder(homePath(QStringLiteral("bin/recorder")))) + " entry",
        "Name[vi]=Tên Việt\n");
    workspace.openWithFallback(FallbackTarget::applicationName, QStringLiteral("NAMED"));
    EXPECT_EQ(recordedCommand(), (QStringList{QStringLiteral("recorder"), QStringLiteral("entry")}));
}

TEST_F(ApplicationAddress, FallbackIsSilentAboutFailures)
{
    // gio is missing, and the other two have much to say and fail.
    const QString folder = usePrivatePath(true);
    for (const char* tool : {"xdg-open", "gtk-launch"})
        writeScript(folder + u'/' + QLatin1String(tool),
            QByteArray("echo no\necho no >&2\n/usr/bin/touch \"$HOME/") + tool + ".ran\"\nexit 1\n");
    testing::internal::CaptureStdout();
    workspace.openWithFallback(FallbackTarget::path, QStringLiteral("/x"));
    workspace.openWithFallback(FallbackTarget::bundleIdentifier, QStringLiteral("com.example.App"));
    workspace.openWithFallback(FallbackTarget::applicationName, QStringLiteral("nothing of that name"));
    EXPECT_TRUE(waitFor([] {
        return QFile::exists(homePath(QStringLiteral("xdg-open.ran")))
            && QFile::exists(homePath(QStringLiteral("gtk-launch.ran")));
    }));
    EXPECT_TRUE(waitFor([&] { return children.runningCount() == 0 && Testing::ownChildren().isEmpty(); }));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(ApplicationAddress, ManyRequestsAtOnceAreAllServed)
{
    const QString log = homePath(QStringLiteral("log"));
    const QString script = writeScript(homePath(QStringLiteral("many")), "echo \"$1\" >> \"$HOME/log\"\n");
    for (int number = 0; number < 40; ++number)
        workspace.openApplication(writeEntry(QStringLiteral("many%1").arg(number),
                                      QFile::encodeName(script) + ' ' + QByteArray::number(number)),
            {}, [](bool opened) { EXPECT_TRUE(opened); });
    EXPECT_TRUE(waitFor([&] { return readFile(log).count('\n') == 40; }));
    EXPECT_TRUE(waitFor([&] { return children.runningCount() == 0 && Testing::ownChildren().isEmpty(); }));
}

} // namespace
} // namespace Tavrin
