#pragma once

#include "Core/Support/Mailbox.h"
#include "Core/Update/ManifestSource.h"

namespace Tavrin {

class ChildWatcher;

/// Fetches through the helper program `tavrin-fetch`, one process for each fetch: its end, which nothing can
/// refuse, gives back what libraries of the network keep for ever, and a helper that is blocked while it
/// looks for a proxy is simply ended. Main thread.
class FetchProcess : public ManifestSource {
public:
    /// The watcher outlives this. `helper` is the path of the helper; it is looked at when a fetch starts.
    FetchProcess(ChildWatcher& children, const QString& helper);

    std::unique_ptr<ManifestFetch> fetch(
        const QUrl& address, const Limits& limits, Completion completion) override;

private:
    ChildWatcher& m_children;
    QByteArray m_helper;
    Mailbox m_mailbox;
};

} // namespace Tavrin
