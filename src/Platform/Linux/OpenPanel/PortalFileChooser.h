#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace Tavrin {

/// A connection to the session bus of its own, closed at the end. Connecting may wait for the bus: not for
/// the main thread. Used on the main thread then.
class PortalConnection {
public:
    PortalConnection();
    ~PortalConnection();
    Q_DISABLE_COPY_MOVE(PortalConnection)

    bool isConnected() const { return bus().isConnected(); }
    QDBusConnection bus() const { return QDBusConnection(m_name); }

private:
    QString m_name;
};

struct PortalAnswer {
    /// A portal has shown its panel.
    bool isAvailable = false;
    /// The chosen file; nothing if the user cancelled.
    std::optional<QString> path;
};

/// One panel of the XDG desktop portal (org.freedesktop.portal.FileChooser), in the desktop's own style. Only
/// asks asynchronously. Main thread.
class PortalFileChooser : public QObject {
    Q_OBJECT

public:
    using Completion = std::function<void(const PortalAnswer&)>;

    /// `window` is the number of an X window, or 0. The completion comes once, never from within, and may
    /// destroy this object.
    PortalFileChooser(
        std::shared_ptr<PortalConnection> connection, std::uintptr_t window, Completion completion);
    /// Closes the panel if it is open.
    ~PortalFileChooser() override;

private Q_SLOTS:
    void takeResponse(uint response, const QVariantMap& results);

private:
    void listenTo(const QString& request);
    void open(std::uintptr_t window, const QString& token);
    void answered(QDBusPendingCallWatcher* call);
    void finishSoon(const PortalAnswer& answer);
    void finish(const PortalAnswer& answer);

    std::shared_ptr<PortalConnection> m_connection;
    Completion m_completion;
    /// Object path by which the panel is known.
    QString m_request;
};

} // namespace Tavrin
