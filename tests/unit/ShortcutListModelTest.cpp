#include "UI/ShortcutListModel.h"

#include "Core/Storage/ConfigStore.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

TEST(ShortcutRows, FollowTheStore)
{
    const Testing::TemporaryFolder folder;
    ConfigStore store(folder.path());
    const ShortcutListModel model(store);
    ASSERT_EQ(model.rowCount(), 2);
    const auto text = [&](int row, ShortcutListModel::Role role) {
        return model.data(model.index(row), role).toString();
    };
    EXPECT_EQ(text(0, ShortcutListModel::nameRole), QStringLiteral("Google Chrome"));
    EXPECT_EQ(text(1, ShortcutListModel::combinationRole), QStringLiteral("⌘ M"));
    EXPECT_EQ(text(1, ShortcutListModel::typeRole), QStringLiteral("Mở Ứng dụng"));
    EXPECT_EQ(text(1, ShortcutListModel::targetRole), QStringLiteral("com.apple.Terminal"));
    EXPECT_TRUE(model.data(model.index(1), ShortcutListModel::enabledRole).toBool());
    store.toggle(store.shortcuts()[1].id);
    EXPECT_FALSE(model.data(model.index(1), ShortcutListModel::enabledRole).toBool());
    store.remove(store.shortcuts()[0].id);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_FALSE(model.data(model.index(5), ShortcutListModel::nameRole).isValid());
}

TEST(ShortcutRows, ShowTheTargetAsOneShortLine)
{
    ShortcutItem item;
    item.actionType = ActionType::shellScript;
    item.actionValue = QStringLiteral("dòng 1\n\tdòng 2\n");
    EXPECT_EQ(targetLine(item), QStringLiteral("dòng 1 dòng 2"));
    item.actionValue = QString(1000000, u'x');
    EXPECT_LE(targetLine(item).size(), 300);
    item.actionType = ActionType::quickText;
    item.actionValue = QStringLiteral(R"({"mode":"paste","text":"Xin chào","restoreClipboard":true})");
    EXPECT_EQ(targetLine(item), QStringLiteral("Xin chào"));
    item.actionType = ActionType::systemAction;
    item.actionValue = QStringLiteral("lockScreen");
    EXPECT_EQ(targetLine(item), QStringLiteral("Khoá màn hình"));
    item.actionValue = QStringLiteral("LockScreen");
    EXPECT_EQ(targetLine(item), QStringLiteral("LockScreen"));
}

} // namespace
} // namespace Tavrin
