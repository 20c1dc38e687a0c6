#include "Platform/Linux/Applications/ApplicationOpener.h"

#include "Core/Support/Diagnostics.h"
#include "Platform/Linux/Applications/WindowMatch.h"
#include "Platform/Linux/Applications/XcbSession.h"

#include <QFile>
#include <QStandardPaths>

namespace Tavrin {
namespace {

/// The request's own token; where none came, one that carries the time of the press, or the time now
/// where even that is unknown.
QByteArray startupIdFor(const ActivationContext& context)
{
    if (!context.token.isEmpty())
        return context.token.toUtf8();
    return DesktopLaunch::startupId(context.serverTime ? context.serverTime : XcbSession().serverTime());
}

} // namespace

ApplicationOpener::ApplicationOpener(std::function<void(pid_t)> collect)
    : m_collect(std::move(collect))
{
}

bool ApplicationOpener::open(const QString& location, const ActivationContext& context)
{
    const auto target = ApplicationLocator::resolve(location);
    if (!target)
        return false;
    if (bringToFront(*target, context.serverTime))
        return true;
    // Not ours to start: an earlier press is starting it, and its window will come to the front.
    if (!m_ledger.claim(target->key()))
        return true;
    return launch(*target, context);
}

bool ApplicationOpener::bringToFront(const ApplicationTarget& target, std::uint32_t serverTime)
{
    XcbSession session;
    const auto identity = identityOf(target, m_ledger.processOf(target.key()));
    const auto window = findWindow(identity, session.windowsFromTop(), describeProcess);
    if (!window)
        return false;
    session.activate(window, serverTime);
    m_ledger.windowSeen(target.key());
    return true;
}

bool ApplicationOpener::launch(const ApplicationTarget& target, const ActivationContext& context)
{
    const QByteArray startupId = startupIdFor(context);
    const LaunchResult result = target.entry
        ? DesktopLaunch::launchEntry(target.entry->path, {}, startupId)
        : DesktopLaunch::launchProgram({QFile::encodeName(target.executable)}, startupId);
    // Written down before the child is collected: its end must find the entry.
    if (result.launched)
        m_ledger.started(target.key(), result.pid);
    else
        m_ledger.failed(target.key());
    return collected(result).launched;
}

void ApplicationOpener::openURL(const QByteArray& address, const ActivationContext& context)
{
    const LaunchResult result = DesktopLaunch::launchDefaultHandler(address, startupIdFor(context));
    if (collected(result).launched || run({"xdg-open", address}, context).launched)
        return;
    Diagnostics::printLine(u"Không mở được địa chỉ: " + result.error);
}

void ApplicationOpener::openWithFallback(FallbackTarget kind, const QString& target)
{
    const QByteArray name = QFile::encodeName(target);
    switch (kind) {
    case FallbackTarget::path:
        if (!run({"gio", "open", name}, {}).launched)
            run({"xdg-open", name}, {});
        return;
    case FallbackTarget::bundleIdentifier:
        run({"gtk-launch", name}, {});
        return;
    case FallbackTarget::applicationName:
        return openNamed(target);
    }
}

void ApplicationOpener::openNamed(const QString& name)
{
    const QString executable = QStandardPaths::findExecutable(name);
    if (const QString location
        = executable.isEmpty() ? ApplicationLocator::locateName(name).value_or(QString()) : executable;
        !location.isEmpty())
        open(location, {});
}

LaunchResult ApplicationOpener::run(const QByteArrayList& arguments, const ActivationContext& context)
{
    return collected(DesktopLaunch::launchProgram(arguments, startupIdFor(context)));
}

const LaunchResult& ApplicationOpener::collected(const LaunchResult& result)
{
    if (result.pid > 0)
        m_collect(result.pid);
    return result;
}

} // namespace Tavrin
