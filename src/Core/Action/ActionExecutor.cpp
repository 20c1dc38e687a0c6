#include "Core/Action/ActionExecutor.h"

#include "Core/Support/Diagnostics.h"

#include <QPointer>

namespace Tavrin {
namespace {

ActionExecutor* sharedExecutor = nullptr;

} // namespace

ActionExecutor::ActionExecutor(Workspace& workspace, ScriptRunner& scripts)
    : m_workspace(workspace)
    , m_scripts(scripts)
{
    if (!sharedExecutor)
        sharedExecutor = this;
}

ActionExecutor::~ActionExecutor()
{
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
    case ActionType::systemAction:
        return Diagnostics::printLine(QStringLiteral("Bản này chưa chạy được hành động “%1” của phím tắt %2")
                                          .arg(title(item.actionType), item.name));
    }
}

void ActionExecutor::handleOpenApp(const QString& target, const ActivationContext& context)
{
    const auto open = [this, target, context](const QString& location, FallbackTarget fallback) {
        m_workspace.openApplication(
            location, context, [self = QPointer(this), target, fallback](bool opened) {
                if (!opened && self)
                    self->m_workspace.openWithFallback(fallback, target);
            });
    };
    if (target.startsWith(u'/'))
        return open(target, FallbackTarget::path);

    m_workspace.locateApplication(
        target, [self = QPointer(this), target, open](const std::optional<QString>& location) {
            if (!self)
                return;
            if (location)
                return open(*location, FallbackTarget::bundleIdentifier);
            self->m_workspace.openWithFallback(
                target.contains(u'.') ? FallbackTarget::bundleIdentifier : FallbackTarget::applicationName,
                target);
        });
}

void ActionExecutor::handleOpenURL(const QString& target, const ActivationContext& context)
{
    if (const auto url = webAddress(target))
        m_workspace.openURL(*url, context);
}

void ActionExecutor::handleShellScript(const QString& script)
{
    m_scripts.runShellScript(
        script, [](const QString& reason) { Diagnostics::printLine(u"Lỗi thực thi script: " + reason); });
}

void ActionExecutor::runAppleScript(const QString& source)
{
    m_scripts.runAppleScript(
        source, [](const QString& reason) { Diagnostics::printLine(u"AppleScript error: " + reason); });
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
