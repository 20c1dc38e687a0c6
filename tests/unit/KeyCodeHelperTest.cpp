#include "Core/Model/KeyCodeHelper.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

struct NameCase {
    std::uint32_t keyCode;
    const char* name;
};

class KeyName : public testing::TestWithParam<NameCase> { };

TEST_P(KeyName, IsTheKeysOwnOrItsNumber)
{
    EXPECT_EQ(KeyCodeHelper::string(GetParam().keyCode), QString::fromUtf8(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Table, KeyName,
    testing::Values(NameCase{0, "A"}, NameCase{46, "M"}, NameCase{10, "Key(10)"}, NameCase{18, "1"},
        NameCase{22, "6"}, NameCase{23, "5"}, NameCase{24, "="}, NameCase{36, "⏎"}, NameCase{42, "\\"},
        NameCase{48, "⇥"}, NameCase{49, "Space"}, NameCase{50, "`"}, NameCase{51, "⌫"}, NameCase{53, "⎋"},
        NameCase{76, "Key(76)"}, NameCase{96, "F5"}, NameCase{99, "F3"}, NameCase{103, "F11"},
        NameCase{111, "F12"}, NameCase{114, "Key(114)"}, NameCase{117, "⌦"}, NameCase{122, "F1"},
        NameCase{123, "←"}, NameCase{126, "↑"}, NameCase{127, "Key(127)"}, NameCase{200, "Key(200)"},
        NameCase{55, "Key(55)"}, NameCase{4294967295U, "Key(4294967295)"}));

TEST(KeyNames, AreSixtyNine)
{
    int named = 0;
    for (std::uint32_t code = 0; code < 1000; ++code)
        named += KeyCodeHelper::string(code).startsWith(QStringLiteral("Key(")) ? 0 : 1;
    EXPECT_EQ(named, 69);
}

TEST(CombinationText, HasSymbolsInFixedOrderSeparatedBySpaces)
{
    EXPECT_EQ(KeyCodeHelper::combinationText(40, controlKey | optionKey | cmdKey), QStringLiteral("⌃ ⌥ ⌘ K"));
    EXPECT_EQ(KeyCodeHelper::combinationText(17, controlKey | optionKey), QStringLiteral("⌃ ⌥ T"));
    EXPECT_EQ(KeyCodeHelper::combinationText(49, cmdKey | shiftKey), QStringLiteral("⇧ ⌘ Space"));
    EXPECT_EQ(KeyCodeHelper::combinationText(40, 0x1B00), QStringLiteral("⌃ ⌥ ⇧ ⌘ K"));
    EXPECT_EQ(KeyCodeHelper::combinationText(96, 0), QStringLiteral("F5"));
    EXPECT_EQ(KeyCodeHelper::combinationText(0, 0), QStringLiteral("A"));
}

TEST(CombinationText, IgnoresBitsWithoutASymbol)
{
    EXPECT_EQ(KeyCodeHelper::combinationText(46, 0xFFFFE4FFU | cmdKey), QStringLiteral("⌘ M"));
}

TEST(ModifierNames, FollowTheirSymbolsInTheSameOrder)
{
    EXPECT_EQ(KeyCodeHelper::modifierNames(0xFFFFFFFF),
        QStringList({QStringLiteral("⌃ Control"), QStringLiteral("⌥ Option"), QStringLiteral("⇧ Shift"),
            QStringLiteral("⌘ Command")}));
    EXPECT_EQ(KeyCodeHelper::modifierNames(cmdKey), QStringList(QStringLiteral("⌘ Command")));
    EXPECT_EQ(KeyCodeHelper::modifierNames(0x400), QStringList());
}

TEST(CarbonModifiers, KeepsTheFourAndDropsTheRest)
{
    constexpr std::uint64_t capsLock = 1U << 16;
    constexpr std::uint64_t function = 1U << 23;
    EXPECT_EQ(KeyCodeHelper::carbonModifiers(commandEventFlag), cmdKey);
    EXPECT_EQ(KeyCodeHelper::carbonModifiers(commandEventFlag | capsLock), 0x100U);
    EXPECT_EQ(KeyCodeHelper::carbonModifiers(optionEventFlag | function), 0x800U);
    EXPECT_EQ(KeyCodeHelper::carbonModifiers(
                  commandEventFlag | optionEventFlag | controlEventFlag | shiftEventFlag | 0xFF),
        0x1B00U);
    EXPECT_EQ(KeyCodeHelper::carbonModifiers(capsLock), 0U);
}

} // namespace
} // namespace Tavrin
