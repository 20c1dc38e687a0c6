#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <mutex>

namespace Tavrin {

/// Lets other threads hand calls to the event loop of the thread that built it, also when the
/// mailbox may be gone by then: what arrives too late is dropped without being called.
class Mailbox {
    struct State {
        std::mutex mutex;
        QObject* receiver = nullptr;
    };

public:
    /// Where calls are posted to. Copied freely, used on any thread, valid for ever.
    class Address {
    public:
        explicit Address(std::shared_ptr<State> state)
            : m_state(std::move(state))
        {
        }
        /// Queues the call; it runs on the mailbox's thread unless the mailbox ends before.
        void post(std::function<void()> call) const;

    private:
        std::shared_ptr<State> m_state;
    };

    Mailbox();
    ~Mailbox();
    Q_DISABLE_COPY_MOVE(Mailbox)

    Address address() const { return Address(m_state); }

private:
    QObject m_receiver;
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace Tavrin
