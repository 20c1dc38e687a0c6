#pragma once

#include "Core/Presets/ScriptPreset.h"

#include <vector>

namespace Tavrin {

/// The ready-made scripts for a Linux desktop: the entries of referenceScriptPresets() in the same order,
/// each doing the same job. Names and descriptions differ only where those name another system's program.
const std::vector<ScriptPreset>& linuxScriptPresets();

} // namespace Tavrin
