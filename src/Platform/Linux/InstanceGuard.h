#pragma once

#include "Core/Action/Workspace.h"

#include <QObject>
#include <QVariantMap>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>

namespace Tavrin {

/// Holds the program's name on the session bus, so that a second start finds the first and wakes it
/// through org.freedesktop.Application (Desktop Entry Specification, D-Bus activation). All bus calls run
/// on a thread of their own: a bus that does not answer costs the guard, not the start.
class InstanceGuard : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Role {
        first, ///< The name is ours.
        second, ///< Another instance has it and was asked to come forward.
        unknown, ///< There is no bus, or it does not answer.
    };

    /// Starts asking. `context` is handed to the first instance if there is one.
    explicit InstanceGuard(const ActivationContext& context);
    ~InstanceGuard() override;

    /// The answer, waited for at most this long.
    Role role(std::chrono::milliseconds limit);

    /// The startup id or activation token of this start; empty if it has none.
    const QString& token() const { return m_token; }

    /// `handler` runs on the main thread each time another start asks us to come forward.
    void setActivationHandler(std::function<void(const ActivationContext&)> handler);

public Q_SLOTS:
    // The interface's three methods; their names are the protocol's.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(
        const QString& name, const QVariantList& parameters, const QVariantMap& platformData);

private:
    struct Lease;
    static Role claimName(Lease& lease, const ActivationContext& context);

    void restoreBusAddress();

    QString m_token;
    std::shared_ptr<Lease> m_lease;
    std::shared_future<Role> m_role;
    std::function<void(const ActivationContext&)> m_handler;
    /// The session bus's address while another one stands in for it.
    std::optional<QByteArray> m_hiddenAddress;
    bool m_hasEarlyActivation = false;
    ActivationContext m_earlyActivation;
};

/// The startup id and activation token that this process was started with, removed from its environment
/// so that no child takes them for its own.
ActivationContext takeActivationFromEnvironment();

/// Server time at the end of a startup id ("..._TIME123", Startup Notification Specification); 0 if none.
std::uint32_t startupTime(const QString& startupId);

} // namespace Tavrin
