#pragma once

#include "Core/Action/Workspace.h"
#include "Core/Presets/ScriptPreset.h"

#include <QtPlugin>
#include <functional>
#include <memory>

namespace Tavrin {

class ActionExecutor;
class ApplicationCatalog;
class Appearance;
class AppSettings;
class ConfigStore;
class HotKeyManager;
class KeyCapture;
class NotificationCenter;
class OpenPanel;
class UpdateService;

/// The desktop's way with our own window: taking it off the task bar, putting it in front.
class WindowShell {
public:
    virtual ~WindowShell() = default;

    /// Called with the native id of a window that exists and is about to be mapped.
    virtual void windowWillShow(std::uintptr_t windowId) = 0;
    /// Called after the window was mapped: activate it, ignoring other applications.
    virtual void activateWindow(std::uintptr_t windowId, const ActivationContext& context) = 0;
};

/// The program's one window. Main thread.
class MainWindow {
public:
    virtual ~MainWindow() = default;

    /// Maps the window if it is hidden, and brings it to the front.
    virtual void show(const ActivationContext& context) = 0;
    virtual void hide() = 0;
    virtual bool isVisible() const = 0;
    /// Nobody has needed the window for a while: where it is hidden, it lets go of what can be made again.
    virtual void rest() = 0;
};

/// What a window is built from; everything outlives it.
struct MainWindowServices {
    ConfigStore& store;
    HotKeyManager& hotKeys;
    ActionExecutor& executor;
    AppSettings& settings;
    UpdateService& updates;
    NotificationCenter& notifications;
    WindowShell& shell;
    std::shared_ptr<const ApplicationCatalog> applications;
    OpenPanel& openPanel;
    KeyCapture& keyCapture;
    Appearance& appearance;
    /// The ready-made scripts for this system.
    std::function<const std::vector<ScriptPreset>&()> scriptPresets;
    /// Answers the user's wish to close the window: true lets it close. Asked instead of closing.
    std::function<bool()> windowShouldClose;
};

/// Entry of the views library, which is loaded only when a window is first wanted: until then the
/// program carries no QML.
class MainWindowFactory {
public:
    virtual ~MainWindowFactory() = default;
    /// Does what is slow and needs no services yet; createMainWindow() does it otherwise.
    virtual void prepare() { }
    virtual std::unique_ptr<MainWindow> createMainWindow(const MainWindowServices& services) = 0;
};

} // namespace Tavrin

#define TavrinMainWindowFactoryIid "app.tavrin.Tavrin.MainWindowFactory/1"
Q_DECLARE_INTERFACE(Tavrin::MainWindowFactory, TavrinMainWindowFactoryIid)
