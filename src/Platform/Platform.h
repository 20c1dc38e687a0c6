#pragma once

#include "Core/Action/PasteCommand.h"
#include "Core/Action/Pasteboard.h"
#include "Core/Action/ScriptRunner.h"
#include "Core/Action/SystemActions.h"
#include "Core/Action/Workspace.h"
#include "Core/Applications/ApplicationCatalog.h"
#include "Core/HotKey/HotKeyBackend.h"
#include "Core/HotKey/HotKeyManager.h"
#include "Core/HotKey/KeyCapture.h"
#include "Core/Presets/ScriptPreset.h"
#include "Core/Shell/Appearance.h"
#include "Core/Shell/ApplicationShell.h"
#include "Core/Shell/MainWindow.h"
#include "Core/Shell/OpenPanel.h"
#include "Core/Shell/StatusItem.h"
#include "Core/Storage/LoginItem.h"
#include "Core/Update/ManifestSource.h"
#include "Core/Update/UpdateInstaller.h"

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace Tavrin {

/// One operating system behind the core's interfaces. Main thread.
class Platform {
public:
    /// What this program is in its session.
    enum class Instance {
        first, ///< The one instance, or there is no way to know.
        second, ///< Another one runs; it has been asked to show its window.
    };

    /// What the system wants of the program, at any time after start().
    struct Requests {
        /// Show the window: the program was started a second time.
        std::function<void(const ActivationContext&)> reopen;
        /// The system has no page of its own for what the user needs to know: show ours.
        std::function<void()> showGuide;
        /// End cleanly with this exit code.
        std::function<void(int exitCode)> terminate;
    };

    /// Connects to the system; before the application object exists. Null, after one printed line, if
    /// the program cannot run here.
    static std::unique_ptr<Platform> create();

    virtual ~Platform() = default;

    /// Options for the toolkit's application object, as on its command line.
    virtual std::vector<const char*> toolkitArguments() const { return {}; }

    /// To be called once the application object exists.
    virtual void start(Requests requests) = 0;
    /// Settles which instance this is; within a second, whatever the session bus does.
    virtual Instance instance() = 0;

    /// Folder that holds the applications' own folders with user data.
    virtual QString applicationSupport() const = 0;
    /// The file of the user defaults.
    virtual QString settingsFile() const = 0;

    virtual HotKeyBackend& hotKeys() = 0;
    virtual KeyCapture& keyCapture() = 0;
    virtual AccessibilityService& accessibility() = 0;
    virtual Workspace& workspace() = 0;
    virtual ScriptRunner& scripts() = 0;
    /// The ready-made scripts for this system.
    virtual const std::vector<ScriptPreset>& scriptPresets() const = 0;
    virtual Pasteboard& pasteboard() = 0;
    virtual PasteCommand& pasteCommand() = 0;
    virtual SystemActions& systemActions() = 0;
    virtual LoginItem& loginItem() = 0;
    virtual ApplicationShell& application() = 0;
    virtual WindowShell& windows() = 0;
    virtual Appearance& appearance() = 0;
    virtual StatusItem& statusItem() = 0;
    virtual ManifestSource& manifests() = 0;
    virtual UpdateInstaller& updateInstaller() = 0;
    /// Shared with threads that may outlive the platform.
    virtual std::shared_ptr<const ApplicationCatalog> applications() = 0;
    virtual OpenPanel& openPanel() = 0;

    /// The program has come to rest (its window is hidden or has been idle): memory that can be had
    /// again from disk may go.
    virtual void releaseIdleMemory() = 0;
};

} // namespace Tavrin
