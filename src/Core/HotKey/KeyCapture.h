#pragma once

#include <cstdint>
#include <functional>

namespace Tavrin {

/// Holds the keyboard while the user shows a combination, so that combinations which belong to the
/// desktop or to our own hotkeys are captured and do not fire. Main thread.
class KeyCapture {
public:
    struct Callbacks {
        /// A key went down that is no modifier: its virtual key code, and the Carbon mask of what is held.
        std::function<void(std::uint32_t keyCode, std::uint32_t modifiers)> keyDown;
        /// The keyboard could not be had, or the user has gone to another program; the capture has ended.
        std::function<void()> ended;
    };

    virtual ~KeyCapture() = default;

    /// Takes the keyboard. A capture under way goes on with the new callbacks. A failure is reported
    /// later, by `ended`.
    virtual void start(Callbacks callbacks) = 0;
    /// Gives the keyboard back, before it returns. Neither callback is called afterwards.
    virtual void stop() = 0;
};

} // namespace Tavrin
