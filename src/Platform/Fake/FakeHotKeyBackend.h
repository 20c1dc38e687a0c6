#pragma once

#include "Core/HotKey/HotKeyBackend.h"

#include <map>
#include <set>

namespace Tavrin {

/// A hotkey backend that keeps its registrations in memory and is driven by the test.
class FakeHotKeyBackend : public HotKeyBackend {
public:
    struct Entry {
        HotKeyCombination combination;
        EventHotKeyID hotKeyID;
    };

    OSStatus installEventHandler(HotKeyEventHandler* handler) override;
    void removeEventHandler() override;
    std::vector<HotKeyRegistration> registerHotKeys(std::span<const HotKeyCombination> combinations) override;
    void setHotKeyID(EventHotKeyRef ref, EventHotKeyID hotKeyID) override;
    void unregisterHotKeys(std::span<const EventHotKeyRef> refs) override;

    /// Delivers an event to the installed handler, if there is one.
    OSStatus deliver(const HotKeyEvent* event);
    /// Presses a combination: true if it is registered and the handler took it.
    bool press(HotKeyCombination combination, std::uint32_t serverTime = 0);
    /// Settles a pending registration.
    void settle(EventHotKeyRef ref, HotKeyRegistration::State state, OSStatus status);

    /// The keyboard changes: every registration is void.
    void invalidate();

    /// What is registered now.
    std::map<EventHotKeyRef, Entry> entries;
    /// Combinations of these key codes fail with the status given here.
    std::map<std::uint32_t, OSStatus> failures;
    /// Combinations of these key codes are accepted but not settled.
    std::set<std::uint32_t> pendingKeyCodes;
    OSStatus installStatus = noErr;
    int batches = 0;

private:
    HotKeyEventHandler* m_handler = nullptr;
    EventHotKeyRef m_nextRef = 1;
};

} // namespace Tavrin
