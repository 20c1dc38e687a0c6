#pragma once

#include "Core/Action/ActionClock.h"
#include "Core/Action/ActionExecutor.h"
#include "Core/HotKey/HotKeyManager.h"
#include "Core/Shell/MainWindow.h"
#include "Core/Shell/NotificationCenter.h"
#include "Core/Shell/StatusMenu.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"
#include "Platform/Platform.h"

#include <QObject>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>

namespace Tavrin {

/// Brings the services up in order, owns the one window, and carries out what the status menu asks for.
/// Main thread only.
class AppDelegate : public QObject, public StatusMenuTarget {
    Q_OBJECT

public:
    /// All three outlive the delegate.
    AppDelegate(Platform& platform, AppSettings& settings, MainWindowFactory& windows);
    ~AppDelegate() override;

    /// The launch sequence; once, at the first turn of the event loop. Hotkeys are live when it returns;
    /// the tray and the window follow in the next turns, so that a press is answered in between.
    void applicationDidFinishLaunching();

    void showMainWindow() override;
    void showMainWindow(const ActivationContext& context);
    void showGuideWindow() override;
    void showOnboardingWizard() override;
    void showAuthorWindow() override;
    void checkForUpdates() override;
    void triggerShortcutFromMenu(const ShortcutItem& item) override;
    void toggleLaunchAtLogin() override;
    void toggleHideDock() override;
    void togglePause() override;
    void quitApp() override;

    /// Hides the window and answers that it must not close.
    bool windowShouldClose();

    /// The program was started again or its icon was clicked: shows the window, in front.
    void applicationShouldHandleReopen(const ActivationContext& context);

    /// Entries of the status menu, as of now.
    StatusMenuContent menuNeedsUpdate();

    MainWindow* mainWindow() const { return m_mainWindow.get(); }
    NotificationCenter& notifications() { return m_notifications; }

Q_SIGNALS:
    /// The user wants the program to end.
    void terminateRequested();

private:
    void takeLaunchStep();
    void setupStatusBar();
    void createMainWindow();
    void scheduleUpdateCheck();
    void restSoon();
    void rest();

    Platform& m_platform;
    AppSettings& m_settings;
    MainWindowFactory& m_windows;
    NotificationCenter m_notifications;
    SystemClock m_clock;
    std::unique_ptr<ConfigStore> m_store;
    std::unique_ptr<ActionExecutor> m_executor;
    std::unique_ptr<HotKeyManager> m_hotKeys;
    std::unique_ptr<UpdateService> m_updates;
    std::unique_ptr<MainWindow> m_mainWindow;
    std::deque<std::function<void()>> m_launchSteps;
    QTimer m_launchTimer;
    QTimer m_restTimer;
};

} // namespace Tavrin
