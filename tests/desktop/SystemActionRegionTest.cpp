// The picture of a region: a tool takes it to a file, and the program puts it on the clipboard.
#include "support/SystemActionsFixture.h"

#include <QBuffer>
#include <QImage>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

using enum SystemActionType;

/// The user's runtime folder is the test's own, so that nothing else comes and goes there.
class Region : public SystemActionsFixture {
protected:
    Region()
    {
        QDir().mkpath(runtime);
        setVariable("XDG_RUNTIME_DIR", runtime.toLocal8Bit());
        setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_bus);
        setVariable("DISPLAY", ":0");
        QBuffer buffer(&picture);
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(&buffer, "PNG"));
        folder.write(u"picture.png"_s, picture);
        pasteboard.contents = before;
    }

    /// A tool that leaves this file where its last argument says, an option's name before it or not.
    void tool(const QString& name, const QString& source = u"picture.png"_s)
    {
        standIn(name, "for file; do :; done; cp '" + folder.path(source).toUtf8() + "' \"${file#--file=}\"");
    }

    bool becomes(const PasteboardContents& contents)
    {
        return waitFor([&] { return pasteboard.contents == contents && isTidy(); });
    }

    /// Nothing runs, and nothing is left in the runtime folder.
    bool isTidy() const { return isQuiet() && QDir(runtime).isEmpty(); }

    /// Fails, with the clipboard as it was and nothing left.
    void expectNothing(const QString& reason)
    {
        EXPECT_EQ(failureOf(screenshotToClipboard), reason);
        EXPECT_EQ(pasteboard.contents, before);
        EXPECT_EQ(pasteboard.writes, 0);
        EXPECT_TRUE(waitFor([this] { return isTidy(); })) << "something is left";
    }

    const QString runtime = folder.path(u"run"_s);
    QByteArray picture;
    const PasteboardContents before{u"như cũ"_s, {}};
    PasteboardContents taken() const { return {std::nullopt, {{u"image/png"_s, picture}}}; }

private:
    const QByteArray m_bus = qgetenv("XDG_RUNTIME_DIR") + "/bus";
};

struct ToolCase {
    QString busName;
    QString tool;
    /// The call, with %1 for the file.
    QString call;
};

class RegionTool : public Region, public testing::WithParamInterface<ToolCase> { };

TEST_P(RegionTool, TakesThePictureToAFile)
{
    const ToolCase& parameter = GetParam();
    std::unique_ptr<MockBus> session;
    if (!parameter.busName.isEmpty()) {
        session = std::make_unique<MockBus>(QDBusConnection::sessionBus());
        session->own(parameter.busName);
    }
    tool(parameter.tool);
    perform(screenshotToClipboard);
    EXPECT_TRUE(becomes(taken())) << qPrintable((log() + failures).join(u'\n'));
    EXPECT_EQ(pasteboard.stay, Pasteboard::Stay::lasting);
    const QRegularExpression call(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(parameter.call)
            .replace(u"%1"_s, runtime + u"/Tavrin-\\w{6}/region\\.png")
            .replace(u"\\%1"_s, runtime + u"/Tavrin-\\w{6}/region\\.png")));
    EXPECT_TRUE(call.match(log().value(0)).hasMatch()) << qPrintable(log().join(u'\n'));
    EXPECT_EQ(failures, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Table, RegionTool,
    testing::Values(
        ToolCase{u"org.gnome.Shell"_s, u"gnome-screenshot"_s, u"gnome-screenshot --area --file=%1"_s},
        ToolCase{
            u"org.kde.KWin"_s, u"spectacle"_s, u"spectacle --background --nonotify --region --output %1"_s},
        ToolCase{u"org.xfce.Panel"_s, u"xfce4-screenshooter"_s, u"xfce4-screenshooter --region --save %1"_s},
        ToolCase{u"org.mate.Panel"_s, u"maim"_s, u"maim --select %1"_s},
        ToolCase{u"org.Cinnamon"_s, u"gnome-screenshot"_s, u"gnome-screenshot --area --file=%1"_s},
        ToolCase{{}, u"maim"_s, u"maim --select %1"_s}));

TEST_F(Region, ComesFromFlameshotsOutput)
{
    standIn(u"flameshot"_s, "cat '" + folder.path(u"picture.png"_s).toUtf8() + '\'');
    perform(screenshotToClipboard);
    EXPECT_TRUE(becomes(taken()));
    EXPECT_EQ(log(), QStringList{u"flameshot gui --raw"_s});
}

TEST_F(Region, IsChosenWithSlurpForGrim)
{
    setVariable("WAYLAND_DISPLAY", "wayland-0");
    standIn(u"slurp"_s, "echo '1,2 30x40'");
    tool(u"grim"_s);
    perform(screenshotToClipboard);
    EXPECT_TRUE(becomes(taken()));
    EXPECT_TRUE(log().value(1).startsWith(u"grim -g 1,2 30x40 "_s)) << qPrintable(log().join(u'\n'));
}

TEST_F(Region, ThatSlurpDoesNotGiveIsNotTaken)
{
    setVariable("WAYLAND_DISPLAY", "wayland-0");
    standIn(u"slurp"_s, "echo 'selection cancelled' >&2; exit 1");
    tool(u"grim"_s);
    expectNothing(u"selection cancelled"_s);
    EXPECT_EQ(log(), QStringList{u"slurp"_s});
}

TEST_F(Region, CancelledLeavesTheClipboardAsItWas)
{
    standIn(u"maim"_s, "exit 1");
    expectNothing(u"Chương trình kết thúc với mã 1"_s);
    standIn(u"maim"_s);
    expectNothing(u"Không nhận được ảnh PNG nào"_s);
    standIn(u"maim"_s, ": > \"$2\"");
    expectNothing(u"Không nhận được ảnh PNG nào"_s);
}

TEST_F(Region, OfAToolThatFailsAfterAllIsNotTaken)
{
    tool(u"maim"_s);
    const QByteArray script = folder.read(u"bin/maim"_s);
    folder.write(u"bin/maim"_s, script + "exit 1\n");
    expectNothing(u"Chương trình kết thúc với mã 1"_s);
}

TEST_F(Region, InAnotherFormatIsNotTaken)
{
    folder.write(u"wrong"_s, "GIF89a" + picture);
    tool(u"maim"_s, u"wrong"_s);
    expectNothing(u"Không nhận được ảnh PNG nào"_s);
}

TEST_F(Region, CutShortIsNotTaken)
{
    folder.write(u"half"_s, picture.chopped(4));
    tool(u"maim"_s, u"half"_s);
    expectNothing(u"Không nhận được ảnh PNG nào"_s);
}

TEST_F(Region, HugeIsNotTaken)
{
    folder.write(u"huge"_s, picture);
    QFile file(folder.path(u"huge"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(64 * 1024 * 1024));
    ASSERT_TRUE(file.seek(file.size()));
    file.write(picture.last(12));
    file.close();
    tool(u"maim"_s, u"huge"_s);
    expectNothing(u"Không nhận được ảnh PNG nào"_s);
}

TEST_F(Region, HasAFolderThatNobodyElseEnters)
{
    useReal(u"stat"_s);
    useReal(u"dirname"_s);
    standIn(u"maim"_s, "stat -c '%a %u' \"$(dirname \"$2\")\" >> '" + logFile().toUtf8() + "'; exit 1");
    failureOf(screenshotToClipboard);
    EXPECT_EQ(log().value(1), u"700 %1"_s.arg(getuid()));
}

TEST_F(Region, WithoutARuntimeFolderIsTakenAllTheSame)
{
    setVariable("XDG_RUNTIME_DIR", QByteArray());
    tool(u"maim"_s);
    perform(screenshotToClipboard);
    EXPECT_TRUE(becomes(taken()));
    EXPECT_FALSE(QFile::exists(log().value(0).section(u' ', -1))) << qPrintable(log().value(0));
}

/// While the user chooses.
class OpenRegion : public Region {
protected:
    OpenRegion()
    {
        standIn(u"maim"_s,
            "echo $$ > '" + folder.path(u"pid"_s).toUtf8() + "'; while [ ! -e '"
                + folder.path(u"go"_s).toUtf8() + "' ]; do sleep 0.02; done; cp '"
                + folder.path(u"picture.png"_s).toUtf8() + "' \"$2\"");
        perform(screenshotToClipboard);
        EXPECT_TRUE(waitFor([this] { return folder.read(u"pid"_s).endsWith('\n'); }));
    }

    pid_t pid() const { return folder.read(u"pid"_s).trimmed().toInt(); }
};

TEST_F(OpenRegion, StaysThoughItIsAskedForAgain)
{
    perform(screenshotToClipboard);
    standIn(u"rofi"_s);
    perform(openMissionControl);
    EXPECT_TRUE(waitFor([this] { return log().contains(u"rofi -show window"_s); }));
    EXPECT_EQ(log().filter(u"maim"_s).size(), 1);
    EXPECT_TRUE(isRunning(pid()));
    folder.write(u"go"_s, {});
    EXPECT_TRUE(becomes(taken()));
    EXPECT_EQ(pasteboard.writes, 1);
    perform(screenshotToClipboard);
    EXPECT_TRUE(waitFor([this] { return pasteboard.writes == 2; })) << "and can be asked for again then";
}

TEST_F(OpenRegion, EndsWithTheProgram)
{
    actions.reset();
    EXPECT_TRUE(waitFor([this] { return !isRunning(pid()) && isTidy(); }));
    EXPECT_EQ(pasteboard.contents, before);
}

} // namespace
} // namespace Tavrin
