#pragma once

#include "Core/Shell/StatusItem.h"

namespace Tavrin {

class AppSettings;
class ConfigStore;
class HotKeyManager;
class UpdateService;
struct ShortcutItem;

/// What the status menu's entries do; the application delegate carries them out.
class StatusMenuTarget {
public:
    virtual ~StatusMenuTarget() = default;

    virtual void showMainWindow() = 0;
    virtual void showGuideWindow() = 0;
    virtual void showOnboardingWizard() = 0;
    virtual void showAuthorWindow() = 0;
    virtual void checkForUpdates() = 0;
    virtual void triggerShortcutFromMenu(const ShortcutItem& item) = 0;
    virtual void toggleLaunchAtLogin() = 0;
    virtual void toggleHideDock() = 0;
    virtual void togglePause() = 0;
    virtual void quitApp() = 0;
};

/// The status menu as it should read now. Entries hold copies of their shortcuts, so a menu that stays
/// open runs what it shows. `target` must outlive the content.
StatusMenuContent statusMenuContent(const ConfigStore& store, const AppSettings& settings,
    const HotKeyManager& hotKeys, const UpdateService& updates, StatusMenuTarget& target);

} // namespace Tavrin
