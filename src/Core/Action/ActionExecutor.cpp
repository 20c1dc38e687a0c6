#include "Core/Action/ActionExecutor.h"

#include "Core/Action/DynamicVariables.h"
#include "Core/Support/Diagnostics.h"

#include <QPointer>

namespace Tavrin {
namespace {

ActionExecutor* sharedExecutor = nullptr;

/// One press of a quick text must give one text, however the key bounces. Seconds.
constexpr double debounceInterval = 0.35;
/// Times since 1970 are not exact in binary: what is this near to the interval is the interval.
constexpr double timeResolution = 1e-6;

/// Before the paste is pressed, so that the focus has settled. Seconds.
constexpr double pasteDelay = 0.12;
/// The same where our own window had to go first.
constexpr double pasteDelayAfterHiding = 0.25;
/// Until the pasted-into program has surely read the clipboard. Seconds.
constexpr double restoreDelay = 0.8;

/// How the reference system carries out an action decides what its failures say.
enum class Mechanism { process, appleScript, shellScript };

Mechanism mechanism(SystemActionType action)
{
    switch (action) {
    case SystemActionType::lockScreen:
    case SystemActionType::sleepDisplay:
    case SystemActionType::screenshotToClipboard:
    case SystemActionType::openMissionControl:
    case SystemActionType::restartFinder:
    case SystemActionType::restartDock:
        return Mechanism::process;
    case SystemActionType::sleepMac:
    case SystemActionType::toggleDarkMode:
    case SystemActionType::toggleMute:
    case SystemActionType::volumeUp:
    case SystemActionType::volumeDown:
    case SystemActionType::emptyTrash:
        return Mechanism::appleScript;
    case SystemActionType::toggleHiddenFiles:
        return Mechanism::shellScript;
    }
    return Mechanism::process;
}

void printScriptError(const QString& reason)
{
    Diagnostics::printLine(u"Lỗi thực thi script: " + reason);
}

void printAppleScriptError(const QString& reason)
{
    Diagnostics::printLine(u"AppleScript error: " + reason);
}

} // namespace

ActionExecutor::ActionExecutor(const ActionServices& services)
    : m_services(services)
{
    if (!sharedExecutor)
        sharedExecutor = this;
}

ActionExecutor::~ActionExecutor()
{
    if (m_borrowed)
        m_services.pasteboard.write(*m_borrowed, Pasteboard::Stay::lasting);
    if (sharedExecutor == this)
        sharedExecutor = nullptr;
}

ActionExecutor& ActionExecutor::shared()
{
    Q_ASSERT_X(sharedExecutor, "ActionExecutor::shared", "no executor has been built yet");
    return *sharedExecutor;
}

void ActionExecutor::execute(const ShortcutItem& item, const ActivationContext& context)
{
    QMetaObject::invokeMethod(
        this, [this, item, context] { dispatch(item, context); }, Qt::QueuedConnection);
}

void ActionExecutor::dispatch(const ShortcutItem& item, const ActivationContext& context)
{
    switch (item.actionType) {
    case ActionType::launchApp:
        return handleOpenApp(item.actionValue, context);
    case ActionType::openURL:
        return handleOpenURL(item.actionValue, context);
    case ActionType::shellScript:
        return handleShellScript(item.actionValue);
    case ActionType::quickText:
        return handleQuickText(item.actionValue);
    case ActionType::systemAction:
        return handleSystemAction(item.actionValue);
    }
}

void ActionExecutor::handleOpenApp(const QString& target, const ActivationContext& context)
{
    const auto open = [this, target, context](const QString& location, FallbackTarget fallback) {
        m_services.workspace.openApplication(
            location, context, [self = QPointer(this), target, fallback](bool opened) {
                if (!opened && self)
                    self->m_services.workspace.openWithFallback(fallback, target);
            });
    };
    if (target.startsWith(u'/'))
        return open(target, FallbackTarget::path);

    m_services.workspace.locateApplication(
        target, [self = QPointer(this), target, open](const std::optional<QString>& location) {
            if (!self)
                return;
            if (location)
                return open(*location, FallbackTarget::bundleIdentifier);
            self->m_services.workspace.openWithFallback(
                target.contains(u'.') ? FallbackTarget::bundleIdentifier : FallbackTarget::applicationName,
                target);
        });
}

void ActionExecutor::handleOpenURL(const QString& target, const ActivationContext& context)
{
    if (const auto url = webAddress(target))
        m_services.workspace.openURL(*url, context);
}

void ActionExecutor::handleShellScript(const QString& script)
{
    m_services.scripts.runShellScript(script, printScriptError);
}

void ActionExecutor::runAppleScript(const QString& source)
{
    m_services.scripts.runAppleScript(source, printAppleScriptError);
}

void ActionExecutor::handleQuickText(const QString& actionValue)
{
    const double time = m_services.clock.secondsSince1970();
    if (time - lastPasteTime <= debounceInterval + timeResolution)
        return;
    lastPasteTime = time;

    const QuickTextPayload payload = QuickTextPayload::from(actionValue);
    const bool restores = payload.mode == QuickTextPayload::Mode::paste && payload.restoreClipboard;
    if (!restores && !mentionsClipboard(payload.text))
        return writeQuickText(payload, {});
    const auto detail = restores ? Pasteboard::Detail::allFormats : Pasteboard::Detail::string;
    m_services.pasteboard.read(detail, [self = QPointer(this), payload](const PasteboardContents& previous) {
        if (self)
            self->writeQuickText(payload, previous);
    });
}

void ActionExecutor::writeQuickText(const QuickTextPayload& payload, const PasteboardContents& previous)
{
    using Mode = QuickTextPayload::Mode;
    const QString text
        = resolveDynamicVariables(payload.text, m_services.clock.now(), previous.string.value_or(QString()));
    SavedContents saved;
    if (payload.mode == Mode::paste && payload.restoreClipboard && previous.string)
        saved = std::make_shared<const PasteboardContents>(previous);
    m_services.pasteboard.write({text, {}}, saved ? Pasteboard::Stay::passing : Pasteboard::Stay::lasting);
    if (payload.mode == Mode::copyOnly)
        return m_services.application.beep();

    if (saved)
        m_borrowed = saved;
    double delay = pasteDelay;
    if (m_services.application.isActive()) {
        m_services.application.hide();
        delay = pasteDelayAfterHiding;
    }
    m_services.clock.after(delay, [self = QPointer(this), saved] {
        if (!self)
            return;
        self->simulatePaste();
        if (!saved)
            return;
        self->m_services.clock.after(restoreDelay, [self, saved] {
            if (self)
                self->restorePasteboard(saved);
        });
    });
}

void ActionExecutor::simulatePaste()
{
    if (!m_services.pasteCommand.post())
        runAppleScript(
            QStringLiteral("tell application \"System Events\" to keystroke \"v\" using command down"));
}

void ActionExecutor::restorePasteboard(const SavedContents& saved)
{
    m_services.pasteboard.write(*saved, Pasteboard::Stay::lasting);
    if (m_borrowed == saved)
        m_borrowed.reset();
}

void ActionExecutor::handleSystemAction(const QString& actionKey)
{
    const auto action = systemActionTypeFromRawValue(actionKey);
    if (!action)
        return;
    m_services.systemActions.perform(*action, [mechanism = mechanism(*action)](const QString& reason) {
        switch (mechanism) {
        case Mechanism::process:
            return;
        case Mechanism::appleScript:
            return printAppleScriptError(reason);
        case Mechanism::shellScript:
            return printScriptError(reason);
        }
    });
}

std::optional<QUrl> webAddress(const QString& target)
{
    QString text = target.trimmed();
    if (!text.startsWith(u"http://") && !text.startsWith(u"https://"))
        text.prepend(u"https://");
    QUrl url(text, QUrl::TolerantMode);
    if (!url.isValid())
        return std::nullopt;
    return url;
}

} // namespace Tavrin
