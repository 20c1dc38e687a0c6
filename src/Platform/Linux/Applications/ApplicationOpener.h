#pragma once

#include "Core/Action/Workspace.h"
#include "Platform/Linux/Applications/ApplicationLocator.h"
#include "Platform/Linux/Applications/DesktopLaunch.h"
#include "Platform/Linux/Applications/LaunchLedger.h"

namespace Tavrin {

/// What the workspace does on its worker threads: every function may take as long as disk, X server
/// and session bus do, and may run on several threads at once.
class ApplicationOpener {
public:
    /// `collect` is handed every child that was started; called on the thread that started it.
    explicit ApplicationOpener(std::function<void(pid_t)> collect);

    /// Brings the application at `location` to the front, or starts it; true also while it is starting.
    bool open(const QString& location, const ActivationContext& context);
    /// Hands the address to the default handler of its scheme, else to xdg-open; prints why if neither
    /// can be started.
    void openURL(const QByteArray& address, const ActivationContext& context);
    /// Starts the desktop's generic opener; silent about failures.
    void openWithFallback(FallbackTarget kind, const QString& target);
    /// A child that was handed to `collect` has ended.
    void childEnded(pid_t process) { m_ledger.ended(process); }

private:
    bool bringToFront(const ApplicationTarget& target, std::uint32_t serverTime);
    bool launch(const ApplicationTarget& target, const ActivationContext& context);
    void openNamed(const QString& name);
    LaunchResult run(const QByteArrayList& arguments, const ActivationContext& context);
    const LaunchResult& collected(const LaunchResult& result);

    std::function<void(pid_t)> m_collect;
    LaunchLedger m_ledger;
};

} // namespace Tavrin
