#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace Tavrin {

/// Status of a hotkey call, in Carbon's numbers (CarbonEventsCore.h); any other value is a
/// system-specific failure.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus eventNotHandledErr = -9874;
/// The combination is taken, by another program or by an earlier item.
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
/// The keyboard has no such key or modifier.
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;

/// A backend's name for one registration; 0 is none.
using EventHotKeyRef = std::uint64_t;

/// The pair under which a hotkey is known to the system and comes back on a press.
struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    bool operator==(const EventHotKeyID&) const = default;
};

/// A combination to register: virtual key code and Carbon modifier mask, unchanged from the store.
struct HotKeyCombination {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    bool operator==(const HotKeyCombination&) const = default;
};

/// Outcome of one registration.
struct HotKeyRegistration {
    enum class State {
        registered, ///< Fires from now on.
        pending, ///< Accepted, outcome not known yet; hotKeySettled() follows.
        failed, ///< `status` says why; `ref` is 0.
    };
    State state = State::failed;
    OSStatus status = noErr;
    EventHotKeyRef ref = 0;
};

/// A press of a registered hotkey.
struct HotKeyEvent {
    EventHotKeyID hotKeyID;
    /// Time of the press in the display server's clock (milliseconds); 0 if unknown.
    std::uint32_t serverTime = 0;
};

/// What the owner of a backend is told. Called on the main thread.
class HotKeyEventHandler {
public:
    virtual ~HotKeyEventHandler() = default;

    /// A hotkey went down. A null event is answered with eventNotHandledErr.
    virtual OSStatus hotKeyPressed(const HotKeyEvent* event) = 0;

    /// A pending registration was settled. After State::failed the ref is dead.
    virtual void hotKeySettled(EventHotKeyRef ref, HotKeyRegistration::State state, OSStatus status) = 0;

    /// The keyboard has changed so that all registrations are void; register again.
    virtual void hotKeysInvalidated() = 0;
};

/// A system's global hotkeys. Main thread only. It knows combinations and presses, nothing of
/// shortcuts, pausing or actions.
class HotKeyBackend {
public:
    virtual ~HotKeyBackend() = default;

    /// Starts delivering presses to `handler` (not owned). noErr, or why nothing will ever fire.
    virtual OSStatus installEventHandler(HotKeyEventHandler* handler) = 0;
    virtual void removeEventHandler() = 0;

    /// Registers the whole list as one batch. One result per combination, in order.
    virtual std::vector<HotKeyRegistration> registerHotKeys(std::span<const HotKeyCombination> combinations)
        = 0;

    /// Names the id that presses of `ref` carry. Local; costs no round trip.
    virtual void setHotKeyID(EventHotKeyRef ref, EventHotKeyID hotKeyID) = 0;

    /// Frees the combinations for other programs at once. Unknown refs are ignored.
    virtual void unregisterHotKeys(std::span<const EventHotKeyRef> refs) = 0;
};

} // namespace Tavrin
