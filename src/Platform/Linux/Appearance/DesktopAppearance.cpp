#include "Platform/Linux/Appearance/DesktopAppearance.h"

namespace Tavrin {

DesktopAppearance::DesktopAppearance(X11Connection& connection)
    : m_connection(connection)
{
}

void DesktopAppearance::start()
{
    m_portal.emplace(QDBusConnection::sessionBus());
    connect(&*m_portal, &ColorSchemePortal::changed, this, &DesktopAppearance::evaluate);
    m_portal->start();
    m_settings.emplace(m_connection, [this] { evaluate(); });
    evaluate();
}

void DesktopAppearance::evaluate()
{
    const auto ofTheme = m_settings ? m_settings->prefersDark() : std::nullopt;
    setDark(m_portal->prefersDark().value_or(ofTheme.value_or(false)));
}

} // namespace Tavrin
