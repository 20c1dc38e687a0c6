#include "UI/Design/Palette.h"

#include <algorithm>
#include <cmath>

namespace Tavrin {
namespace {

/// WCAG 2.1, "relative luminance".
double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

const Palette& lightPalette()
{
    static const Palette palette{
        .window = 0xf5f5f7,
        .bar = 0xfbfbfd,
        .card = 0xffffff,
        .field = 0xffffff,
        .well = 0xe6e6ea,
        .raised = 0xffffff,
        .badge = 0xe9e9ed,
        .hover = 0xe9f1fc,
        .hoverBorder = 0x86b7f2,
        .pressed = 0xdcdce1,
        .text = 0x1d1d1f,
        .secondaryText = 0x5c5c61,
        .placeholderText = 0x6e6e73,
        .separator = 0xdedee3,
        .border = 0xdedee3,
        .fieldBorder = 0xcdcdd3,
        .accent = 0x0070e0,
        .accentPressed = 0x005bb8,
        .accentText = 0x0062c4,
        .destructive = 0xd0262c,
        .onAccent = 0xffffff,
        .selection = 0xb3d7ff,
        .green = 0x147330,
        .greenSymbol = 0x1d9f3f,
        .orangeSymbol = 0xdf6800,
        .cyan = 0x0083b0,
        .yellow = 0xb98200,
        .orange = 0x964800,
        .red = 0xc4232a,
        .switchOff = 0xbdbdc4,
        .knob = 0xffffff,
        .applicationType = 0x0a7aff,
        .addressType = 0xe07b00,
        .textType = 0x1898b5,
        .scriptType = 0xa845e0,
        .systemType = 0x28a148,
        .dim = QColor(0, 0, 0, 90),
        .sheet = 0xf7f7f9,
        .tip = 0x3a3a3d,
        .tipText = 0xffffff,
    };
    return palette;
}

const Palette& darkPalette()
{
    static const Palette palette{
        .window = 0x1e1e20,
        .bar = 0x232326,
        .card = 0x2a2a2d,
        .field = 0x2c2c2f,
        .well = 0x2c2c30,
        .raised = 0x48484d,
        .badge = 0x3b3b40,
        .hover = 0x253346,
        .hoverBorder = 0x3a6ea8,
        .pressed = 0x48484d,
        .text = 0xf5f5f7,
        .secondaryText = 0xacacb2,
        .placeholderText = 0x96969c,
        .separator = 0x38383c,
        .border = 0x3e3e43,
        .fieldBorder = 0x4a4a50,
        .accent = 0x0a72e3,
        .accentPressed = 0x0a5fbd,
        .accentText = 0x64b0ff,
        .destructive = 0xd9363c,
        .onAccent = 0xffffff,
        .selection = 0x1f5fa8,
        .green = 0x3fdc62,
        .greenSymbol = 0x3fdc62,
        .orangeSymbol = 0xffa62b,
        .cyan = 0x5ac8f5,
        .yellow = 0xffd43b,
        .orange = 0xffa62b,
        .red = 0xff8078,
        .switchOff = 0x5a5a60,
        .knob = 0xffffff,
        .applicationType = 0x4aa3ff,
        .addressType = 0xffa62b,
        .textType = 0x45c8de,
        .scriptType = 0xc77df5,
        .systemType = 0x3fdc62,
        .dim = QColor(0, 0, 0, 140),
        .sheet = 0x252528,
        .tip = 0xe4e4e8,
        .tipText = 0x1d1d1f,
    };
    return palette;
}

double contrastRatio(const QColor& first, const QColor& second)
{
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor blended(const QColor& color, double opacity, const QColor& ground)
{
    const auto channel = [opacity](int top, int bottom) {
        return static_cast<int>(std::lround(top * opacity + bottom * (1 - opacity)));
    };
    return {channel(color.red(), ground.red()), channel(color.green(), ground.green()),
        channel(color.blue(), ground.blue())};
}

} // namespace Tavrin
