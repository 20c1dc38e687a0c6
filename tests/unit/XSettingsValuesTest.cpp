#include "Platform/Linux/Appearance/XSettingsValues.h"

#include "support/SettingsManager.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::SettingsBytes;

constexpr auto theme = "Net/ThemeName";
constexpr auto preference = "Gtk/ApplicationPreferDarkTheme";

struct SettingsCase {
    SettingsBytes settings;
    std::optional<bool> expected;
};

class XSettingsTable : public testing::TestWithParam<SettingsCase> { };

TEST_P(XSettingsTable, SaysWhetherDarkIsWanted)
{
    EXPECT_EQ(prefersDark(GetParam().settings.bytes()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, XSettingsTable,
    testing::Values(SettingsCase{SettingsBytes(), std::nullopt},
        SettingsCase{SettingsBytes().text("Net/IconThemeName", "Dark-Icons"), std::nullopt},
        SettingsCase{SettingsBytes().text(theme, "Adwaita"), false},
        SettingsCase{SettingsBytes().text(theme, ""), false},
        SettingsCase{SettingsBytes().text(theme, "Adwaita-dark"), true},
        SettingsCase{SettingsBytes().text(theme, "BreezeDARK"), true},
        SettingsCase{SettingsBytes(true).text(theme, "Greybird-dark"), true},
        SettingsCase{SettingsBytes(true).integer("Xft/DPI", 98304).text(theme, "Greybird"), false},
        SettingsCase{SettingsBytes().integer(preference, 1), true},
        SettingsCase{SettingsBytes().integer(preference, 0), false},
        SettingsCase{SettingsBytes().integer(preference, 1).text(theme, "Adwaita"), true},
        SettingsCase{SettingsBytes().text(theme, "Yaru-dark").integer(preference, 0), true},
        SettingsCase{
            SettingsBytes().color("Some/Color").integer("A", 1).text("Abc", "x").text(theme, "d dark"), true},
        // A name that is a number, a number that is a name.
        SettingsCase{SettingsBytes().integer(theme, 1), std::nullopt},
        SettingsCase{SettingsBytes().text(preference, "1"), std::nullopt},
        SettingsCase{SettingsBytes().unknown("What").text(theme, "dark"), std::nullopt}));

TEST(XSettings, NameTheIconTheme)
{
    constexpr auto icons = "Net/IconThemeName";
    EXPECT_EQ(iconThemeName(SettingsBytes().text(theme, "Yaru").text(icons, "Papirus").bytes()),
        QStringLiteral("Papirus"));
    EXPECT_EQ(iconThemeName(SettingsBytes(true).color("C").integer("A", 1).text(icons, "Bảng").bytes()),
        QStringLiteral("Bảng"));
    for (const SettingsBytes& settings : {SettingsBytes(), SettingsBytes().text(theme, "Yaru"),
             SettingsBytes().integer(icons, 1), SettingsBytes().text(icons, "a").unknown("What")})
        EXPECT_EQ(iconThemeName(settings.bytes()), QString());
}

TEST(XSettings, ThatEndTooSoonSayNothing)
{
    const QByteArray whole = SettingsBytes().color("C").integer("Gtk/Other", 1).text(theme, "dark!").bytes();
    ASSERT_EQ(prefersDark(whole), true);
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_EQ(prefersDark(whole.left(length)), std::nullopt) << length;
}

TEST(XSettings, ThatLieAboutTheirSizeSayNothing)
{
    EXPECT_EQ(prefersDark(QByteArray(4096, '\xff')), std::nullopt);
    EXPECT_EQ(prefersDark(QByteArray(4, '\0') + QByteArray(8, '\xff') + QByteArray(64, '\0')), std::nullopt);
}

} // namespace
} // namespace Tavrin
