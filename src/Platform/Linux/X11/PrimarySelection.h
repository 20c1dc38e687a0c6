#pragma once

#include <QString>
#include <functional>

namespace Tavrin {

/// The primary selection (what a middle click pastes), borrowed for a moment: some programs paste it and
/// not the clipboard when Shift+Insert is pressed. Main thread; nothing here waits for another program.
class PrimarySelection {
public:
    virtual ~PrimarySelection() = default;

    /// Remembers the text that is on the primary selection, if any, puts `text` there, and calls `ready`
    /// later, on the main thread, once the server has us as its owner. It is not called if the server
    /// does not make us that.
    virtual void lend(const QString& text, std::function<void()> ready) = 0;

    /// Puts the remembered text back, or lets the selection go if there was none. Leaves the selection
    /// alone if another program has taken it since, and if nothing is lent.
    virtual void giveBack() = 0;
};

} // namespace Tavrin
