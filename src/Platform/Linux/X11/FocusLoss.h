#pragma once

#include "Platform/Linux/X11/X11Connection.h"

#include <functional>

namespace Tavrin {

/// Notices that the input focus goes from a window of this program to another program, or to nobody. Also
/// while the keyboard is grabbed, when the toolkit cannot tell: to it, the grab itself takes the focus.
class FocusLoss : private X11EventListener {
public:
    /// The connection outlives the object. `lost` may destroy it.
    FocusLoss(X11Connection& connection, std::function<void()> lost);
    ~FocusLoss() override;
    FocusLoss(const FocusLoss&) = delete;
    FocusLoss& operator=(const FocusLoss&) = delete;

private:
    void handleEvent(const xcb_generic_event_t& event) override;
    xcb_window_t follow();
    bool isOwnWindow(xcb_window_t window);

    X11Connection& m_connection;
    std::function<void()> m_lost;
};

} // namespace Tavrin
