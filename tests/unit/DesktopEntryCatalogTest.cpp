#include "Platform/Linux/Applications/DesktopEntryCatalog.h"

#include "Core/Applications/AppScanner.h"
#include "Platform/Linux/Applications/ApplicationIndex.h"
#include "Platform/Linux/Applications/IconDrawing.h"
#include "support/TemporaryFolder.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace Tavrin {
namespace {

using testing::ElementsAre;

class EntryCatalog : public testing::Test {
protected:
    DesktopEntryCatalog catalog(const QStringList& desktops = {}) const
    {
        return {{folder.path(QStringLiteral("system")), folder.path(QStringLiteral("user"))}, desktops,
            {{folder.path(QStringLiteral("icons"))}, [] { return QString(); }}};
    }
    QString entry(const QString& name, const QByteArray& lines) const
    {
        folder.write(name, "[Desktop Entry]\nType=Application\n" + lines);
        return folder.path(name);
    }
    std::vector<std::string> names(const QStringList& desktops = {}) const
    {
        std::vector<std::string> result;
        for (const InstalledApp& app : scanApplications(catalog(desktops)))
            result.push_back(app.name.toStdString());
        return result;
    }
    QString makeExecutable(const QString& name) const
    {
        folder.write(name, "#!/bin/sh\n");
        QFile::setPermissions(folder.path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return folder.path(name);
    }

    Testing::TemporaryFolder folder;
};

TEST_F(EntryCatalog, LooksIntoTheSystemsFoldersFirst)
{
    const QStringList folders = listedApplicationFolders();
    const QString data = qEnvironmentVariable("XDG_DATA_HOME");
    EXPECT_THAT(folders,
        ElementsAre(QStringLiteral("/usr/local/share/applications"),
            QStringLiteral("/usr/share/applications"),
            QStringLiteral("/var/lib/flatpak/exports/share/applications"),
            QStringLiteral("/var/lib/snapd/desktop/applications"), data + u"/applications",
            data + u"/flatpak/exports/share/applications"));
}

TEST_F(EntryCatalog, ReadsWhatAnEntrySays)
{
    const QString path = entry(QStringLiteral("system/org.example.Files.desktop"),
        "Name=Files\nName[vi]=Tập tin\nName[fr]=Fichiers\nIcon=org.example.Files\nExec=files %U\n");
    const ApplicationInformation information = catalog().information(path);
    EXPECT_EQ(information.identifier, QStringLiteral("org.example.Files"));
    EXPECT_EQ(information.displayName, QStringLiteral("Tập tin"));
    EXPECT_EQ(information.bundleName, QStringLiteral("Files"));
    EXPECT_EQ(information.icon, QStringLiteral("org.example.Files"));
    EXPECT_TRUE(information.isListed);
    EXPECT_TRUE(information.isStartable);
}

TEST_F(EntryCatalog, NamesApplications)
{
    struct Case {
        const char* lines;
        const char* name;
    };
    const QByteArray before = qgetenv("LANGUAGE");
    qputenv("LANGUAGE", "fr");
    for (const Case& each : {Case{"Name=Files\nName[vi]=Tập tin\nName[fr]=Fichiers\n", "Tập tin"},
             Case{"Name=Files\nName[vi_VN]=Tệp\nName[vi]=Tập tin\n", "Tệp"},
             Case{"Name=Files\nName[fr]=Fichiers\n", "Fichiers"},
             Case{"Name=Files\nName[de]=Dateien\n", "Files"}, Case{"Name=Files\nName[vi]=\n", "Files"},
             Case{"Exec=files\n", "a.b"}}) {
        entry(QStringLiteral("system/a.b.desktop"), each.lines);
        EXPECT_THAT(names(), ElementsAre(each.name)) << each.lines;
    }
    qputenv("LANGUAGE", before);
}

TEST_F(EntryCatalog, ShowsWhatMenusShow)
{
    const QString program = makeExecutable(QStringLiteral("bin/there"));
    struct Case {
        QByteArray lines;
        bool isListed;
    };
    const QStringList desktops{QStringLiteral("ubuntu"), QStringLiteral("GNOME")};
    for (const Case& each : {Case{"", true}, Case{"NoDisplay=true", false}, Case{"Hidden=true", false},
             Case{"NoDisplay=false\nHidden=false", true}, Case{"OnlyShowIn=KDE;", false},
             Case{"OnlyShowIn=KDE;GNOME;", true}, Case{"NotShowIn=KDE;", true},
             Case{"NotShowIn=XFCE;GNOME", false}, Case{"TryExec=/nowhere/there", false},
             Case{"TryExec=no-such-program-anywhere", false}, Case{"TryExec=sh", true},
             Case{"TryExec=" + program.toUtf8(), true}}) {
        const QString path = entry(QStringLiteral("system/a.desktop"), "Name=A\n" + each.lines + '\n');
        EXPECT_EQ(catalog(desktops).information(path).isListed, each.isListed) << each.lines.constData();
    }
}

TEST_F(EntryCatalog, HidesTheUsersCopyBehindTheSystems)
{
    entry(QStringLiteral("system/a.desktop"), "Name=Of the system\n");
    entry(QStringLiteral("user/a.desktop"), "Name=Of the user\n");
    entry(QStringLiteral("user/b.desktop"), "Name=B\n");
    entry(QStringLiteral("system/folder/c.desktop"), "Name=One level deeper\n");
    entry(QStringLiteral("system/Tool.DESKTOP"), "Name=Capitals\n");
    EXPECT_THAT(names(), ElementsAre("B", "Of the system"));
}

TEST_F(EntryCatalog, ListsWhatCannotBeReadByItsFile)
{
    folder.write(QStringLiteral("system/broken.desktop"),
        QByteArray("\x7f"
                   "ELF\0\1",
            6));
    folder.write(QStringLiteral("system/empty.desktop"), "");
    QFile huge(folder.path(QStringLiteral("system/huge.desktop")));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_TRUE(huge.resize(50 << 20));
    ASSERT_EQ(mkfifo(qPrintable(folder.path(QStringLiteral("system/pipe.desktop"))), 0600), 0);
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("system/folder.desktop")));
    // What is gone when it is read was removed meanwhile; so is what a link led to.
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), folder.path(QStringLiteral("system/gone.desktop"))));
    ASSERT_TRUE(
        QFile::link(QStringLiteral("loop.desktop"), folder.path(QStringLiteral("system/loop.desktop"))));
    EXPECT_THAT(names(), ElementsAre("broken", "empty", "folder", "huge", "pipe"));
    for (const InstalledApp& app : scanApplications(catalog()))
        EXPECT_TRUE(app.bundleId.isEmpty()) << app.path.toStdString();
    EXPECT_FALSE(catalog().information(folder.path(QStringLiteral("system/broken.desktop"))).isStartable);
}

TEST_F(EntryCatalog, TakesProgramsThatTheUserChose)
{
    const ApplicationInformation program
        = catalog().information(makeExecutable(QStringLiteral("opt/tool-1.2")));
    EXPECT_TRUE(program.isStartable);
    EXPECT_TRUE(program.identifier.isEmpty());
    EXPECT_EQ(program.bundleName, QStringLiteral("tool-1.2"));
    EXPECT_EQ(catalog().information(makeExecutable(QStringLiteral("opt/Vẽ-x86_64.AppImage"))).bundleName,
        QStringLiteral("Vẽ-x86_64"));
    folder.write(QStringLiteral("opt/text.txt"), "text");
    for (const char* name : {"opt/text.txt", "opt", "opt/missing"})
        EXPECT_FALSE(catalog().information(folder.path(QString::fromUtf8(name))).isStartable) << name;
    EXPECT_FALSE(catalog()
                     .information(entry(QStringLiteral("opt/hidden.desktop"), "Name=A\nHidden=true\n"))
                     .isStartable);
    EXPECT_TRUE(catalog()
                    .information(entry(QStringLiteral("opt/quiet.desktop"), "Name=A\nNoDisplay=true\n"))
                    .isStartable);
}

QByteArray png(int width, int height, QColor color)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "png");
    return bytes;
}

constexpr const char* redSquare = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\">"
                                  "<rect width=\"16\" height=\"16\" fill=\"#ff0000\"/></svg>";
constexpr const char* redPixmap
    = "/* XPM */\nstatic char* a[] = {\n\"2 2 1 1\",\n\"a c #ff0000\",\n\"aa\",\n\"aa\"};\n";

class IconPicture : public EntryCatalog {
protected:
    QImage draw(const QString& name, const QByteArray& contents, int pixels = 32)
    {
        folder.write(name, contents);
        return drawIconFile(folder.path(name), pixels);
    }
};

TEST_F(IconPicture, IsDrawnInTheMiddleOfASquare)
{
    const QRgb red = qRgb(255, 0, 0);
    for (const auto& [name, contents] : {std::pair(QStringLiteral("a.png"), png(64, 64, Qt::red)),
             std::pair(QStringLiteral("b.svg"), QByteArray(redSquare)),
             std::pair(QStringLiteral("c.xpm"), QByteArray(redPixmap)),
             std::pair(QStringLiteral("small.png"), png(8, 8, Qt::red))}) {
        for (const int pixels : {32, 48, 64}) {
            const QImage image = draw(name, contents, pixels);
            EXPECT_EQ(image.size(), QSize(pixels, pixels)) << name.toStdString();
            EXPECT_EQ(image.pixel(0, 0), red) << name.toStdString();
            EXPECT_EQ(image.pixel(pixels - 1, pixels - 1), red) << name.toStdString();
        }
    }
    const QImage wide = draw(QStringLiteral("wide.png"), png(64, 32, Qt::red));
    EXPECT_EQ(qAlpha(wide.pixel(16, 4)), 0);
    EXPECT_EQ(wide.pixel(16, 16), red);
    EXPECT_EQ(qAlpha(wide.pixel(16, 27)), 0);
}

/// A drawing whose parts use one another: 2 to the power of so many squares.
QByteArray multiplying(int levels)
{
    QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                     "viewBox=\"0 0 16 16\"><defs><rect id=\"p0\" width=\"1\" height=\"1\"/>";
    for (int level = 1; level <= levels; ++level) {
        const QByteArray use = "<use xlink:href=\"#p" + QByteArray::number(level - 1) + "\"/>";
        svg += "<g id=\"p" + QByteArray::number(level) + "\">" + use + use + "</g>";
    }
    return svg + "</defs><use xlink:href=\"#p" + QByteArray::number(levels) + "\"/></svg>";
}

QByteArray referring(const QByteArray& link)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
           "viewBox=\"0 0 16 16\"><image width=\"16\" height=\"16\" xlink:href=\""
        + link + "\"/></svg>";
}

TEST_F(IconPicture, IsLeftOutWhenItIsBrokenOrTooLarge)
{
    QElapsedTimer timer;
    timer.start();
    const QByteArray good = png(64, 64, Qt::red);
    EXPECT_TRUE(draw(QStringLiteral("cut.png"), good.left(40)).isNull());
    EXPECT_TRUE(draw(QStringLiteral("head.png"), good.left(8)).isNull());
    EXPECT_TRUE(draw(QStringLiteral("empty.png"), "").isNull());
    EXPECT_TRUE(draw(QStringLiteral("text.png"), "not a picture").isNull());
    EXPECT_TRUE(draw(QStringLiteral("giant.png"), png(4096, 1, Qt::red)).isNull());
    EXPECT_TRUE(draw(QStringLiteral("giant.xpm"), "/* XPM */\nstatic char* a[] = {\n\"99999 99999 1 1\",\n")
                    .isNull());
    EXPECT_TRUE(draw(QStringLiteral("cut.svg"), QByteArray(redSquare).left(80)).isNull());
    EXPECT_TRUE(draw(QStringLiteral("empty.svg"), "").isNull());
    EXPECT_TRUE(draw(QStringLiteral("zipped.svg"), "\x1f\x8b\x08 and more").isNull());
    EXPECT_TRUE(draw(QStringLiteral("multiplying.svg"), multiplying(40)).isNull());
    EXPECT_FALSE(draw(QStringLiteral("using.svg"), multiplying(3)).isNull());
    EXPECT_TRUE(draw(QStringLiteral("reading.svg"), referring("/dev/zero")).isNull());
    EXPECT_TRUE(draw(QStringLiteral("reading2.svg"), referring("file:///dev/zero")).isNull());
    EXPECT_FALSE(
        draw(QStringLiteral("holding.svg"), referring("data:image/png;base64," + good.toBase64())).isNull());
    QFile huge(folder.path(QStringLiteral("huge.png")));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    huge.write(good);
    ASSERT_TRUE(huge.resize(50 << 20));
    EXPECT_TRUE(drawIconFile(huge.fileName(), 32).isNull());
    ASSERT_EQ(mkfifo(qPrintable(folder.path(QStringLiteral("pipe.png"))), 0600), 0);
    ASSERT_TRUE(QFile::link(QStringLiteral("loop.svg"), folder.path(QStringLiteral("loop.svg"))));
    for (const char* name : {"pipe.png", "loop.svg", "missing.png", "."})
        EXPECT_TRUE(drawIconFile(folder.path(QString::fromUtf8(name)), 32).isNull()) << name;
    EXPECT_TRUE(drawIconFile(QStringLiteral("/dev/zero"), 32).isNull());
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(IconPicture, IsFoundByNameOrPath)
{
    const QRgb red = qRgb(255, 0, 0);
    folder.write(QStringLiteral("icons/hicolor/index.theme"),
        "[Icon Theme]\nDirectories=32,64\n[32]\nSize=32\nType=Fixed\n[64]\nSize=64\nType=Fixed\n");
    folder.write(QStringLiteral("icons/hicolor/32/app.png"), "broken");
    folder.write(QStringLiteral("icons/hicolor/64/app.png"), png(64, 64, Qt::red));
    folder.write(QStringLiteral("icons/loose.svg"), redSquare);
    folder.write(QStringLiteral("else where/ảnh.png"), png(64, 64, Qt::red));
    const DesktopEntryCatalog all = catalog();
    EXPECT_EQ(all.icon(QStringLiteral("app"), 32).pixel(5, 5), red)
        << "the next one where the first is broken";
    EXPECT_EQ(all.icon(QStringLiteral("loose"), 32).pixel(5, 5), red);
    EXPECT_EQ(all.icon(folder.path(QStringLiteral("else where/ảnh.png")), 32).pixel(5, 5), red);
    for (const QString& name : {QString(), QStringLiteral("missing"), QStringLiteral("/missing.png"),
             QStringLiteral("../icons/loose"), folder.path()})
        EXPECT_EQ(all.icon(name, 48), drawGeneralIcon(48)) << name.toStdString();
    EXPECT_GT(qAlpha(drawGeneralIcon(32).pixel(16, 16)), 200);
}

} // namespace
} // namespace Tavrin
