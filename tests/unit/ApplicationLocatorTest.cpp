#include "Platform/Linux/Applications/ApplicationLocator.h"

#include "Platform/Linux/Applications/ApplicationAliases.h"
#include "Platform/Linux/Applications/ApplicationIndex.h"
#include "Platform/Linux/Applications/DefaultApplications.h"
#include "Platform/Linux/Applications/Terminals.h"
#include "support/Wait.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using testing::Contains;

QString applications()
{
    return applicationFolders().constFirst();
}

QString entryPath(const QString& id)
{
    return applications() + u'/' + id + u".desktop";
}

void write(const QString& path, const QByteArray& text)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

/// Entries are written once, before GIO reads them: it takes note of later changes in its own time.
class Locator : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        const auto entry = [](const char* id, const char* name, const QByteArray& more = {}) {
            write(entryPath(QString::fromUtf8(id)),
                "[Desktop Entry]\nType=Application\nExec=true %U\nName=" + QByteArray(name) + '\n' + more);
        };
        entry("tavrin-browser", "Duyệt web", "MimeType=x-scheme-handler/https;text/html;\n");
        entry("tavrin-files", "Kho", "MimeType=inode/directory;\n");
        entry("tavrin-writer", "Viết", "MimeType=text/plain;\n");
        entry("tavrin-secret", "Ẩn", "NoDisplay=true\n");
        entry("tavrin-deleted", "Xoá", "Hidden=true\n");
        entry("google-chrome", "Google Chrome");
        entry("org.example.Player", "Máy phát", "StartupWMClass=Player-Window\n");
        entry("tavrin-terminal", "Cửa lệnh", "Categories=System;TerminalEmulator;\n");
        write(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/mimeapps.list",
            "[Default Applications]\nx-scheme-handler/https=tavrin-browser.desktop\n"
            "inode/directory=tavrin-files.desktop\ntext/plain=tavrin-writer.desktop\n");
    }

    void TearDown() override
    {
        qunsetenv("TERMINAL");
        QFile::remove(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/xdg-terminals.list");
    }
};

struct IdentifierCase {
    const char* identifier;
    const char* id;
};

class LocatedIdentifier : public Locator, public testing::WithParamInterface<IdentifierCase> { };

TEST_P(LocatedIdentifier, LiesInItsDesktopFile)
{
    const auto expected
        = *GetParam().id ? std::optional(entryPath(QString::fromUtf8(GetParam().id))) : std::nullopt;
    EXPECT_EQ(ApplicationLocator::locateIdentifier(QString::fromUtf8(GetParam().identifier)), expected);
}

INSTANTIATE_TEST_SUITE_P(Table, LocatedIdentifier,
    testing::Values(IdentifierCase{"tavrin-files", "tavrin-files"},
        IdentifierCase{"tavrin-files.desktop", "tavrin-files"},
        IdentifierCase{"Tavrin-FILES", "tavrin-files"}, IdentifierCase{"player-window", "org.example.Player"},
        IdentifierCase{"player", "org.example.Player"},
        IdentifierCase{"com.example.tavrin-files", "tavrin-files"},
        IdentifierCase{"tavrin-secret", "tavrin-secret"}, IdentifierCase{"Tavrin-Secret", ""},
        IdentifierCase{"tavrin-deleted", ""}, IdentifierCase{"com.google.Chrome", "google-chrome"},
        IdentifierCase{"COM.GOOGLE.CHROME", "google-chrome"},
        IdentifierCase{"com.apple.Safari", "tavrin-browser"},
        IdentifierCase{"com.apple.finder", "tavrin-files"},
        IdentifierCase{"com.apple.TextEdit", "tavrin-writer"}, IdentifierCase{"com.example.nothing", ""},
        IdentifierCase{"nothing-at-all", ""}, IdentifierCase{"", ""}, IdentifierCase{"../x", ""}));

struct NameCase {
    const char* name;
    const char* id;
};

class LocatedName : public Locator, public testing::WithParamInterface<NameCase> { };

TEST_P(LocatedName, LiesInItsDesktopFile)
{
    const auto expected
        = *GetParam().id ? std::optional(entryPath(QString::fromUtf8(GetParam().id))) : std::nullopt;
    EXPECT_EQ(ApplicationLocator::locateName(QString::fromUtf8(GetParam().name)), expected);
}

INSTANTIATE_TEST_SUITE_P(Table, LocatedName,
    testing::Values(NameCase{"Safari", "tavrin-browser"}, NameCase{"finder", "tavrin-files"},
        NameCase{"Google Chrome", "google-chrome"}, NameCase{"máy phát", "org.example.Player"},
        NameCase{"Ẩn", ""}, NameCase{"Xoá", ""}, NameCase{"Không có", ""}));

TEST_F(Locator, ResolvesDesktopFilesAndExecutables)
{
    const auto entry = ApplicationLocator::resolve(entryPath(QStringLiteral("tavrin-files")));
    ASSERT_TRUE(entry && entry->entry);
    EXPECT_EQ(entry->entry->id, QStringLiteral("tavrin-files"));
    const auto program = ApplicationLocator::resolve(QStringLiteral("/bin/sh"));
    ASSERT_TRUE(program);
    EXPECT_FALSE(program->entry);
    EXPECT_EQ(program->executable, QStringLiteral("/bin/sh"));
    for (const char* path :
        {"/", "/etc/passwd", "/nonexistent", "/nonexistent.desktop", "/usr/share/applications"})
        EXPECT_FALSE(ApplicationLocator::resolve(QString::fromLatin1(path))) << path;
    EXPECT_FALSE(ApplicationLocator::resolve(entryPath(QStringLiteral("tavrin-deleted"))));
}

TEST_F(Locator, ResolvesPathsOfAnotherDesktopByName)
{
    const auto idAt = [](const char* path) {
        const auto target = ApplicationLocator::resolve(QString::fromUtf8(path));
        return target && target->entry ? target->entry->id : QString();
    };
    EXPECT_EQ(idAt("/System/Applications/TextEdit.app"), QStringLiteral("tavrin-writer"));
    EXPECT_EQ(idAt("/Applications/Google Chrome.app/"), QStringLiteral("google-chrome"));
    EXPECT_EQ(idAt("/Applications/Máy phát.app"), QStringLiteral("org.example.Player"));
    EXPECT_EQ(idAt("/Applications/Unknown Thing.app"), QString());
    // What is there is what it is, whatever it is called.
    const QString folder = QDir::tempPath() + u"/Safari.app";
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_FALSE(ApplicationLocator::resolve(folder));
}

TEST_F(Locator, GivesOneKeyForAllRoadsToAnApplication)
{
    const QString link = QDir::tempPath() + u"/link.desktop";
    ASSERT_TRUE(QFile::link(entryPath(QStringLiteral("tavrin-files")), link));
    const auto direct = ApplicationLocator::resolve(entryPath(QStringLiteral("tavrin-files")));
    const auto linked = ApplicationLocator::resolve(link);
    ASSERT_TRUE(direct && linked);
    EXPECT_EQ(direct->key(), linked->key());
}

TEST_F(Locator, TellsApplicationsApartThatAreLinksToOneProgram)
{
    const auto keyOfLink = [](const char* name) {
        const QString link = QDir::tempPath() + u'/' + QString::fromLatin1(name);
        EXPECT_TRUE(QFile::link(QStringLiteral("/bin/sh"), link));
        return ApplicationLocator::resolve(link).value_or(ApplicationTarget()).key();
    };
    EXPECT_NE(keyOfLink("first-snap"), keyOfLink("second-snap"));
}

TEST_F(Locator, FindsNothingMissingInPlainUnknownApplications)
{
    for (const char* target : {"com.example.unknown", "Unknown", "/nonexistent", "/Applications/Unknown.app",
             "com.spotify.client", "com.apple.Safari", "/Applications/Safari.app", "Finder"})
        EXPECT_EQ(ApplicationLocator::missingRole(QString::fromLatin1(target)), DefaultRole::none) << target;
}

TEST_F(Locator, TakesTheTerminalTheUserNames)
{
    const QString program = QDir::tempPath() + u"/my-terminal";
    write(program, "#!/bin/sh\n");
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("TERMINAL", QFile::encodeName(program));
    EXPECT_EQ(ApplicationLocator::locateIdentifier(QStringLiteral("com.apple.Terminal")), program);
    EXPECT_EQ(ApplicationLocator::locateName(QStringLiteral("iTerm")), program);
    qputenv("TERMINAL", "no-such-terminal-program");
    EXPECT_NE(ApplicationLocator::locateIdentifier(QStringLiteral("com.apple.Terminal")), std::nullopt);
}

TEST_F(Locator, TakesTheTerminalOfTheUsersListNext)
{
    write(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/xdg-terminals.list",
        "# mine\nnot-installed.desktop\n tavrin-terminal.desktop:new-window\n");
    EXPECT_EQ(ApplicationLocator::locateIdentifier(QStringLiteral("com.apple.Terminal")),
        entryPath(QStringLiteral("tavrin-terminal")));
}

TEST(TerminalList, HoldsDesktopFilesOnly)
{
    EXPECT_THAT(preferredTerminalIds("# c\n\nkitty.desktop\n-bad\n org.x.T.desktop:new \n/execarg_default\n"),
        testing::ElementsAre(QStringLiteral("kitty"), QStringLiteral("org.x.T")));
}

struct ForeignCase {
    const char* path;
    const char* name;
};

class ForeignPath : public testing::TestWithParam<ForeignCase> { };

TEST_P(ForeignPath, HasAName)
{
    EXPECT_EQ(
        ApplicationLocator::foreignApplicationName(QString::fromUtf8(GetParam().path)).value_or(QString()),
        QString::fromUtf8(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Table, ForeignPath,
    testing::Values(ForeignCase{"/System/Applications/TextEdit.app", "TextEdit"},
        ForeignCase{"/Applications/Google Chrome.app/", "Google Chrome"},
        ForeignCase{"/Applications/A.B.app", "A.B"}, ForeignCase{"/Applications/.app", ""},
        ForeignCase{"/usr/bin/app", ""}, ForeignCase{"/usr/share/x.desktop", ""}, ForeignCase{"/", ""}));

TEST(Aliases, KnowRolesAndCandidates)
{
    const auto chrome = aliasOfIdentifier(u"com.google.Chrome");
    ASSERT_TRUE(chrome);
    EXPECT_EQ(chrome->role, DefaultRole::none);
    EXPECT_EQ(chrome->desktopIds.first(2),
        (QStringList{QStringLiteral("google-chrome"), QStringLiteral("google-chrome-stable")}));
    EXPECT_THAT(chrome->desktopIds, Contains(QStringLiteral("chromium")));
    const auto terminal = aliasOfName(u"terminal");
    ASSERT_TRUE(terminal);
    EXPECT_EQ(terminal->role, DefaultRole::terminal);
    EXPECT_FALSE(aliasOfIdentifier(u"com.example.unknown"));
    EXPECT_FALSE(aliasOfName(u""));
    for (const char* identifier :
        {"com.microsoft.VSCode", "com.tinyspeck.slackmacgap", "ru.keepcoder.Telegram", "com.spotify.client",
            "us.zoom.xos", "com.hnc.Discord", "com.apple.calculator", "com.apple.Notes",
            "com.apple.systempreferences", "com.microsoft.edgemac", "com.brave.Browser", "org.videolan.vlc"})
        EXPECT_FALSE(aliasOfIdentifier(QString::fromLatin1(identifier)).value().desktopIds.isEmpty())
            << identifier;
}

} // namespace
} // namespace Tavrin
