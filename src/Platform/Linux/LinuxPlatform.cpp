#include "Platform/Linux/LinuxPlatform.h"

#include "Core/Support/Companion.h"
#include "Core/Support/Diagnostics.h"
#include "Platform/Linux/Applications/DesktopEntryCatalog.h"
#include "Platform/Linux/Applications/LinuxWorkspace.h"
#include "Platform/Linux/IdleMemory.h"
#include "Platform/Linux/LinuxScriptPresets.h"
#include "Platform/Linux/NewestInstallation.h"
#include "Platform/Linux/OpenPanel/LinuxOpenPanel.h"
#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Tray/TrayIconImage.h"
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "Platform/Linux/Update/LinuxUpdateInstaller.h"
#include "Platform/Linux/X11/StartupSequence.h"
#include "Platform/Linux/XdgAutostart.h"
#include "Platform/Linux/XdgPaths.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include <csignal>
#include <cstdlib>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// A second start must have ended within a second; a bus that is slower than this is taken as none.
constexpr auto instanceLimit = 800ms;

/// The window's picture in task bars can wait until the window itself is on screen.
constexpr auto windowIconDelay = 300ms;

constexpr int lostServerExitCode = 1;

QString lostServerText()
{
    return QStringLiteral("Mất kết nối với máy chủ X; Tavrin dừng lại.");
}

bool lostServerSaid = false;

void sayLostServer()
{
    if (!std::exchange(lostServerSaid, true))
        Diagnostics::printLine(lostServerText());
}

QtMessageHandler defaultMessageHandler = nullptr;

/// When the server goes, the toolkit may notice before we do; it says so in words of its own and ends the
/// process there and then. One line is enough, and it is ours.
void handleToolkitMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message.startsWith(u"The X11 connection broke")) {
        sayLostServer();
        std::_Exit(lostServerExitCode);
    }
    defaultMessageHandler(type, context, message);
}

QString fetchHelper()
{
    return companionFile(QStringLiteral("tavrin-fetch"));
}

} // namespace

LinuxPlatform::LinuxPlatform(std::unique_ptr<X11Connection> connection)
    : m_instance(takeActivationFromEnvironment())
    , m_connection(std::move(connection))
    , m_injector(*m_connection)
    , m_accessibility(*m_connection, [this] { m_settingsPages.openAccessibility(); })
    , m_appearance(*m_connection)
    , m_scripts(m_children)
    , m_settingsPages(m_children, [this] { m_requests.showGuide(); })
    , m_controls(*m_connection, m_children)
    , m_systemActions(m_children, m_pasteboard, m_controls)
{
    // A reader of our output that goes away costs a line, not the program.
    std::signal(SIGPIPE, SIG_IGN);
    defaultMessageHandler = qInstallMessageHandler(handleToolkitMessage);
}

LinuxPlatform::~LinuxPlatform()
{
    qInstallMessageHandler(nullptr);
}

std::vector<const char*> LinuxPlatform::toolkitArguments() const
{
    // We are here because there is an X server, and the windows belong where the hotkeys are: in a Wayland
    // session the toolkit would choose by itself. A desktop's own theme plugin would load that desktop's
    // whole toolkit into a program that draws everything itself.
    return {"-platform", "xcb", "-platformtheme", "generic"};
}

void LinuxPlatform::start(Requests requests)
{
    m_requests = std::move(requests);
    QObject::connect(
        m_connection.get(), &X11Connection::lost, m_connection.get(), [this] { endWithLostServer(); });
    m_connection->watch();
    m_signals = std::make_unique<TerminationSignals>(
        [this](int /*number*/) { m_requests.terminate(EXIT_SUCCESS); });
    m_quitFilter = std::make_unique<QuitFilter>([this] { m_requests.terminate(EXIT_SUCCESS); });
    QTimer::singleShot(windowIconDelay, m_connection.get(), [] { QApplication::setWindowIcon(trayIcon()); });
    m_instance.setActivationHandler([this](const ActivationContext& context) { m_requests.reopen(context); });
}

Platform::Instance LinuxPlatform::instance()
{
    if (m_instance.role(instanceLimit) != InstanceGuard::Role::second)
        return Instance::first;
    // This start shows no window of its own that would say so.
    endStartupSequence(*m_connection, m_instance.token().toUtf8());
    return Instance::second;
}

QString LinuxPlatform::applicationSupport() const
{
    return XdgPaths::dataHome();
}

QString LinuxPlatform::settingsFile() const
{
    return XdgPaths::configHome() + u"/Tavrin/Tavrin.conf";
}

HotKeyBackend& LinuxPlatform::hotKeys()
{
    if (!m_hotKeys)
        m_hotKeys = std::make_unique<X11HotKeyBackend>(*m_connection, m_injector);
    return *m_hotKeys;
}

Workspace& LinuxPlatform::workspace()
{
    if (!m_workspace)
        m_workspace = std::make_unique<LinuxWorkspace>(m_children);
    return *m_workspace;
}

const std::vector<ScriptPreset>& LinuxPlatform::scriptPresets() const
{
    return linuxScriptPresets();
}

PasteCommand& LinuxPlatform::pasteCommand()
{
    if (!m_pasteCommand) {
        hotKeys();
        m_pasteCommand = std::make_unique<X11PasteCommand>(
            PasteServices{*m_connection, m_injector, *m_hotKeys, m_pasteboard, m_pasteboard});
    }
    return *m_pasteCommand;
}

LoginItem& LinuxPlatform::loginItem()
{
    if (!m_loginItem)
        m_loginItem
            = std::make_unique<XdgAutostart>(XdgPaths::configHome(), QCoreApplication::applicationFilePath());
    return *m_loginItem;
}

StatusItem& LinuxPlatform::statusItem()
{
    if (!m_statusItem)
        m_statusItem = std::make_unique<TrayStatusItem>();
    return *m_statusItem;
}

ManifestSource& LinuxPlatform::manifests()
{
    if (!m_manifests)
        m_manifests = std::make_unique<FetchProcess>(m_children, fetchHelper());
    return *m_manifests;
}

UpdateInstaller& LinuxPlatform::updateInstaller()
{
    if (!m_updateInstaller) {
        m_updateInstaller = std::make_unique<LinuxUpdateInstaller>(m_children,
            LinuxUpdatePlaces{
                fetchHelper(), XdgPaths::runtimeDirectory(), XdgPaths::cacheHome(), QDir::homePath()});
    }
    return *m_updateInstaller;
}

std::shared_ptr<const ApplicationCatalog> LinuxPlatform::applications()
{
    if (!m_applications)
        m_applications = std::make_shared<DesktopEntryCatalog>();
    return m_applications;
}

OpenPanel& LinuxPlatform::openPanel()
{
    if (!m_openPanel)
        m_openPanel = std::make_unique<LinuxOpenPanel>(m_children);
    return *m_openPanel;
}

void LinuxPlatform::releaseIdleMemory()
{
    IdleMemory::release();
}

void LinuxPlatform::endWithLostServer()
{
    sayLostServer();
    m_requests.terminate(lostServerExitCode);
}

std::unique_ptr<Platform> LinuxPlatform::connect()
{
    becomeNewestInstallation();
    auto connection = X11Connection::open();
    if (!connection) {
        Diagnostics::printLine(
            QStringLiteral("Không kết nối được máy chủ X (DISPLAY); Tavrin cần một phiên X11."));
        return nullptr;
    }
    return std::make_unique<LinuxPlatform>(std::move(connection));
}

} // namespace Tavrin
