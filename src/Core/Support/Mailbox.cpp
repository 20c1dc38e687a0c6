#include "Core/Support/Mailbox.h"

namespace Tavrin {

Mailbox::Mailbox()
{
    m_state->receiver = &m_receiver;
}

Mailbox::~Mailbox()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->receiver = nullptr;
}

void Mailbox::Address::post(std::function<void()> call) const
{
    const std::lock_guard lock(m_state->mutex);
    if (m_state->receiver)
        QMetaObject::invokeMethod(m_state->receiver, std::move(call), Qt::QueuedConnection);
}

} // namespace Tavrin
