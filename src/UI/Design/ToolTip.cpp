#include "UI/Design/ToolTip.h"

#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// Long enough that a pointer on its way elsewhere shows none.
constexpr auto restTime = 600ms;

} // namespace

ToolTip::ToolTip()
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(restTime);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_isShown = !m_target.isNull();
        Q_EMIT changed();
    });
}

void ToolTip::enter(QQuickItem* target, const QString& text)
{
    leave(m_target);
    if (text.isEmpty())
        return;
    m_target = target;
    m_text = text;
    m_timer.start();
}

void ToolTip::leave(QQuickItem* target)
{
    if (target != m_target)
        return;
    m_timer.stop();
    m_target = nullptr;
    if (std::exchange(m_isShown, false))
        Q_EMIT changed();
}

} // namespace Tavrin
