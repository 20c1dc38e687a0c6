#include "Platform/Linux/SystemActions/X11Controls.h"

#include "Core/Support/Companion.h"

namespace Tavrin {
namespace {

VolumeChange volumeChange(SystemActionType action)
{
    switch (action) {
    case SystemActionType::volumeUp:
        return VolumeChange::up;
    case SystemActionType::volumeDown:
        return VolumeChange::down;
    default:
        return VolumeChange::toggleMute;
    }
}

} // namespace

X11Controls::X11Controls(X11Connection& connection, ChildWatcher& children)
    : m_connection(connection)
    , m_children(children)
    , m_displayPower(connection)
{
}

bool X11Controls::hasDisplayPower()
{
    return m_displayPower.isAvailable();
}

void X11Controls::turnDisplayOff(std::function<void(bool isOff)> done)
{
    done(m_displayPower.turnOff());
}

void X11Controls::whenKeysAreUp(std::function<void()> block)
{
    if (!m_keys)
        m_keys = std::make_unique<KeyReleaseWait>(m_connection);
    m_keys->whenKeysAreUp(std::move(block));
}

void X11Controls::changeVolume(SystemActionType action, SystemActions::Failure failure)
{
    if (!m_volume)
        m_volume = std::make_unique<VolumeControl>(
            m_children, companionFile(QStringLiteral("tavrin-sound")), VolumeControl::Limits());
    m_volume->change(volumeChange(action), std::move(failure));
}

} // namespace Tavrin
