#include "Platform/Linux/Applications/DesktopLaunch.h"

#include "Platform/Linux/Applications/BusActivation.h"
#include "Platform/Linux/Applications/TerminalEntry.h"
#include "Platform/Linux/Process/ChildProcess.h"

#include <QFile>
#include <QUrl>
#include <atomic>
#include <csignal>
#include <gio/gdesktopappinfo.h>
#include <unistd.h>

namespace Tavrin {
namespace {

/// Keeps what GIO does behind a call off the program's own main loop, as long as this object lives.
class ThreadContext {
public:
    ThreadContext()
        : m_context(g_main_context_new())
    {
        g_main_context_push_thread_default(m_context.get());
    }
    ~ThreadContext() { g_main_context_pop_thread_default(m_context.get()); }
    Q_DISABLE_COPY_MOVE(ThreadContext)

private:
    std::unique_ptr<GMainContext, GLibRelease<g_main_context_unref>> m_context;
};

void notePid(GDesktopAppInfo* /*application*/, GPid pid, gpointer child)
{
    *static_cast<pid_t*>(child) = pid;
}

/// Runs in the child between fork and exec: only calls that are safe in a signal handler.
void enterOwnSession(gpointer /*data*/)
{
    setsid();
    for (int number = 1; number < NSIG; ++number)
        signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// GIO's connection to the session bus ends the program with SIGTERM when the bus goes, unless told
/// otherwise before it is used.
GObjectPointer<GDBusConnection> survivableSessionBus()
{
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

LaunchResult spawnApplication(
    GDesktopAppInfo* application, const QByteArrayList& addresses, const QByteArray& startupId)
{
    // GIO itself would give an id only to entries with StartupNotify, though many other programs know one.
    const GObjectPointer<GAppLaunchContext> context(g_app_launch_context_new());
    g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID", startupId.constData());
    g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN", startupId.constData());
    GList* list = nullptr;
    for (const QByteArray& address : addresses)
        list = g_list_append(list, const_cast<char*>(address.constData()));
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD
        | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    pid_t pid = 0;
    GError* error = nullptr;
    const bool launched = g_desktop_app_info_launch_uris_as_manager(
        application, list, context.get(), flags, enterOwnSession, nullptr, notePid, &pid, &error);
    g_list_free(list);
    const GErrorPointer owner(error);
    return {launched, pid, error ? QString::fromUtf8(error->message) : QString()};
}

LaunchResult launch(
    GDesktopAppInfo* application, const QByteArrayList& addresses, const QByteArray& startupId)
{
    const ThreadContext events;
    const auto bus = survivableSessionBus();
    const QString name = busName(application);
    if (bus && !name.isEmpty())
        return activateOnBus(bus.get(), name, addresses, startupId);
    if (!runsInTerminal(application))
        return spawnApplication(application, addresses, startupId);
    const auto inTerminal = openedByTerminal(application);
    if (!inTerminal)
        return {false, 0, QStringLiteral("chưa cài trình dòng lệnh nào"), true};
    return spawnApplication(inTerminal.get(), addresses, startupId);
}

} // namespace

namespace DesktopLaunch {

QByteArray startupId(std::uint32_t serverTime)
{
    static std::atomic<unsigned> counter = 0;
    return "tavrin-" + QByteArray::number(getpid()) + '-' + QByteArray::number(++counter) + "_TIME"
        + QByteArray::number(serverTime);
}

LaunchResult launchEntry(const QString& path, const QByteArrayList& addresses, const QByteArray& startupId)
{
    const GObjectPointer<GDesktopAppInfo> application(
        g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
    if (!application)
        return {false, 0, QStringLiteral("không dùng được %1").arg(path)};
    return launch(application.get(), addresses, startupId);
}

LaunchResult launchDefaultHandler(const QByteArray& address, const QByteArray& startupId)
{
    const QByteArray scheme = QUrl::fromEncoded(address).scheme().toLatin1();
    const GObjectPointer<GAppInfo> handler(g_app_info_get_default_for_uri_scheme(scheme.constData()));
    if (!handler || !G_IS_DESKTOP_APP_INFO(handler.get()))
        return {false, 0, QStringLiteral("không có trình duyệt mặc định")};
    return launch(G_DESKTOP_APP_INFO(handler.get()), {address}, startupId);
}

LaunchResult launchProgram(const QByteArrayList& arguments, const QByteArray& startupId)
{
    ChildRequest request;
    request.arguments = arguments;
    request.environmentChanges = {{"DESKTOP_STARTUP_ID", startupId}, {"XDG_ACTIVATION_TOKEN", startupId}};
    const SpawnResult child = spawn(request);
    return {static_cast<bool>(child), child ? child.pid : 0, child.error};
}

} // namespace DesktopLaunch
} // namespace Tavrin
