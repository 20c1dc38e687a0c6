#pragma once

#include "Core/Action/ActionClock.h"
#include "Core/Action/PasteCommand.h"
#include "Core/Action/Pasteboard.h"
#include "Core/Action/ScriptRunner.h"
#include "Core/Action/SystemActions.h"
#include "Core/Action/Workspace.h"
#include "Core/Model/QuickTextPayload.h"
#include "Core/Model/ShortcutItem.h"
#include "Core/Shell/ApplicationShell.h"

#include <QObject>
#include <memory>

namespace Tavrin {

/// What actions are carried out with; everything outlives the executor.
struct ActionServices {
    Workspace& workspace;
    ScriptRunner& scripts;
    Pasteboard& pasteboard;
    PasteCommand& pasteCommand;
    SystemActions& systemActions;
    ApplicationShell& application;
    ActionClock& clock;
};

/// Carries out the action of a shortcut. Fire and forget: nothing is returned, failures are printed.
class ActionExecutor : public QObject {
    Q_OBJECT

public:
    explicit ActionExecutor(const ActionServices& services);
    /// What a quick text has borrowed the clipboard from is put back now.
    ~ActionExecutor() override;

    /// The executor of the running program; set by the composition root.
    static ActionExecutor& shared();

    /// Schedules the action on the main thread and returns. May be called on any thread; actions run
    /// in the order of the calls. Runs disabled shortcuts too: gating is the caller's business.
    void execute(const ShortcutItem& item, const ActivationContext& context = {});

    /// Runs AppleScript source in the background; an error is printed.
    void runAppleScript(const QString& source);

private:
    using SavedContents = std::shared_ptr<const PasteboardContents>;

    void dispatch(const ShortcutItem& item, const ActivationContext& context);
    void handleOpenApp(const QString& target, const ActivationContext& context);
    void handleOpenURL(const QString& target, const ActivationContext& context);
    void handleQuickText(const QString& actionValue);
    void handleShellScript(const QString& script);
    void handleSystemAction(const QString& actionKey);

    void writeQuickText(const QuickTextPayload& payload, const PasteboardContents& previous);
    void simulatePaste();
    void restorePasteboard(const SavedContents& saved);

    ActionServices m_services;
    /// When the last quick text was accepted; seconds since 1970.
    double lastPasteTime = 0;
    /// What the latest quick text will put back; null when all is back.
    SavedContents m_borrowed;
};

/// The address that `target` means: trimmed, "https://" in front unless it begins with "http://" or
/// "https://" (case matters). Nothing if that does not parse.
std::optional<QUrl> webAddress(const QString& target);

} // namespace Tavrin
