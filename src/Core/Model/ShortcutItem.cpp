#include "Core/Model/ShortcutItem.h"

#include "Core/Model/KeyCodeHelper.h"

#include <QDateTime>

namespace Tavrin {

QString ShortcutItem::shortcutDisplay() const
{
    return KeyCodeHelper::combinationText(keyCode, modifiers);
}

double ShortcutItem::currentDate()
{
    // Seconds from the Unix epoch to 2001-01-01 00:00:00 UTC, the reference date of the file.
    constexpr double referenceDate = 978307200;
    return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000 - referenceDate;
}

} // namespace Tavrin
