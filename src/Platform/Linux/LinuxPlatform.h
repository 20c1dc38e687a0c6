#pragma once

#include "Platform/Linux/Appearance/DesktopAppearance.h"
#include "Platform/Linux/InstanceGuard.h"
#include "Platform/Linux/Network/FetchProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "Platform/Linux/Process/LinuxScriptRunner.h"
#include "Platform/Linux/QuitFilter.h"
#include "Platform/Linux/SettingsPages.h"
#include "Platform/Linux/SystemActions/LinuxSystemActions.h"
#include "Platform/Linux/SystemActions/X11Controls.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/Linux/X11/X11Accessibility.h"
#include "Platform/Linux/X11/X11ApplicationShell.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"
#include "Platform/Linux/X11/X11KeyCapture.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "Platform/Linux/X11/X11PasteCommand.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Platform.h"

namespace Tavrin {

/// A Linux desktop with an X server.
class LinuxPlatform : public Platform {
public:
    /// Null, after one printed line, if there is no X server. Does not return where a newer copy of the
    /// program is installed: that one runs in its place.
    static std::unique_ptr<Platform> connect();

    explicit LinuxPlatform(std::unique_ptr<X11Connection> connection);
    ~LinuxPlatform() override;

    std::vector<const char*> toolkitArguments() const override;
    void start(Requests requests) override;
    Instance instance() override;

    QString applicationSupport() const override;
    QString settingsFile() const override;

    HotKeyBackend& hotKeys() override;
    KeyCapture& keyCapture() override { return m_keyCapture; }
    AccessibilityService& accessibility() override { return m_accessibility; }
    Workspace& workspace() override;
    ScriptRunner& scripts() override { return m_scripts; }
    const std::vector<ScriptPreset>& scriptPresets() const override;
    Pasteboard& pasteboard() override { return m_pasteboard; }
    PasteCommand& pasteCommand() override;
    SystemActions& systemActions() override { return m_systemActions; }
    LoginItem& loginItem() override;
    ApplicationShell& application() override { return m_applicationShell; }
    WindowShell& windows() override { return m_applicationShell; }
    Appearance& appearance() override { return m_appearance; }
    StatusItem& statusItem() override;
    ManifestSource& manifests() override;
    UpdateInstaller& updateInstaller() override;
    std::shared_ptr<const ApplicationCatalog> applications() override;
    OpenPanel& openPanel() override;
    void releaseIdleMemory() override;

private:
    void endWithLostServer();

    InstanceGuard m_instance;
    std::unique_ptr<X11Connection> m_connection;
    X11KeyInjector m_injector;
    X11KeyCapture m_keyCapture;
    X11Accessibility m_accessibility;
    X11ApplicationShell m_applicationShell;
    DesktopAppearance m_appearance;
    ChildWatcher m_children;
    LinuxScriptRunner m_scripts;
    SettingsPages m_settingsPages;
    X11Pasteboard m_pasteboard;
    X11Controls m_controls;
    LinuxSystemActions m_systemActions;
    std::unique_ptr<X11HotKeyBackend> m_hotKeys;
    std::unique_ptr<X11PasteCommand> m_pasteCommand;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<LoginItem> m_loginItem;
    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<FetchProcess> m_manifests;
    std::unique_ptr<UpdateInstaller> m_updateInstaller;
    std::shared_ptr<const ApplicationCatalog> m_applications;
    std::unique_ptr<OpenPanel> m_openPanel;
    std::unique_ptr<TerminationSignals> m_signals;
    std::unique_ptr<QuitFilter> m_quitFilter;
    Requests m_requests;
};

} // namespace Tavrin
