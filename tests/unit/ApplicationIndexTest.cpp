#include "Platform/Linux/Applications/ApplicationIndex.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

DesktopEntry entry(const QString& id, const QString& name, const QString& windowClass = {})
{
    DesktopEntry result;
    result.id = id;
    result.path = u"/apps/" + id + u".desktop";
    result.name = name;
    result.localName = name;
    result.windowClass = windowClass;
    return result;
}

ApplicationIndex index()
{
    QList<DesktopEntry> entries{
        entry(QStringLiteral("firefox-esr"), QStringLiteral("Firefox ESR"), QStringLiteral("Navigator")),
        entry(QStringLiteral("org.gnome.Nautilus"), QStringLiteral("Files")),
        entry(QStringLiteral("spotify"), QStringLiteral("Spotify")),
        entry(QStringLiteral("xterm"), QStringLiteral("XTerm")),
        entry(QStringLiteral("helper"), QStringLiteral("Helper"), QStringLiteral("HelperClass")),
        entry(QStringLiteral("Deleted"), QStringLiteral("Gone")),
        entry(QStringLiteral("Deleted"), QStringLiteral("Gone behind")),
        entry(QStringLiteral("spotify"), QStringLiteral("Spotify behind")),
        entry(QStringLiteral("navigator"), QStringLiteral("Boats")),
        entry(QStringLiteral("case"), QStringLiteral("Lower")),
        entry(QStringLiteral("CASE"), QStringLiteral("Upper")),
    };
    entries[1].localName = QStringLiteral("Tập tin");
    entries[3].commandLine = QStringList{QStringLiteral("/usr/bin/xterm")};
    entries[3].categories = QStringList{QStringLiteral("System"), QStringLiteral("TerminalEmulator")};
    entries[2].commandLine = QStringList{QStringLiteral("spotify"), QStringLiteral("--flag")};
    entries[4].noDisplay = true;
    entries[5].hidden = true;
    return ApplicationIndex(entries);
}

QString nameOf(const DesktopEntry* found)
{
    return found ? found->name : QStringLiteral("-");
}

struct LookupCase {
    const char* sought;
    const char* name;
};

class IdentifierLookup : public testing::TestWithParam<LookupCase> { };

TEST_P(IdentifierLookup, FindsTheNearestMeaning)
{
    const ApplicationIndex applications = index();
    EXPECT_EQ(
        nameOf(applications.find(QString::fromUtf8(GetParam().sought))), QString::fromUtf8(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Table, IdentifierLookup,
    testing::Values(LookupCase{"firefox-esr", "Firefox ESR"}, LookupCase{"Firefox-ESR", "Firefox ESR"},
        LookupCase{"spotify", "Spotify"}, LookupCase{"org.gnome.nautilus", "Files"},
        LookupCase{"nautilus", "Files"}, LookupCase{"com.example.Spotify", "Spotify"},
        // An id, exact or not, counts more than a window class.
        LookupCase{"Navigator", "Boats"}, LookupCase{"case", "Lower"}, LookupCase{"CASE", "Upper"},
        LookupCase{"helper", "Helper"}, LookupCase{"Helper", "-"}, LookupCase{"HelperClass", "-"},
        LookupCase{"org.example.helper", "-"}, LookupCase{"Deleted", "-"},
        LookupCase{"com.apple.Safari", "-"}, LookupCase{"com.other.Nautilus", "-"}, LookupCase{"", "-"},
        LookupCase{".", "-"}));

TEST(WindowClassLookup, IgnoresCase)
{
    const ApplicationIndex applications(
        {entry(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("Special-Class"))});
    EXPECT_EQ(nameOf(applications.find(u"special-class")), QStringLiteral("A"));
    EXPECT_EQ(nameOf(applications.find(u"special")), QStringLiteral("-"));
}

class NameLookup : public testing::TestWithParam<LookupCase> { };

TEST_P(NameLookup, KnowsBothNamesIgnoringCase)
{
    const ApplicationIndex applications = index();
    EXPECT_EQ(nameOf(applications.findByName(QString::fromUtf8(GetParam().sought))),
        QString::fromUtf8(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Table, NameLookup,
    testing::Values(LookupCase{"Files", "Files"}, LookupCase{"tập tin", "Files"},
        LookupCase{"FILES", "Files"}, LookupCase{"File", "-"}, LookupCase{"Gone", "-"},
        LookupCase{"Helper", "-"}, LookupCase{"", "-"}));

TEST(ProgramLookup, WantsTheProgramWithoutFurtherArguments)
{
    const ApplicationIndex applications = index();
    EXPECT_EQ(nameOf(applications.findByProgram(u"xterm")), QStringLiteral("XTerm"));
    EXPECT_EQ(nameOf(applications.findByProgram(u"spotify")), QStringLiteral("-"));
}

TEST(CategoryLookup, GivesTheFirst)
{
    const ApplicationIndex applications = index();
    EXPECT_EQ(
        nameOf(applications.findByCategory(QStringLiteral("TerminalEmulator"))), QStringLiteral("XTerm"));
    EXPECT_EQ(nameOf(applications.findByCategory(QStringLiteral("Game"))), QStringLiteral("-"));
}

void write(const QString& path, const QByteArray& more)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\n" + more);
}

TEST(FolderReading, LetsTheUsersEntriesReplaceAndHideOthers)
{
    const QTemporaryDir user;
    const QTemporaryDir system;
    write(user.filePath(QStringLiteral("both.desktop")), "Name=User\nExec=a\n");
    write(user.filePath(QStringLiteral("hidden.desktop")), "Name=Hidden\nExec=a\nHidden=true\n");
    write(system.filePath(QStringLiteral("both.desktop")), "Name=System\nExec=a\n");
    write(system.filePath(QStringLiteral("hidden.desktop")), "Name=Hidden\nExec=a\n");
    write(system.filePath(QStringLiteral("system.desktop")), "Name=Only\nExec=a\n");
    write(system.filePath(QStringLiteral("other.txt")), "Name=Other\nExec=a\n");
    ASSERT_TRUE(QDir(system.path()).mkdir(QStringLiteral("deeper")));
    write(system.filePath(QStringLiteral("deeper/deep.desktop")), "Name=Deep\nExec=a\n");

    const auto applications
        = ApplicationIndex::read({user.path(), QStringLiteral("/nonexistent/folder"), system.path()});
    EXPECT_EQ(nameOf(applications.find(u"both")), QStringLiteral("User"));
    EXPECT_EQ(nameOf(applications.find(u"hidden")), QStringLiteral("-"));
    EXPECT_EQ(nameOf(applications.find(u"system")), QStringLiteral("Only"));
    EXPECT_EQ(nameOf(applications.find(u"other")), QStringLiteral("-"));
    EXPECT_EQ(nameOf(applications.find(u"deep")), QStringLiteral("-"));
}

TEST(Folders, BeginWithTheUsers)
{
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    EXPECT_THAT(applicationFolders(),
        testing::ElementsAre(home + u"/applications", home + u"/flatpak/exports/share/applications",
            QStringLiteral("/usr/local/share/applications"), QStringLiteral("/usr/share/applications"),
            QStringLiteral("/var/lib/flatpak/exports/share/applications"),
            QStringLiteral("/var/lib/snapd/desktop/applications")));
}

} // namespace
} // namespace Tavrin
