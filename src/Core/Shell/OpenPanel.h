#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace Tavrin {

/// A panel that has been asked for. Closes it when destroyed; its completion does not come any more then.
class OpenPanelRequest {
public:
    virtual ~OpenPanelRequest() = default;
};

/// The desktop's own panel for choosing a file. Main thread; nothing blocks.
class OpenPanel {
public:
    /// The chosen file, absolute; nothing if the user cancelled or there is no panel.
    using Completion = std::function<void(std::optional<QString> path)>;

    virtual ~OpenPanel() = default;

    /// Asks for an application's file, in front of the window with this native id (0 if there is none). The
    /// completion comes once, never from within, and may destroy the request.
    virtual std::unique_ptr<OpenPanelRequest> chooseApplication(std::uintptr_t window, Completion completion)
        = 0;
};

} // namespace Tavrin
