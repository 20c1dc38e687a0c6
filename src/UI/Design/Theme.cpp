#include "UI/Design/Theme.h"

#include "Core/Model/ActionType.h"

namespace Tavrin {

void Theme::setDark(bool isDark)
{
    const Palette* palette = isDark ? &darkPalette() : &lightPalette();
    if (std::exchange(m_palette, palette) != palette)
        Q_EMIT changed();
}

void Theme::setPixelRatio(double pixelRatio)
{
    if (std::exchange(m_pixelRatio, pixelRatio) != pixelRatio)
        Q_EMIT pixelRatioChanged();
}

QColor Theme::typeColor(const QString& type, bool isDark)
{
    const Palette& palette = isDark ? darkPalette() : lightPalette();
    const std::optional<ActionType> known = actionTypeFromRawValue(type);
    if (!known)
        return palette.text;
    switch (*known) {
    case ActionType::launchApp:
        return palette.applicationType;
    case ActionType::openURL:
        return palette.addressType;
    case ActionType::quickText:
        return palette.textType;
    case ActionType::shellScript:
        return palette.scriptType;
    case ActionType::systemAction:
        return palette.systemType;
    }
    return palette.text;
}

QColor Theme::tint(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

} // namespace Tavrin
