#include "Platform/Linux/QuitFilter.h"

#include <QCoreApplication>
#include <QEvent>

namespace Tavrin {

QuitFilter::QuitFilter(std::function<void()> quit)
    : m_quit(std::move(quit))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool QuitFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != QCoreApplication::instance() || event->type() != QEvent::Quit)
        return QObject::eventFilter(watched, event);
    m_quit();
    return true;
}

} // namespace Tavrin
