#pragma once

#include "Core/Action/Workspace.h"
#include "Platform/Linux/Applications/ApplicationLocator.h"
#include "Platform/Linux/Applications/DesktopLaunch.h"
#include "Platform/Linux/Applications/LaunchLedger.h"

#include <atomic>

namespace Tavrin {

/// What the workspace does on its worker threads: every function may take as long as disk, X server
/// and session bus do, and may run on several threads at once.
class ApplicationOpener {
public:
    /// `collect` is handed every child that was started; called on the thread that started it.
    explicit ApplicationOpener(std::function<void(pid_t)> collect);

    /// Brings the application at `location` to the front, or starts it. `completion` is called once, with
    /// true also while it is starting already; then the function goes on until the application has shown
    /// its window, or end() is called.
    void open(const QString& location, const ActivationContext& context,
        const std::function<void(bool opened)>& completion);
    /// Hands the address to the default handler of its scheme, else to xdg-open; prints why if neither
    /// can be started.
    void openURL(const QByteArray& address, const ActivationContext& context);
    /// Starts the desktop's generic opener. Silent about failures, but for an application of another
    /// desktop that stands for a choice of the user's (a browser, a terminal) where there is none to
    /// choose: that takes one line, or a shortcut of the first start would do nothing without a word.
    void openWithFallback(FallbackTarget kind, const QString& target);
    /// A child that was handed to `collect` has ended.
    void childEnded(pid_t process) { m_ledger.ended(process); }
    /// What waits for windows stops waiting.
    void end() { m_hasEnded = true; }

private:
    bool bringToFront(const ApplicationTarget& target);
    LaunchResult launch(const ApplicationTarget& target, const QByteArray& startupId);
    void openNamed(const QString& name);
    LaunchResult run(const QByteArrayList& arguments, const ActivationContext& context);
    const LaunchResult& collected(const LaunchResult& result);

    std::function<void(pid_t)> m_collect;
    LaunchLedger m_ledger;
    std::atomic<bool> m_hasEnded = false;
};

} // namespace Tavrin
