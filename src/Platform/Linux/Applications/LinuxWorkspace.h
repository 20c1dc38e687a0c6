#pragma once

#include "Core/Action/Workspace.h"
#include "Core/Support/Mailbox.h"
#include "Core/Support/WorkerPool.h"

namespace Tavrin {

class ApplicationOpener;
class ChildWatcher;

/// Applications and addresses on a Linux desktop. Everything that may take time happens on worker
/// threads, each request on another, so that one that hangs (a launcher, a folder on a dead network)
/// holds up neither the program nor the next request. Nothing of it exists before the first request.
class LinuxWorkspace final : public Workspace {
public:
    /// `children` collects what is started; it must outlive the workspace and live on the same thread.
    explicit LinuxWorkspace(ChildWatcher& children);
    /// Does not wait for requests that hang; completions that are still to come are dropped.
    ~LinuxWorkspace() override;

    void locateApplication(const QString& bundleIdentifier, LocateCompletion completion) override;
    void openApplication(
        const QString& location, const ActivationContext& context, OpenCompletion completion) override;
    void openURL(const QUrl& url, const ActivationContext& context) override;
    void openWithFallback(FallbackTarget kind, const QString& target) override;

private:
    Mailbox m_mailbox;
    std::shared_ptr<ApplicationOpener> m_opener;
    WorkerPool m_workers;
};

} // namespace Tavrin
