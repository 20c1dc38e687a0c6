#pragma once

#include "Core/HotKey/HotKeyManager.h"
#include "Core/Presets/ScriptPreset.h"
#include "Core/Shell/MainWindow.h"
#include "Core/Shell/NotificationCenter.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"
#include "support/ActionDesk.h"

namespace Tavrin::Testing {

/// Everything that a main window works with: the program's real services on a system in memory.
struct WindowDesk {
    /// The folder holds the files; it outlives the desk.
    explicit WindowDesk(const QString& folder)
        : platform(folder)
        , store(folder)
    {
    }

    MainWindowServices services(std::function<bool()> windowShouldClose)
    {
        return {
            store,
            hotKeys,
            executor,
            settings,
            updates,
            notifications,
            platform.applicationShell,
            platform.applicationCatalog,
            platform.fakeOpenPanel,
            platform.fakeKeyCapture,
            platform.fakeAppearance,
            referenceScriptPresets,
            std::move(windowShouldClose),
        };
    }

    FakePlatform platform;
    ConfigStore store;
    AppSettings settings{platform.settingsFile(), platform.fakeLoginItem, platform.applicationShell};
    ActionDesk desk;
    ActionExecutor executor{desk.services()};
    HotKeyManager hotKeys{platform.hotKeyBackend, store, executor, platform.accessibilityService};
    UpdateService updates{platform.manifestSource, platform.fakeUpdateInstaller};
    NotificationCenter notifications;
};

} // namespace Tavrin::Testing
