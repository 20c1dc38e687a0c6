#pragma once

#include "Core/Action/ScriptRunner.h"
#include "Core/Action/Workspace.h"
#include "Core/Model/ShortcutItem.h"

#include <QObject>

namespace Tavrin {

/// Carries out the action of a shortcut. Fire and forget: nothing is returned, failures are printed.
class ActionExecutor : public QObject {
    Q_OBJECT

public:
    /// The services must outlive the executor.
    ActionExecutor(Workspace& workspace, ScriptRunner& scripts);
    ~ActionExecutor() override;

    /// The executor of the running program; set by the composition root.
    static ActionExecutor& shared();

    /// Schedules the action on the main thread and returns. May be called on any thread; actions run
    /// in the order of the calls. Runs disabled shortcuts too: gating is the caller's business.
    void execute(const ShortcutItem& item, const ActivationContext& context = {});

    /// Runs AppleScript source in the background; an error is printed.
    void runAppleScript(const QString& source);

private:
    void dispatch(const ShortcutItem& item, const ActivationContext& context);
    void handleOpenApp(const QString& target, const ActivationContext& context);
    void handleOpenURL(const QString& target, const ActivationContext& context);
    void handleShellScript(const QString& script);

    Workspace& m_workspace;
    ScriptRunner& m_scripts;
};

/// The address that `target` means: trimmed, "https://" in front unless it begins with "http://" or
/// "https://" (case matters). Nothing if that does not parse.
std::optional<QUrl> webAddress(const QString& target);

} // namespace Tavrin
