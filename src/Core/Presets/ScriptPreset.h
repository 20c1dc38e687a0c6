#pragma once

#include <QString>
#include <vector>

namespace Tavrin {

/// A ready-made script that the editor offers.
struct ScriptPreset {
    /// Title in the menu, and the shortcut's name unless the user has one of his own.
    QString name;
    /// One line that says what it does.
    QString desc;
    /// Symbol name.
    QString icon;
    /// For zsh.
    QString code;
};

/// The scripts for the system that the program's vocabulary comes from, in menu order. Every other
/// platform has the same entries, in the same order, doing the same job.
const std::vector<ScriptPreset>& referenceScriptPresets();

} // namespace Tavrin
