#pragma once

#include "Platform/Linux/X11/ManagerSelection.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <functional>
#include <optional>

namespace Tavrin {

/// The theme that the desktop's settings manager tells every X11 program (XSETTINGS, freedesktop.org), live.
/// Waits for nobody but the X server. Main thread.
class XSettings : public X11EventListener {
public:
    /// Reads the settings; `changed` is called when they, or their manager, are others.
    XSettings(X11Connection& connection, std::function<void()> changed);
    ~XSettings() override;
    XSettings(const XSettings&) = delete;
    XSettings& operator=(const XSettings&) = delete;

    /// Nothing where no manager says.
    std::optional<bool> prefersDark() const { return m_prefersDark; }

    void handleEvent(const xcb_generic_event_t& event) override;

private:
    void look();
    void read();

    X11Connection& m_connection;
    std::function<void()> m_changed;
    xcb_atom_t m_property;
    ManagerSelection m_manager;
    std::optional<bool> m_prefersDark;
};

/// The settings as they are now, read on a connection of its own; empty if nobody offers any. Waits for the X
/// server; any thread.
QByteArray readXSettings();

} // namespace Tavrin
