#pragma once

#include "Core/HotKey/KeyCapture.h"
#include "Platform/Linux/X11/FocusLoss.h"
#include "Platform/Linux/X11/KeyboardMapping.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <QTimer>
#include <bitset>

namespace Tavrin {

/// Captures keys by an active grab of the whole keyboard, before which every other program's key
/// combinations give way. On a connection of its own, made for each capture: as another client than the
/// one that holds our hotkeys it keeps them from firing, too, and whatever ends the capture, be it the
/// end of the program, gives the keyboard back. It ends when the focus leaves this program's windows: what is
/// typed there is not for us.
class X11KeyCapture : public QObject, public KeyCapture, private X11EventListener {
    Q_OBJECT

public:
    X11KeyCapture();
    ~X11KeyCapture() override;

    void start(Callbacks callbacks) override;
    void stop() override;

private:
    void grab();
    void end();
    void handleEvent(const xcb_generic_event_t& event) override;
    void handleKeyPress(const xcb_key_press_event_t& event);
    std::uint32_t carbonModifiers(std::uint16_t state) const;

    Callbacks m_callbacks;
    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<FocusLoss> m_focusLoss;
    KeyboardMapping m_mapping;
    /// Key codes of modifiers, and of keys that have been down since before the capture: neither is what
    /// the user shows.
    std::bitset<256> m_modifierKeys;
    std::bitset<256> m_heldBefore;
    QTimer m_retryTimer;
    int m_attempts = 0;
};

} // namespace Tavrin
