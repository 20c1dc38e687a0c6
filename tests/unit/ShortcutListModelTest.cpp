#include "UI/ShortcutListModel.h"

#include "Core/Model/QuickTextPayload.h"
#include "Core/Storage/ConfigStore.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ShortcutItem shortcut(const char* name, ActionType type = ActionType::shellScript, const QString& value = {})
{
    return {QUuid::createUuid(), QString::fromUtf8(name), 40, 0x100, type, value, true, 0};
}

class Rows : public testing::Test {
protected:
    void SetUp() override
    {
        while (!store.shortcuts().empty())
            store.remove(store.shortcuts()[0].id);
        for (const char* name : {"a", "b", "ab", "c"})
            store.add(shortcut(name));
        QObject::connect(&model, &QAbstractItemModel::rowsInserted,
            [this](const QModelIndex&, int first, int last) { note("+", first, last); });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved,
            [this](const QModelIndex&, int first, int last) { note("-", first, last); });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
            [this](
                const QModelIndex& first, const QModelIndex& last) { note("~", first.row(), last.row()); });
        QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { changes.emplace_back("reset"); });
    }

    void note(const char* what, int first, int last)
    {
        changes.push_back(what + std::to_string(first) + ".." + std::to_string(last));
    }
    std::vector<std::string> takeChanges() { return std::exchange(changes, {}); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (int row = 0; row < model.rowCount(); ++row)
            result.push_back(
                model.data(model.index(row), ShortcutListModel::nameRole).toString().toStdString());
        return result;
    }
    void search(const char* text) { model.setFilter(ShortcutFilter(QString::fromUtf8(text), std::nullopt)); }

    Testing::TemporaryFolder folder;
    ConfigStore store{folder.path()};
    ShortcutListModel model{store};
    std::vector<std::string> changes;
};

TEST_F(Rows, FollowTheStoreWithoutLosingTheirPlace)
{
    changes.clear();
    EXPECT_THAT(names(), ElementsAre("a", "b", "ab", "c"));
    store.toggle(store.shortcuts()[1].id);
    EXPECT_FALSE(model.data(model.index(1), ShortcutListModel::enabledRole).toBool());
    EXPECT_THAT(takeChanges(), ElementsAre("~1..1"));
    store.add(shortcut("d"));
    EXPECT_THAT(takeChanges(), ElementsAre("+4..4"));
    store.remove(store.shortcuts()[1].id);
    EXPECT_THAT(takeChanges(), ElementsAre("-1..1"));
    EXPECT_THAT(names(), ElementsAre("a", "ab", "c", "d"));
    store.save();
    EXPECT_THAT(takeChanges(), IsEmpty());
}

TEST_F(Rows, AreThoseThatPassTheFilterInStoreOrder)
{
    int counts = 0;
    QObject::connect(&model, &ShortcutListModel::countChanged, [&] { ++counts; });
    changes.clear();
    search("A");
    EXPECT_THAT(names(), ElementsAre("a", "ab"));
    EXPECT_EQ(counts, 1);
    search("b");
    EXPECT_THAT(names(), ElementsAre("b", "ab"));
    search("x");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(model.count(), 0);
    search("");
    EXPECT_THAT(names(), ElementsAre("a", "b", "ab", "c"));
    for (const std::string& change : changes)
        EXPECT_NE(change, "reset");
}

TEST_F(Rows, FollowAnEditIntoAndOutOfTheFilter)
{
    search("a");
    changes.clear();
    ShortcutItem item = store.shortcuts()[1];
    item.name = QStringLiteral("ba");
    store.update(item);
    EXPECT_THAT(names(), ElementsAre("a", "ba", "ab"));
    EXPECT_THAT(takeChanges(), ElementsAre("+1..1"));
    item.name = QStringLiteral("xa");
    store.update(item);
    EXPECT_THAT(takeChanges(), ElementsAre("~1..1"));
    item.name = QStringLiteral("x");
    store.update(item);
    EXPECT_THAT(takeChanges(), ElementsAre("-1..1"));
}

TEST_F(Rows, KnowTheirShortcut)
{
    EXPECT_EQ(model.item(2)->name, QStringLiteral("ab"));
    EXPECT_EQ(model.data(model.index(2), ShortcutListModel::idRole).toUuid(), store.shortcuts()[2].id);
    EXPECT_EQ(
        model.data(model.index(0), ShortcutListModel::combinationRole).toString(), QStringLiteral("⌘ K"));
    EXPECT_EQ(
        model.data(model.index(0), ShortcutListModel::typeRole).toString(), QStringLiteral("shellScript"));
    EXPECT_EQ(model.item(-1), nullptr);
    EXPECT_EQ(model.item(4), nullptr);
    EXPECT_FALSE(model.data(model.index(4), ShortcutListModel::nameRole).isValid());
}

TEST(DuplicateIds, AreRowsOfTheirOwn)
{
    const Testing::TemporaryFolder folder;
    ConfigStore store(folder.path());
    ShortcutItem twin = store.shortcuts()[0];
    twin.name = QStringLiteral("sinh đôi");
    store.add(twin);
    const ShortcutListModel model(store);
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.item(2)->name, QStringLiteral("sinh đôi"));
    store.toggle(store.shortcuts()[1].id);
    EXPECT_EQ(model.item(0)->name, QStringLiteral("Google Chrome"));
    EXPECT_EQ(model.item(2)->name, QStringLiteral("sinh đôi"));
}

QString payload(QuickTextPayload::Mode mode, const char* text)
{
    return QuickTextPayload{mode, QString::fromUtf8(text), false}.encodeToString();
}

TEST(Description, SaysInOneLineWhatTheShortcutDoes)
{
    using Mode = QuickTextPayload::Mode;
    const std::pair<ShortcutItem, const char*> cases[] = {
        {shortcut("", ActionType::launchApp, QStringLiteral("/Applications/Zalo.app")),
            "Ứng dụng: /Applications/Zalo.app"},
        {shortcut("", ActionType::openURL, QStringLiteral("a.vn")), "URL: a.vn"},
        {shortcut("", ActionType::quickText, payload(Mode::copyOnly, "một\nhai")), "Chép: \"một hai\""},
        {shortcut("", ActionType::quickText, payload(Mode::paste, "a")), "Dán: \"a\""},
        {shortcut("", ActionType::quickText, payload(Mode::pasteAndKeep, "a\n\nb")), "Dán & Chép: \"a  b\""},
        {shortcut("", ActionType::quickText, QStringLiteral("từ trước")), "Dán: \"từ trước\""},
        {shortcut("", ActionType::shellScript, QStringLiteral("date\ntrue")), "Script: date true"},
        {shortcut("", ActionType::systemAction, QStringLiteral("lockScreen")), "Hệ thống: Khoá màn hình"},
        {shortcut("", ActionType::systemAction, QStringLiteral("LockScreen")), "Hệ thống: LockScreen"},
    };
    for (const auto& [item, line] : cases)
        EXPECT_EQ(detailDescription(item), QString::fromUtf8(line));
    EXPECT_LE(detailDescription(shortcut("", ActionType::shellScript, QString(1000000, u'x'))).size(), 320);
}

} // namespace
} // namespace Tavrin
