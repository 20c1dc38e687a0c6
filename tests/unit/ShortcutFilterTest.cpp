#include "UI/Search/ShortcutFilter.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

ShortcutItem shortcut(const char* name, const char* value, ActionType type = ActionType::openURL)
{
    // ⌃ ⌥ K
    return {{}, QString::fromUtf8(name), 40, 0x1800, type, QString::fromUtf8(value), true, 0};
}

struct SearchCase {
    const char* text;
    bool isFound;
};

class Search : public testing::TestWithParam<SearchCase> { };

TEST_P(Search, LooksAtNameTargetAndCombination)
{
    const SearchedShortcut item(shortcut("Bảng Công Việc", "https://Example.org/nhóm"));
    const ShortcutFilter filter(QString::fromUtf8(GetParam().text), std::nullopt);
    EXPECT_EQ(filter.accepts(item), GetParam().isFound) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Table, Search,
    testing::Values(SearchCase{"", true}, SearchCase{"công", true}, SearchCase{"CÔNG VIỆC", true},
        SearchCase{"ba\u0309ng", true}, SearchCase{"BA\u0309NG", true}, SearchCase{"cong", false},
        SearchCase{"cồng", false}, SearchCase{"example", true}, SearchCase{"NHO\u0301M", true},
        SearchCase{"⌥", true}, SearchCase{"⌘", false}, SearchCase{"⌃ ⌥ k", true}, SearchCase{" ", true},
        SearchCase{"việc ", false}, SearchCase{"xyz", false}));

TEST(Search, OfASpaceFindsOnlyWhatHasOne)
{
    const ShortcutFilter filter(QStringLiteral(" "), std::nullopt);
    EXPECT_FALSE(filter.accepts(SearchedShortcut(
        {{}, QStringLiteral("a"), 40, 0, ActionType::openURL, QStringLiteral("b"), true, 0})));
}

TEST(Search, IsNarrowedByTheType)
{
    const SearchedShortcut script(shortcut("a", "b", ActionType::shellScript));
    EXPECT_TRUE(ShortcutFilter({}, ActionType::shellScript).accepts(script));
    EXPECT_FALSE(ShortcutFilter({}, ActionType::launchApp).accepts(script));
    EXPECT_FALSE(ShortcutFilter(QStringLiteral("x"), ActionType::shellScript).accepts(script));
}

} // namespace
} // namespace Tavrin
