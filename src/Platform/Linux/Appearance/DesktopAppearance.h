#pragma once

#include "Core/Shell/Appearance.h"
#include "Platform/Linux/Appearance/ColorSchemePortal.h"
#include "Platform/Linux/Appearance/XSettings.h"

#include <optional>

namespace Tavrin {

/// The portal's color scheme; where it has none, the theme of the X11 programs; else light. The settings of
/// X11 are read at once, so that the first frame has them while the portal has yet to answer. Main thread.
class DesktopAppearance : public Appearance {
public:
    /// Asks nobody before start().
    explicit DesktopAppearance(X11Connection& connection);

    void start() override;

private:
    void evaluate();

    X11Connection& m_connection;
    std::optional<XSettings> m_settings;
    std::optional<ColorSchemePortal> m_portal;
};

} // namespace Tavrin
