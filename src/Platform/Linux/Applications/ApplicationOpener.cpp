#include "Platform/Linux/Applications/ApplicationOpener.h"

#include "Core/Support/Diagnostics.h"
#include "Platform/Linux/Applications/WindowArrival.h"

#include <QFile>
#include <QStandardPaths>

namespace Tavrin {
namespace {

/// The request's own token; where none came, one that carries the time of the press.
QByteArray startupIdFor(const ActivationContext& context, std::uint32_t pressTime)
{
    return context.token.isEmpty() ? DesktopLaunch::startupId(pressTime) : context.token.toUtf8();
}

/// The same with the time now where that of the press is unknown.
QByteArray startupIdFor(const ActivationContext& context)
{
    const bool asks = context.token.isEmpty() && context.serverTime == 0;
    return startupIdFor(context, asks ? XcbSession().serverTime() : context.serverTime);
}

/// A terminal shows a window for whatever runs in it, and may hand that over to a process of its own.
WindowPromise promiseOf(const ApplicationTarget& target)
{
    const bool announced = target.entry && (target.entry->startupNotify || target.entry->terminal);
    return announced ? WindowPromise::announced : WindowPromise::none;
}

/// What the user calls an application of this role; empty where there is no choice to make.
QString kindOf(DefaultRole role)
{
    switch (role) {
    case DefaultRole::browser:
        return QStringLiteral("trình duyệt web");
    case DefaultRole::fileManager:
        return QStringLiteral("trình quản lý tệp");
    case DefaultRole::textEditor:
        return QStringLiteral("trình soạn thảo văn bản");
    case DefaultRole::terminal:
        return QStringLiteral("trình dòng lệnh");
    case DefaultRole::mail:
        return QStringLiteral("ứng dụng thư");
    case DefaultRole::calendar:
        return QStringLiteral("ứng dụng lịch");
    case DefaultRole::documentViewer:
        return QStringLiteral("trình xem tài liệu");
    case DefaultRole::imageViewer:
        return QStringLiteral("trình xem ảnh");
    case DefaultRole::videoPlayer:
        return QStringLiteral("trình phát video");
    case DefaultRole::musicPlayer:
        return QStringLiteral("trình phát nhạc");
    case DefaultRole::none:
        break;
    }
    return {};
}

void printMissing(const QString& target, DefaultRole role)
{
    Diagnostics::printLine(QStringLiteral("Không mở được %1: chưa cài %2 nào").arg(target, kindOf(role)));
}

} // namespace

ApplicationOpener::ApplicationOpener(std::function<void(pid_t)> collect)
    : m_collect(std::move(collect))
{
}

void ApplicationOpener::open(
    const QString& location, const ActivationContext& context, const std::function<void(bool)>& completion)
{
    const auto target = ApplicationLocator::resolve(location);
    if (!target)
        return completion(false);
    if (bringToFront(*target))
        return completion(true);
    // Not ours to start: an earlier press is starting it, and its window will come to the front.
    const QString key = target->key();
    if (!m_ledger.claim(key))
        return completion(true);
    WindowArrival arrival(context.serverTime);
    const LaunchResult result = launch(*target, startupIdFor(context, arrival.pressTime()));
    completion(result.launched);
    if (!result.launched)
        return;
    const auto window = arrival.await(identityOf(*target, m_ledger.lastLaunch(key)),
        [&] { return !m_hasEnded && m_ledger.isStarting(key); });
    if (!window)
        return;
    m_ledger.windowSeen(key);
    arrival.bringForward(window);
}

bool ApplicationOpener::bringToFront(const ApplicationTarget& target)
{
    XcbSession session;
    const auto identity = identityOf(target, m_ledger.lastLaunch(target.key()));
    const auto window = findWindow(identity, session.windowsFromTop(), describeProcess);
    if (!window)
        return false;
    session.activate(window);
    m_ledger.windowSeen(target.key());
    return true;
}

LaunchResult ApplicationOpener::launch(const ApplicationTarget& target, const QByteArray& startupId)
{
    const LaunchResult result = target.entry
        ? DesktopLaunch::launchEntry(target.entry->path, {}, startupId)
        : DesktopLaunch::launchProgram({QFile::encodeName(target.executable)}, startupId);
    // Written down before the child is collected: its end must find the entry.
    if (result.launched)
        m_ledger.started(target.key(), {result.pid, startupId}, promiseOf(target));
    else
        m_ledger.failed(target.key());
    if (result.lacksTerminal)
        printMissing(target.entry->localName, DefaultRole::terminal);
    return collected(result);
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
    if (const DefaultRole role = ApplicationLocator::missingRole(target); role != DefaultRole::none)
        printMissing(target, role);
    const QByteArray name = QFile::encodeName(target);
    switch (kind) {
    case FallbackTarget::path:
        // An entry is launched, not shown in the editor that its file would open in.
        if (!run({"gio", target.endsWith(desktopEntrySuffix) ? "launch" : "open", name}, {}).launched)
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
        open(location, {}, [](bool) {});
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
