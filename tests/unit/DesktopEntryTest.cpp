#include "Platform/Linux/Applications/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace Tavrin {
namespace {

using testing::ElementsAre;

struct ExecCase {
    const char* exec;
    std::optional<QStringList> words;
};

class ExecValue : public testing::TestWithParam<ExecCase> { };

TEST_P(ExecValue, BecomesWordsWithoutFieldCodes)
{
    EXPECT_EQ(commandLineOf(QString::fromUtf8(GetParam().exec)), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(Table, ExecValue,
    testing::Values(ExecCase{"firefox %u", QStringList{"firefox"}},
        ExecCase{"/opt/a\\ b/run --new %F --x", QStringList{"/opt/a b/run", "--new", "--x"}},
        ExecCase{"\"/opt/có dấu/chạy\" \"hai từ\"", QStringList{"/opt/có dấu/chạy", "hai từ"}},
        ExecCase{"sh -c 'echo \"$HOME\"'", QStringList{"sh", "-c", "echo \"$HOME\""}},
        ExecCase{"rate 100%% --file=%f", QStringList{"rate", "100%", "--file="}},
        ExecCase{"keep '' %i", QStringList{"keep", ""}}, ExecCase{"bad 'quote", std::nullopt},
        ExecCase{"", std::nullopt}));

QByteArray entryText(const QByteArray& more)
{
    return "[Desktop Entry]\nType=Application\nName=Editor\nExec=editor %F\n" + more;
}

TEST(DesktopEntryParser, ReadsWhatIsThere)
{
    const auto entry = parseDesktopEntry(QStringLiteral("/apps/org.example.Editor.desktop"),
        entryText(
            "StartupWMClass=ExampleEditor\nCategories=Utility;TextEditor;\nTerminal=true\nNoDisplay=true\n"
            "Hidden=true\n\n[Desktop Action new]\nName=New\nExec=editor --new\n"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->path, QStringLiteral("/apps/org.example.Editor.desktop"));
    EXPECT_EQ(entry->id, QStringLiteral("org.example.Editor"));
    EXPECT_EQ(entry->name, QStringLiteral("Editor"));
    EXPECT_EQ(entry->localName, QStringLiteral("Editor"));
    EXPECT_EQ(entry->windowClass, QStringLiteral("ExampleEditor"));
    EXPECT_THAT(entry->commandLine, ElementsAre(QStringLiteral("editor")));
    EXPECT_THAT(entry->categories, ElementsAre(QStringLiteral("Utility"), QStringLiteral("TextEditor")));
    EXPECT_TRUE(entry->terminal);
    EXPECT_TRUE(entry->noDisplay);
    EXPECT_TRUE(entry->hidden);
}

TEST(DesktopEntryParser, TakesAbsentKeysAsUnset)
{
    const auto entry = parseDesktopEntry(QStringLiteral("/apps/editor.desktop"), entryText({}));
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->windowClass.isEmpty());
    EXPECT_TRUE(entry->categories.isEmpty());
    EXPECT_FALSE(entry->terminal || entry->noDisplay || entry->hidden);
}

TEST(DesktopEntryParser, RefusesWhatIsNoApplication)
{
    const auto parses = [](const QByteArray& text) {
        return parseDesktopEntry(QStringLiteral("/x.desktop"), text).has_value();
    };
    EXPECT_FALSE(parses(""));
    EXPECT_FALSE(parses("\x7f"
                        "ELF\x02\x01"));
    EXPECT_FALSE(parses("[Desktop Entry]\nType=Link\nURL=https://example.org\n"));
    EXPECT_FALSE(parses("[Desktop Entry]\nName=No type\n"));
    EXPECT_FALSE(parses("[Other]\nType=Application\n"));
    EXPECT_TRUE(parses("# comment\n\n[Desktop Entry]\nType=Application\n"));
}

TEST(DesktopEntryReader, ReadsRegularFilesOnly)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.desktop"));
    EXPECT_FALSE(readDesktopEntry(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(entryText({}));
    file.close();
    EXPECT_TRUE(readDesktopEntry(path));

    // Reading a pipe without a writer would never return.
    const QString pipe = folder.filePath(QStringLiteral("pipe.desktop"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_FALSE(readDesktopEntry(pipe));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder.desktop")));
    EXPECT_FALSE(readDesktopEntry(folder.filePath(QStringLiteral("folder.desktop"))));
}

} // namespace
} // namespace Tavrin
