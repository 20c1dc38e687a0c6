#include "UI/Design/Palette.h"

#include "UI/Design/Theme.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

TEST(Contrast, IsThatOfTheGuidelines)
{
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::black, Qt::white), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::white, Qt::white), 1);
    EXPECT_NEAR(contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::red, Qt::blue), contrastRatio(Qt::blue, Qt::red));
}

TEST(Contrast, OfWhatShinesThrough)
{
    EXPECT_EQ(blended(Qt::white, 0.2, Qt::black), QColor(51, 51, 51));
    EXPECT_EQ(blended(Qt::red, 1, Qt::black), QColor(Qt::red));
    EXPECT_EQ(blended(Qt::red, 0, Qt::black), QColor(Qt::black));
}

struct Look {
    const char* name;
    const Palette& palette;
};

class PaletteIn : public testing::TestWithParam<Look> { };

/// Every pair of a text's colour and a ground that the views put it on.
TEST_P(PaletteIn, CanBeRead)
{
    constexpr double leastForText = 4.5;
    const Palette& p = GetParam().palette;
    struct Pair {
        const char* what;
        QColor text;
        QColor ground;
    };
    const auto pairs = std::to_array<Pair>({
        {"text, window", p.text, p.window},
        {"text, bar", p.text, p.bar},
        {"text, card", p.text, p.card},
        {"text, hovered card", p.text, p.hover},
        {"text, field", p.text, p.field},
        {"text, well", p.text, p.well},
        {"text, raised", p.text, p.raised},
        {"text, pressed", p.text, p.pressed},
        {"text, sheet", p.text, p.sheet},
        {"text, selection", p.text, p.selection},
        {"text, badge", p.text, p.badge},
        {"secondary, window", p.secondaryText, p.window},
        {"secondary, bar", p.secondaryText, p.bar},
        {"secondary, card", p.secondaryText, p.card},
        {"secondary, hovered card", p.secondaryText, p.hover},
        {"secondary, well", p.secondaryText, p.well},
        {"secondary, sheet", p.secondaryText, p.sheet},
        {"secondary, badge", p.secondaryText, p.badge},
        {"secondary, the row that keys act on", p.secondaryText, blended(p.accentText, 0.16, p.sheet)},
        {"placeholder, field", p.placeholderText, p.field},
        {"white, accent", p.onAccent, p.accent},
        {"white, accent pressed", p.onAccent, p.accentPressed},
        {"white, destructive", p.onAccent, p.destructive},
        {"accent, window", p.accentText, p.window},
        {"accent, sheet", p.accentText, p.sheet},
        {"accent, card", p.accentText, p.card},
        {"accent, hovered card", p.accentText, p.hover},
        {"accent, its own tint on the bar", p.accentText, blended(p.accent, 0.15, p.bar)},
        {"accent, its own tint on a field", p.accentText, blended(p.accent, 0.18, p.field)},
        {"green, bar", p.green, p.bar},
        {"green, well", p.green, p.well},
        {"orange, bar", p.orange, p.bar},
        {"orange, well", p.orange, p.well},
        {"orange, its own tint on the bar", p.orange, blended(p.orange, 0.2, p.bar)},
        {"orange, its own tint on a sheet", p.orange, blended(p.orange, 0.12, p.sheet)},
        {"red, sheet", p.red, p.sheet},
        {"tip", p.tipText, p.tip},
    });
    for (const Pair& pair : pairs)
        EXPECT_GE(contrastRatio(pair.text, pair.ground), leastForText) << pair.what;
}

/// What is no text needs 3 to 1 to be told from its ground.
TEST_P(PaletteIn, HasSymbolsThatCanBeSeen)
{
    constexpr double leastForGraphics = 3;
    const Palette& p = GetParam().palette;
    EXPECT_GE(contrastRatio(p.accentText, p.window), leastForGraphics) << "focus ring";
    EXPECT_GE(contrastRatio(p.accent, p.card), leastForGraphics) << "a switch that is on";
    for (const QColor& ground : {p.card, p.hover, p.bar}) {
        EXPECT_GE(contrastRatio(p.greenSymbol, ground), leastForGraphics);
        EXPECT_GE(contrastRatio(p.orangeSymbol, ground), leastForGraphics);
    }
}

TEST_P(PaletteIn, HasNoColourLeftOut)
{
    const Palette& p = GetParam().palette;
    static_assert(sizeof(Palette) % sizeof(QColor) == 0);
    const auto* colors = reinterpret_cast<const QColor*>(&p);
    for (std::size_t index = 0; index < sizeof(Palette) / sizeof(QColor); ++index)
        EXPECT_TRUE(colors[index].isValid()) << "colour " << index;
}

INSTANTIATE_TEST_SUITE_P(Looks, PaletteIn,
    testing::Values(Look{"light", lightPalette()}, Look{"dark", darkPalette()}),
    [](const auto& look) { return std::string(look.param.name); });

TEST(Theme, TellsOfAnotherLook)
{
    Theme theme;
    int changes = 0;
    QObject::connect(&theme, &Theme::changed, [&changes] { ++changes; });
    EXPECT_FALSE(theme.isDark());
    theme.setDark(false);
    EXPECT_EQ(changes, 0);
    theme.setDark(true);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(theme.isDark());
    EXPECT_EQ(theme.window(), darkPalette().window);
}

TEST(Theme, TellsActionTypesApart)
{
    for (const bool isDark : {false, true}) {
        QList<QRgb> colors{Theme::typeColor(QStringLiteral("unknown"), isDark).rgb()};
        EXPECT_EQ(colors.first(), (isDark ? darkPalette() : lightPalette()).text.rgb());
        for (const char* type : {"launchApp", "openURL", "quickText", "shellScript", "systemAction"}) {
            const QRgb color = Theme::typeColor(QString::fromUtf8(type), isDark).rgb();
            EXPECT_FALSE(colors.contains(color)) << type;
            colors.append(color);
        }
    }
}

} // namespace
} // namespace Tavrin
