#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

namespace Tavrin {

/// Whether org.kde.StatusNotifierWatcher is on the bus and has a host that draws icons. Only asks
/// asynchronously and never starts the service. Main thread.
class StatusNotifierWatch : public QObject {
    Q_OBJECT

public:
    enum class State { unknown, absent, present };

    explicit StatusNotifierWatch(const QDBusConnection& bus);

    /// Called once; without a bus the state is absent at once.
    void start();

    State state() const { return m_state; }
    /// Unique bus name of the watcher, which differs after each restart; empty unless present.
    QString watcher() const { return m_watcher; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void ask();

private:
    void ownerChanged(const QString& newOwner);
    void answered(QDBusPendingCallWatcher* call, int question);
    void settle(State state, const QString& watcher);

    QDBusConnection m_bus;
    State m_state = State::unknown;
    QString m_watcher;
    /// Counts the questions, so that an answer that was overtaken is told from the present one.
    int m_question = 0;
};

} // namespace Tavrin
