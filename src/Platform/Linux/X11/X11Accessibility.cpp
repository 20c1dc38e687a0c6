#include "Platform/Linux/X11/X11Accessibility.h"

#include "Platform/Linux/X11/X11Connection.h"

namespace Tavrin {

X11Accessibility::X11Accessibility(const X11Connection& connection, std::function<void()> openSettings)
    : m_connection(connection)
    , m_openSettings(std::move(openSettings))
{
}

bool X11Accessibility::isTrusted() const
{
    return m_connection.hasXTest();
}

bool X11Accessibility::requestTrust()
{
    return isTrusted();
}

void X11Accessibility::openAccessibilitySettings()
{
    m_openSettings();
}

} // namespace Tavrin
