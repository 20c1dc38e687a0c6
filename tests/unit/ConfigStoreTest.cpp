#include "Core/Storage/ConfigStore.h"

#include "Core/Model/ShortcutJson.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Tavrin {
namespace {

using Testing::CapturedOutput;
using Testing::TemporaryFolder;

constexpr auto fileName = "Tavrin/shortcuts.json";

class Store : public testing::Test {
protected:
    QString file() const { return QLatin1String(fileName); }
    std::vector<ShortcutItem> onDisk() const
    {
        const auto decoded = decodeShortcuts(folder.read(file()));
        const auto* items = std::get_if<std::vector<ShortcutItem>>(&decoded);
        return items ? *items : std::vector<ShortcutItem>{};
    }
    void expectDefaults(const std::vector<ShortcutItem>& items) const
    {
        ASSERT_EQ(items.size(), 2U);
        EXPECT_EQ(items[0].name, QStringLiteral("Google Chrome"));
        EXPECT_EQ(items[0].keyCode, 122U);
        EXPECT_EQ(items[0].modifiers, 256U);
        EXPECT_EQ(items[0].actionValue, QStringLiteral("com.google.Chrome"));
        EXPECT_EQ(items[1].name, QStringLiteral("Terminal"));
        EXPECT_EQ(items[1].keyCode, 46U);
        EXPECT_EQ(items[1].modifiers, 256U);
        EXPECT_EQ(items[1].actionValue, QStringLiteral("com.apple.Terminal"));
        for (const ShortcutItem& item : items) {
            EXPECT_TRUE(item.isEnabled);
            EXPECT_EQ(item.actionType, ActionType::launchApp);
            EXPECT_NEAR(item.createdAt, ShortcutItem::currentDate(), 60);
        }
        EXPECT_NE(items[0].id, items[1].id);
    }
    ShortcutItem item(const QString& name) const
    {
        return {QUuid::createUuid(), name, 40, 256, ActionType::shellScript, QStringLiteral("true"), true, 1};
    }

    TemporaryFolder folder;
};

TEST_F(Store, MakesFolderAndDefaultsOnTheFirstStart)
{
    CapturedOutput output;
    const ConfigStore store(folder.path(QStringLiteral("deep/share")));
    EXPECT_TRUE(output.lines().isEmpty());
    EXPECT_EQ(store.fileURL(), folder.path(QStringLiteral("deep/share/Tavrin/shortcuts.json")));
    expectDefaults(store.shortcuts());
    const auto decoded = decodeShortcuts(folder.read(QStringLiteral("deep/share/Tavrin/shortcuts.json")));
    EXPECT_EQ(std::get<std::vector<ShortcutItem>>(decoded), store.shortcuts());
    EXPECT_EQ(
        folder.names(QStringLiteral("deep/share/Tavrin")), QStringList{QStringLiteral("shortcuts.json")});
}

TEST_F(Store, MakesNewDefaultsEachTime)
{
    EXPECT_NE(ConfigStore::defaultShortcuts()[0].id, ConfigStore::defaultShortcuts()[0].id);
}

TEST_F(Store, KeepsAnEmptyList)
{
    folder.write(file(), "[]");
    CapturedOutput output;
    const ConfigStore store(folder.path());
    EXPECT_TRUE(store.shortcuts().empty());
    EXPECT_EQ(folder.read(file()), "[]");
    EXPECT_TRUE(output.lines().isEmpty());
}

TEST_F(Store, DoesNotRewriteAFileThatItCanRead)
{
    const QByteArray contents = " [ ] ";
    folder.write(file(), contents);
    const ConfigStore store(folder.path());
    EXPECT_EQ(folder.read(file()), contents);
}

TEST_F(Store, ReplacesWhatItCannotReadByTheDefaults)
{
    const QByteArray bad[] = {
        "", "[{", "not json", "{\"a\":1}", "\xff\xfe\x00", QByteArray(1000000, '['), "[1,2",
        R"([{"id":"1818E811-892F-402B-923F-0824128B2F33","name":"x","keyCode":46,"modifiers":256,)"
        R"("actionType":"launchApp","actionValue":"y","createdAt":1}])", // no isEnabled
    };
    for (const QByteArray& contents : bad) {
        folder.write(file(), contents);
        CapturedOutput output;
        const ConfigStore store(folder.path());
        const QStringList lines = output.lines();
        ASSERT_EQ(lines.size(), 1) << contents.left(40).constData();
        EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi đọc cấu hình: "))) << qPrintable(lines[0]);
        EXPECT_GT(lines[0].size(), QStringLiteral("Lỗi đọc cấu hình: ").size());
        expectDefaults(store.shortcuts());
        EXPECT_EQ(onDisk(), store.shortcuts());
    }
}

TEST_F(Store, ReadsAFileOfFiftyMegabytes)
{
    ShortcutItem large = item(QStringLiteral("large"));
    large.actionValue = QString(50 * 1024 * 1024, u'x');
    folder.write(file(), encodeShortcuts({&large, 1}));
    const ConfigStore store(folder.path());
    EXPECT_EQ(store.shortcuts(), std::vector{large});
}

TEST_F(Store, SavesEveryChangeAtOnce)
{
    folder.write(file(), "[]");
    ConfigStore store(folder.path());
    int changes = 0;
    QObject::connect(&store, &ConfigStore::shortcutsChanged, [&] { ++changes; });

    ShortcutItem first = item(QStringLiteral("first"));
    const ShortcutItem second = item(QStringLiteral("second"));
    store.add(first);
    store.add(second);
    EXPECT_EQ(onDisk(), (std::vector{first, second}));
    first.name = QStringLiteral("renamed");
    store.update(first);
    EXPECT_EQ(onDisk(), (std::vector{first, second}));
    store.toggle(second.id);
    EXPECT_FALSE(onDisk()[1].isEnabled);
    store.toggle(second.id);
    EXPECT_TRUE(onDisk()[1].isEnabled);
    store.remove(first.id);
    EXPECT_EQ(onDisk(), std::vector{second});
    EXPECT_EQ(changes, 6);
    EXPECT_EQ(store.shortcuts(), onDisk());
}

TEST_F(Store, LeavesUnknownIdsAlone)
{
    folder.write(file(), " [ ] ");
    ConfigStore store(folder.path());
    int changes = 0;
    QObject::connect(&store, &ConfigStore::shortcutsChanged, [&] { ++changes; });
    store.update(item(QStringLiteral("x")));
    store.toggle(QUuid::createUuid());
    EXPECT_EQ(folder.read(file()), " [ ] ") << "nothing must have been written";
    EXPECT_EQ(changes, 0);
    // Deleting saves even when it removes nothing.
    store.remove(QUuid::createUuid());
    EXPECT_EQ(folder.read(file()), "[]");
}

TEST_F(Store, TreatsTheFirstOfTwoWithOneIdAndDeletesBoth)
{
    folder.write(file(), "[]");
    ConfigStore store(folder.path());
    const ShortcutItem original = item(QStringLiteral("a"));
    ShortcutItem twin = original;
    twin.name = QStringLiteral("b");
    store.add(original);
    store.add(twin);
    store.toggle(original.id);
    EXPECT_FALSE(store.shortcuts()[0].isEnabled);
    EXPECT_TRUE(store.shortcuts()[1].isEnabled);
    ShortcutItem changed = original;
    changed.name = QStringLiteral("c");
    store.update(changed);
    EXPECT_EQ(store.shortcuts()[0].name, QStringLiteral("c"));
    EXPECT_EQ(store.shortcuts()[1].name, QStringLiteral("b"));
    store.remove(original.id);
    EXPECT_TRUE(store.shortcuts().empty());
}

TEST_F(Store, KeepsALinkAndTheFilesMode)
{
    folder.write(QStringLiteral("dotfiles/mine.json"), "[]");
    QDir(folder.path()).mkpath(QStringLiteral("Tavrin"));
    ASSERT_TRUE(QFile::link(QStringLiteral("../dotfiles/mine.json"), folder.path(file())));
    chmod(qPrintable(folder.path(QStringLiteral("dotfiles/mine.json"))), 0640);
    ConfigStore store(folder.path());
    store.add(item(QStringLiteral("x")));
    EXPECT_TRUE(QFileInfo(folder.path(file())).isSymLink());
    EXPECT_EQ(onDisk(), store.shortcuts());
    struct stat info { };
    ASSERT_EQ(stat(qPrintable(folder.path(file())), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640U);
    EXPECT_EQ(folder.names(QStringLiteral("dotfiles")), QStringList{QStringLiteral("mine.json")});
}

TEST_F(Store, KeepsANewFileFromOthers)
{
    const ConfigStore store(folder.path());
    struct stat info { };
    ASSERT_EQ(stat(qPrintable(folder.path(file())), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0600U) << "quick texts can hold secrets";
}

TEST_F(Store, WritesThroughADanglingLink)
{
    QDir(folder.path()).mkpath(QStringLiteral("Tavrin"));
    QDir(folder.path()).mkpath(QStringLiteral("dotfiles"));
    ASSERT_TRUE(QFile::link(folder.path(QStringLiteral("dotfiles/new.json")), folder.path(file())));
    CapturedOutput output;
    const ConfigStore store(folder.path());
    EXPECT_TRUE(output.lines().isEmpty()) << "a file that is not there is a first start";
    EXPECT_EQ(folder.names(QStringLiteral("dotfiles")), QStringList{QStringLiteral("new.json")});
    expectDefaults(onDisk());
}

TEST_F(Store, RunsOnWithALinkThatLeadsNowhere)
{
    QDir(folder.path()).mkpath(QStringLiteral("Tavrin"));
    ASSERT_TRUE(QFile::link(folder.path(QStringLiteral("absent/new.json")), folder.path(file())));
    CapturedOutput output;
    const ConfigStore store(folder.path());
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi lưu cấu hình: ")));
    expectDefaults(store.shortcuts());
}

TEST_F(Store, RunsOnWithAFolderInTheFilesPlace)
{
    QDir(folder.path()).mkpath(file() + QStringLiteral("/inside"));
    CapturedOutput output;
    const ConfigStore store(folder.path());
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi đọc cấu hình: ")));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("Lỗi lưu cấu hình: ")));
    expectDefaults(store.shortcuts());
    EXPECT_EQ(folder.names(QStringLiteral("Tavrin")), QStringList{QStringLiteral("shortcuts.json")});
}

TEST_F(Store, RunsOnWithAPipeInTheFilesPlace)
{
    QDir(folder.path()).mkpath(QStringLiteral("Tavrin"));
    ASSERT_EQ(mkfifo(qPrintable(folder.path(file())), 0600), 0);
    CapturedOutput output;
    const ConfigStore store(folder.path());
    EXPECT_EQ(output.lines().size(), 1) << "read fails, the defaults replace the pipe";
    expectDefaults(onDisk());
}

/// Runs with the rights of nobody, if the test is root's: root may read and write everything.
class AsNobody {
public:
    explicit AsNobody(const TemporaryFolder& folder)
    {
        if (geteuid() != 0)
            return;
        chmod(qPrintable(folder.path()), 0777);
        m_isRoot = seteuid(nobody) == 0;
    }
    ~AsNobody()
    {
        if (m_isRoot && seteuid(0) != 0)
            abort();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    bool m_isRoot = false;
};

TEST_F(Store, ReplacesAFileThatItMayNotRead)
{
    folder.write(file(), "[]");
    chmod(qPrintable(folder.path(QStringLiteral("Tavrin"))), 0777);
    chmod(qPrintable(folder.path(file())), 0);
    const AsNobody nobody(folder);
    CapturedOutput output;
    const ConfigStore store(folder.path());
    const QStringList lines = output.lines();
    ASSERT_GE(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi đọc cấu hình: "))) << qPrintable(lines[0]);
    expectDefaults(store.shortcuts());
}

TEST_F(Store, KeepsItsListWhenTheFolderIsReadOnly)
{
    folder.write(file(), "[]");
    chmod(qPrintable(folder.path(file())), 0644);
    chmod(qPrintable(folder.path(QStringLiteral("Tavrin"))), 0555);
    const AsNobody nobody(folder);
    CapturedOutput output;
    ConfigStore store(folder.path());
    const ShortcutItem added = item(QStringLiteral("x"));
    store.add(added);
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi lưu cấu hình: ")));
    EXPECT_EQ(store.shortcuts(), std::vector{added});
    EXPECT_EQ(folder.read(file()), "[]");
    EXPECT_EQ(folder.names(QStringLiteral("Tavrin")), QStringList{QStringLiteral("shortcuts.json")});
}

TEST_F(Store, RunsOnWithoutAFolder)
{
    folder.write(QStringLiteral("share"), "a file where the folder should be");
    CapturedOutput output;
    const ConfigStore store(folder.path(QStringLiteral("share")));
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi lưu cấu hình: ")));
    expectDefaults(store.shortcuts());
}

TEST_F(Store, KeepsTheOldFileWhenTheDiskIsFull)
{
    folder.write(file(), "[]");
    ConfigStore store(folder.path());
    // The nearest to a full disk that needs no mount: no file may grow beyond this.
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{8192, old.rlim_max};
    CapturedOutput output;
    setrlimit(RLIMIT_FSIZE, &small);
    store.add(item(QString(10000, u'x')));
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Lỗi lưu cấu hình: ")));
    EXPECT_EQ(folder.read(file()), "[]");
    EXPECT_EQ(folder.names(QStringLiteral("Tavrin")), QStringList{QStringLiteral("shortcuts.json")})
        << "nothing half-written is left";
    EXPECT_EQ(store.shortcuts().size(), 1U);
}

TEST_F(Store, RemovesWhatACrashLeftBehind)
{
    folder.write(file(), "[]");
    folder.write(QStringLiteral("Tavrin/.shortcuts.json.saving-a1B2c3"), "[{");
    folder.write(QStringLiteral("Tavrin/notes.txt"), "the user's");
    const ConfigStore store(folder.path());
    EXPECT_EQ(folder.names(QStringLiteral("Tavrin")),
        (QStringList{QStringLiteral("notes.txt"), QStringLiteral("shortcuts.json")}));
}

TEST_F(Store, IsSharedByTheFirstOne)
{
    const ConfigStore store(folder.path());
    const ConfigStore other(folder.path(QStringLiteral("other")));
    EXPECT_EQ(&ConfigStore::shared(), &store);
}

} // namespace
} // namespace Tavrin
