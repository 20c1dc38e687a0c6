#pragma once

#include "Core/Support/Mailbox.h"
#include "Core/Support/WorkerPool.h"

#include <QByteArrayList>
#include <QList>
#include <functional>

namespace Tavrin {

class ChildWatcher;

/// Opens pages of the desktop's own settings. Main thread.
class SettingsPages {
public:
    /// The watcher outlives the object; `unavailable` runs where no desktop program has the page.
    SettingsPages(ChildWatcher& watcher, std::function<void()> unavailable);

    /// Opens the accessibility page; returns at once.
    void openAccessibility();

private:
    ChildWatcher& m_watcher;
    std::function<void()> m_unavailable;
    Mailbox m_mailbox;
    WorkerPool m_workers;
};

/// The programs that show the accessibility page, that of the running desktop first. `currentDesktop` is
/// the value of $XDG_CURRENT_DESKTOP.
QList<QByteArrayList> accessibilitySettingsPrograms(const QByteArray& currentDesktop);

} // namespace Tavrin
