#include "Platform/Linux/Applications/IconTheme.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace Tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(IconThemeIndexFile, SaysWhichSizesItsFoldersSuit)
{
    const IconThemeIndex index = parseIconTheme("[Icon Theme]\n"
                                                "Inherits=breeze, Adwaita\n"
                                                "Directories=fixed,scalable,threshold,plain,twice,\n"
                                                "ScaledDirectories=scaled\n"
                                                "[fixed]\nSize=48\nType=Fixed\n"
                                                "[scalable]\nSize=64\nMinSize=8\nMaxSize=512\nType=Scalable\n"
                                                "[threshold]\nSize=22\nThreshold=4\nType=Threshold\n"
                                                "[plain]\nSize=16\n"
                                                "[twice]\nSize=32\nScale=2\nType=Fixed\n"
                                                "[scaled]\nSize=16\nScale=3\nMinSize=16\nType=Scalable\n");
    EXPECT_THAT(index.parents, ElementsAre(QStringLiteral("breeze"), QStringLiteral("Adwaita")));
    std::vector<std::string> folders;
    for (const IconFolder& folder : index.folders)
        folders.push_back(QStringLiteral("%1 %2-%3")
                              .arg(folder.path)
                              .arg(folder.smallest)
                              .arg(folder.largest)
                              .toStdString());
    EXPECT_THAT(folders,
        ElementsAre("fixed 48-48", "scalable 8-512", "threshold 18-26", "plain 14-18", "twice 64-64",
            "scaled 48-48"));
}

TEST(IconThemeIndexFile, IsReadAsFarAsItMakesSense)
{
    EXPECT_THAT(parseIconTheme("").folders, IsEmpty());
    EXPECT_THAT(parseIconTheme(QByteArray(1000, '\0')).folders, IsEmpty());
    EXPECT_THAT(parseIconTheme("[Other]\nDirectories=a\n").folders, IsEmpty());
    const auto folders = parseIconTheme("[Icon Theme]\nDirectories=a,b\n"
                                        "[a]\nSize=99999999999\nScale=-3\nType=Fixed\n")
                             .folders;
    ASSERT_EQ(folders.size(), 2);
    EXPECT_EQ(folders[0].largest, 0);
    EXPECT_GT(folders[1].distance(32), 0);
}

TEST(IconThemeFolder, IsSoManyPixelsOff)
{
    const IconFolder folder{QStringLiteral("a"), 16, 48};
    EXPECT_EQ(folder.distance(8), 8);
    EXPECT_EQ(folder.distance(16), 0);
    EXPECT_EQ(folder.distance(48), 0);
    EXPECT_EQ(folder.distance(64), 16);
}

class IconTheme : public testing::Test {
protected:
    void theme(const QString& base, const QString& name, const QByteArray& inherits)
    {
        folder.write(base + u'/' + name + u"/index.theme",
            "[Icon Theme]\nInherits=" + inherits
                + "\nDirectories=16/apps,32/apps,48/apps,64/apps,scalable/apps\n"
                  "[16/apps]\nSize=16\nType=Fixed\n[32/apps]\nSize=32\nType=Fixed\n[48/apps]\nSize=48\nType="
                  "Fixed\n"
                  "[64/apps]\nSize=64\nType=Fixed\n[scalable/apps]\nSize=128\nMinSize=100\nMaxSize=512\n"
                  "Type=Scalable\n");
    }
    std::vector<std::string> files(const char* name, int pixels)
    {
        const IconThemes themes({{folder.path(QStringLiteral("user")), folder.path(QStringLiteral("system"))},
            [this] { return chosen; }});
        std::vector<std::string> result;
        for (const QString& file : themes.files(QString::fromUtf8(name), pixels))
            result.push_back(file.sliced(folder.path().size() + 1).toStdString());
        return result;
    }

    Testing::TemporaryFolder folder;
    QString chosen = QStringLiteral("Chosen");
};

TEST_F(IconTheme, OffersTheNearestSizeFirst)
{
    theme(QStringLiteral("system"), QStringLiteral("Chosen"), "");
    for (const char* file : {"16/apps/a.png", "48/apps/a.png", "64/apps/a.svg", "scalable/apps/a.svg"})
        folder.write(u"system/Chosen/" + QString::fromUtf8(file), "x");
    EXPECT_THAT(files("a", 48),
        ElementsAre("system/Chosen/48/apps/a.png", "system/Chosen/64/apps/a.svg",
            "system/Chosen/16/apps/a.png", "system/Chosen/scalable/apps/a.svg"));
    EXPECT_THAT(files("a", 32),
        ElementsAre("system/Chosen/48/apps/a.png", "system/Chosen/16/apps/a.png",
            "system/Chosen/64/apps/a.svg", "system/Chosen/scalable/apps/a.svg"))
        << "as near, but larger";
    EXPECT_EQ(files("a", 128).front(), "system/Chosen/scalable/apps/a.svg");
    EXPECT_EQ(files("a.png", 48), files("a", 48)) << "a name with what does not belong to it";
    EXPECT_THAT(files("b", 48), IsEmpty());
}

TEST_F(IconTheme, GoesOnWithTheThemesItBuildsOn)
{
    theme(QStringLiteral("system"), QStringLiteral("Chosen"), "Parent,Other");
    theme(QStringLiteral("system"), QStringLiteral("Parent"), "Chosen,Grandparent");
    theme(QStringLiteral("system"), QStringLiteral("Grandparent"), "hicolor");
    for (const char* name : {"Other", "Adwaita", "hicolor", "Unrelated"})
        theme(QStringLiteral("system"), QString::fromUtf8(name), "");
    for (const char* name : {"hicolor", "Grandparent", "Chosen", "Adwaita", "Other", "Unrelated", "Parent"})
        folder.write(QStringLiteral("system/%1/32/apps/a.png").arg(QString::fromUtf8(name)), "x");
    folder.write(QStringLiteral("user/a.png"), "x");
    EXPECT_THAT(files("a", 32),
        ElementsAre("system/Chosen/32/apps/a.png", "system/Parent/32/apps/a.png",
            "system/Grandparent/32/apps/a.png", "system/Other/32/apps/a.png", "system/Adwaita/32/apps/a.png",
            "system/hicolor/32/apps/a.png", "user/a.png"));
    chosen = QStringLiteral("Missing");
    EXPECT_EQ(files("a", 32).front(), "system/Adwaita/32/apps/a.png");
    chosen.clear();
    EXPECT_EQ(files("a", 32).front(), "system/Adwaita/32/apps/a.png");
}

TEST_F(IconTheme, IsMadeOfAllFoldersOfItsName)
{
    theme(QStringLiteral("system"), QStringLiteral("hicolor"), "");
    folder.write(QStringLiteral("system/hicolor/32/apps/a.png"), "x");
    folder.write(QStringLiteral("user/hicolor/32/apps/a.svg"), "x");
    EXPECT_THAT(files("a", 32), ElementsAre("user/hicolor/32/apps/a.svg", "system/hicolor/32/apps/a.png"));
}

TEST_F(IconTheme, StaysInItsFolder)
{
    theme(QStringLiteral("system"), QStringLiteral("hicolor"), "");
    folder.write(QStringLiteral("system/hicolor/32/apps/a.png"), "x");
    folder.write(QStringLiteral("secret.png"), "x");
    for (const char* name : {"", "../../../../secret", "/a", "apps/../a"})
        EXPECT_THAT(files(name, 32), IsEmpty()) << name;
    chosen = QStringLiteral("../system/hicolor");
    EXPECT_EQ(files("a", 32).size(), 1U);
}

TEST_F(IconTheme, GetsOverBrokenThemes)
{
    // A circle, an index that is a pipe, one that is a folder, an endless link, one of fifty megabytes.
    theme(QStringLiteral("system"), QStringLiteral("Chosen"), "Pipe,Folder,Link,Huge,Chosen");
    theme(QStringLiteral("system"), QStringLiteral("hicolor"), "");
    folder.write(QStringLiteral("system/hicolor/32/apps/a.png"), "x");
    for (const char* name : {"Pipe", "Link", "Huge", "Folder/index.theme"})
        QDir(folder.path()).mkpath(u"system/" + QString::fromUtf8(name));
    ASSERT_EQ(mkfifo(qPrintable(folder.path(QStringLiteral("system/Pipe/index.theme"))), 0600), 0);
    ASSERT_TRUE(
        QFile::link(QStringLiteral("index.theme"), folder.path(QStringLiteral("system/Link/index.theme"))));
    QFile huge(folder.path(QStringLiteral("system/Huge/index.theme")));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_TRUE(huge.resize(50 << 20));
    EXPECT_THAT(files("a", 32), ElementsAre("system/hicolor/32/apps/a.png"));
}

} // namespace
} // namespace Tavrin
