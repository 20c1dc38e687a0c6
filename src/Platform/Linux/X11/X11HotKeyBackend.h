#pragma once

#include "Core/HotKey/HotKeyBackend.h"
#include "Platform/Linux/X11/KeyboardMapping.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <QElapsedTimer>
#include <QTimer>
#include <map>
#include <optional>
#include <set>
#include <tuple>

namespace Tavrin {

class X11KeyInjector;

/// Global hotkeys by passive grabs on the root window, for key positions and whatever locks are on.
///
/// A grab turns active when its key goes down, and repeats while the key is held. Both are dealt with at
/// once and without any memory of what is down: the keyboard is given back before anything else happens,
/// and a press counts only if the keyboard itself reported one (XInput2 raw events) at the same moment,
/// which the server's own repeats do not have.
class X11HotKeyBackend : public QObject, public HotKeyBackend, private X11EventListener {
    Q_OBJECT

public:
    /// Both outlive the backend.
    X11HotKeyBackend(X11Connection& connection, X11KeyInjector& injector);
    ~X11HotKeyBackend() override;

    OSStatus installEventHandler(HotKeyEventHandler* handler) override;
    void removeEventHandler() override;
    std::vector<HotKeyRegistration> registerHotKeys(std::span<const HotKeyCombination> combinations) override;
    void setHotKeyID(EventHotKeyRef ref, EventHotKeyID hotKeyID) override;
    void unregisterHotKeys(std::span<const EventHotKeyRef> refs) override;

    /// Before keys are pressed for the user: lets a combination through to the focus if it is a hotkey
    /// here, and asks for no reports of keys. `modifiers` are bits of a key event's state, without locks.
    ///
    /// While the server handles our strokes it must have nothing to tell us: if we are dead by then, it
    /// would notice that and drop the rest of them. Sent with the next flush, like resume().
    void standAside(xcb_keycode_t keycode, std::uint16_t modifiers);
    /// Takes back what standAside() gave away. Another program may have been quicker: then the owner of
    /// the hotkeys is told a moment later.
    void resume();

private:
    /// A combination in the server's terms.
    struct Grab {
        xcb_keycode_t keycode = 0;
        std::uint16_t modifiers = 0;
        bool operator<(const Grab& other) const
        {
            return std::tie(keycode, modifiers) < std::tie(other.keycode, other.modifiers);
        }
    };
    struct HotKey {
        Grab grab;
        EventHotKeyID hotKeyID;
        bool isPending = false;
    };
    struct PressMark {
        xcb_keycode_t keycode = 0;
        xcb_timestamp_t time = 0;
        bool operator==(const PressMark&) const = default;
    };

    void handleEvent(const xcb_generic_event_t& event) override;
    void handleKeyPress(const xcb_key_press_event_t& event);
    void handleRawEvent(const xcb_ge_generic_event_t& event);

    std::optional<Grab> resolve(HotKeyCombination combination) const;
    std::vector<std::uint16_t> lockVariants() const;
    std::vector<OSStatus> grabAll(std::span<const Grab> grabs);
    void ungrab(const Grab& grab);
    void discard(EventHotKeyRef ref);
    bool meetsOldGrabs() const;
    void retryPending();
    void selectRawPresses(bool select);
    void selectMappingEvents();
    void checkMapping();

    X11Connection& m_connection;
    X11KeyInjector& m_injector;
    HotKeyEventHandler* m_handler = nullptr;
    KeyboardMapping m_mapping;
    std::map<EventHotKeyRef, HotKey> m_hotKeys;
    std::map<Grab, EventHotKeyRef> m_refs;
    /// Keys that a registration asked for in vain; a new keyboard may have them.
    std::set<xcb_keycode_t> m_missingKeys;
    /// The hotkey that is let through; 0 if none.
    EventHotKeyRef m_letThrough = 0;
    EventHotKeyRef m_nextRef = 1;
    std::optional<PressMark> m_lastRawPress;
    bool m_rawPressesSelected = false;
    QTimer m_mappingTimer;
    QTimer m_retryTimer;
    QElapsedTimer m_age;
};

} // namespace Tavrin
