#include "App/AppDelegate.h"

#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// The automatic update check leaves the launch alone.
constexpr auto updateCheckDelay = 2s;

/// After the last thing that needed the views; long enough to be past the silent update check, too.
constexpr auto restDelay = 4s;

} // namespace

AppDelegate::AppDelegate(Platform& platform, AppSettings& settings, MainWindowFactory& windows)
    : m_platform(platform)
    , m_settings(settings)
    , m_windows(windows)
{
    // A timer without delay comes after what the display server has sent, and the queued call after what
    // that has set off: a press between two steps is answered before the next one.
    m_launchTimer.setInterval(0);
    m_launchTimer.setSingleShot(true);
    connect(&m_launchTimer, &QTimer::timeout, this, &AppDelegate::takeLaunchStep, Qt::QueuedConnection);
    m_restTimer.setSingleShot(true);
    m_restTimer.setInterval(restDelay);
    connect(&m_restTimer, &QTimer::timeout, this, &AppDelegate::rest);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::rest()
{
    if (m_mainWindow)
        m_mainWindow->rest();
    // After what the window lets go of at the next turn of the loop.
    QMetaObject::invokeMethod(
        this, [this] { m_platform.releaseIdleMemory(); }, Qt::QueuedConnection);
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_settings.applyDockPolicy();
    m_store = std::make_unique<ConfigStore>(m_platform.applicationSupport());
    m_executor = std::make_unique<ActionExecutor>(ActionServices{
        m_platform.workspace(),
        m_platform.scripts(),
        m_platform.pasteboard(),
        m_platform.pasteCommand(),
        m_platform.systemActions(),
        m_platform.application(),
        m_clock,
    });
    m_hotKeys = std::make_unique<HotKeyManager>(
        m_platform.hotKeys(), *m_store, *m_executor, m_platform.accessibility());
    m_hotKeys->syncShortcuts(m_store->shortcuts());
    m_updates = std::make_unique<UpdateService>(m_platform.manifests(), m_platform.updateInstaller());
    connect(m_updates.get(), &UpdateService::terminationRequested, this, &AppDelegate::quitApp);
    m_launchSteps = {
        [this] { setupStatusBar(); },
        // Asked now, the desktop has answered by the window's first frame.
        [this] { m_platform.appearance().start(); },
        [this] { m_windows.prepare(); },
        [this] { createMainWindow(); },
        [this] {
            if (m_mainWindow)
                showMainWindow();
        },
        [this] { scheduleUpdateCheck(); },
    };
    m_launchTimer.start();
}

void AppDelegate::takeLaunchStep()
{
    const auto step = std::move(m_launchSteps.front());
    m_launchSteps.pop_front();
    step();
    if (!m_launchSteps.empty())
        m_launchTimer.start();
}

void AppDelegate::setupStatusBar()
{
    StatusItem& item = m_platform.statusItem();
    item.setMenu([this] { return menuNeedsUpdate(); });
    item.setActivated([this] { showMainWindow(); });
    const auto refresh = [&item] { item.refresh(); };
    connect(m_store.get(), &ConfigStore::shortcutsChanged, this, refresh);
    connect(&m_settings, &AppSettings::launchAtLoginChanged, this, refresh);
    connect(&m_settings, &AppSettings::hideDockIconChanged, this, refresh);
    connect(m_hotKeys.get(), &HotKeyManager::pausedChanged, this, refresh);
    connect(m_updates.get(), &UpdateService::changed, this, refresh);
    item.show();
}

void AppDelegate::scheduleUpdateCheck()
{
    QTimer::singleShot(
        updateCheckDelay, Qt::PreciseTimer, this, [this] { m_updates->checkForUpdates(/*manual=*/false); });
}

void AppDelegate::showMainWindow()
{
    showMainWindow({});
}

void AppDelegate::createMainWindow()
{
    if (!m_mainWindow)
        m_mainWindow = m_windows.createMainWindow({
            *m_store,
            *m_hotKeys,
            *m_executor,
            m_settings,
            *m_updates,
            m_notifications,
            m_platform.windows(),
            m_platform.applications(),
            m_platform.openPanel(),
            m_platform.keyCapture(),
            m_platform.appearance(),
            [this]() -> const std::vector<ScriptPreset>& { return m_platform.scriptPresets(); },
            [this] { return windowShouldClose(); },
        });
}

void AppDelegate::showMainWindow(const ActivationContext& context)
{
    // A second start can be quicker than our own; the launch shows the window in any case.
    if (!m_updates)
        return;
    createMainWindow();
    if (m_mainWindow)
        m_mainWindow->show(context);
    restSoon();
}

void AppDelegate::showGuideWindow()
{
    showMainWindow();
    m_notifications.post(Notification::selectGuideTab);
}

void AppDelegate::showAuthorWindow()
{
    showMainWindow();
    m_notifications.post(Notification::selectAuthorTab);
}

void AppDelegate::showOnboardingWizard()
{
    showMainWindow();
    m_settings.setShowOnboarding(true);
}

void AppDelegate::checkForUpdates()
{
    showMainWindow();
    m_updates->checkForUpdates(/*manual=*/true);
}

void AppDelegate::triggerShortcutFromMenu(const ShortcutItem& item)
{
    // By hand, so neither the item's switch nor the pause stands in the way.
    m_executor->execute(item);
}

void AppDelegate::toggleLaunchAtLogin()
{
    m_settings.setLaunchAtLogin(!m_settings.launchAtLogin());
}

void AppDelegate::toggleHideDock()
{
    m_settings.setHideDockIcon(!m_settings.hideDockIcon());
}

void AppDelegate::togglePause()
{
    m_hotKeys->setPaused(!m_hotKeys->isPaused());
}

void AppDelegate::quitApp()
{
    Q_EMIT terminateRequested();
}

bool AppDelegate::windowShouldClose()
{
    m_mainWindow->hide();
    restSoon();
    return false;
}

void AppDelegate::applicationShouldHandleReopen(const ActivationContext& context)
{
    showMainWindow(context);
}

StatusMenuContent AppDelegate::menuNeedsUpdate()
{
    return statusMenuContent(*m_store, m_settings, *m_hotKeys, *m_updates, *this);
}

void AppDelegate::restSoon()
{
    m_restTimer.start();
}

} // namespace Tavrin
