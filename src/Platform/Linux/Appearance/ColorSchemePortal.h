#pragma once

#include <QDBusConnection>
#include <QObject>
#include <optional>

class QDBusPendingCallWatcher;

namespace Tavrin {

/// The color scheme that the desktop's portal tells (org.freedesktop.portal.Settings), live. Only asks
/// asynchronously. Main thread.
class ColorSchemePortal : public QObject {
    Q_OBJECT

public:
    explicit ColorSchemePortal(const QDBusConnection& bus);

    /// Called once. Starts the portal where it does not run yet.
    void start();

    /// Nothing while no portal has answered, and where it has no preference.
    std::optional<bool> prefersDark() const { return m_prefersDark; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void ask();

private:
    void ask(const QString& method);
    void ownerChanged(const QString& newOwner);
    void answered(QDBusPendingCallWatcher* call, const QString& method);
    void settle(std::optional<bool> prefersDark);

    QDBusConnection m_bus;
    std::optional<bool> m_prefersDark;
    /// Counts the questions, so that an answer that was overtaken is told from the present one.
    int m_question = 0;
};

} // namespace Tavrin
