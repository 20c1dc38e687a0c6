#pragma once

#include "Core/Model/QuickTextPayload.h"

#include <vector>

namespace Tavrin {

/// A ready-made quick text that the editor offers.
struct QuickTextPreset {
    /// Title in the menu, and the shortcut's name unless the user has one of his own.
    QString name;
    /// May hold placeholders.
    QString text;
    QuickTextPayload::Mode mode;
};

/// All of them, in menu order.
const std::vector<QuickTextPreset>& quickTextPresets();

} // namespace Tavrin
