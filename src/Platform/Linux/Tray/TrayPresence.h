#pragma once

#include <QObject>

namespace Tavrin {

/// The ways in which a desktop shows tray icons.
enum class TrayKind {
    none,
    /// A window of ours docked into the tray's (freedesktop.org System Tray Protocol).
    xembed,
    /// An object on the session bus that a host draws (StatusNotifierItem).
    statusNotifier,
};

/// Says whether there is a tray for our icon. Main thread.
class TrayPresence : public QObject {
    Q_OBJECT

public:
    /// Begins to look; the first answer comes through appeared(). Called once.
    virtual void start() = 0;

Q_SIGNALS:
    /// A tray that knows nothing of us is there now. Never twice without vanished() in between.
    void appeared(Tavrin::TrayKind kind);
    /// The tray that appeared last is gone.
    void vanished();
};

} // namespace Tavrin
