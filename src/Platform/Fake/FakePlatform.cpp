#include "Platform/Fake/FakePlatform.h"

namespace Tavrin {

void FakeWorkspace::locateApplication(const QString& bundleIdentifier, LocateCompletion completion)
{
    const auto found = applications.find(bundleIdentifier);
    completion(found == applications.end() ? std::nullopt : std::optional(found->second));
}

void FakeWorkspace::openApplication(
    const QString& location, const ActivationContext& context, OpenCompletion completion)
{
    opened.append(location);
    openTimes.append(context.serverTime);
    completion(!broken.contains(location));
}

void FakeWorkspace::openURL(const QUrl& url, const ActivationContext& /*context*/)
{
    addresses.append(QString::fromUtf8(url.toEncoded()));
}

void FakeWorkspace::openWithFallback(FallbackTarget kind, const QString& target)
{
    constexpr std::array names{"path", "identifier", "name"};
    fallbacks.append(QLatin1String(names.at(static_cast<std::size_t>(kind))) + u' ' + target);
}

void FakeScriptRunner::runShellScript(const QString& script, Failure failure)
{
    shellScripts.append(script);
    if (!failureReason.isEmpty())
        failure(failureReason);
}

void FakeScriptRunner::runAppleScript(const QString& source, Failure failure)
{
    appleScripts.append(source);
    if (!failureReason.isEmpty())
        failure(failureReason);
}

std::optional<QString> FakeLoginItem::registerItem()
{
    ++calls;
    enabled = enabled || !error;
    return error;
}

std::optional<QString> FakeLoginItem::unregisterItem()
{
    ++calls;
    enabled = enabled && error;
    return error;
}

void FakeApplicationShell::setActivationPolicy(ActivationPolicy newPolicy)
{
    policy = newPolicy;
    ++policyChanges;
}

void FakeApplicationShell::windowWillShow(std::uintptr_t /*windowId*/) { }

void FakeApplicationShell::activateWindow(std::uintptr_t /*windowId*/, const ActivationContext& /*context*/)
{
    ++activations;
}

bool FakeAccessibility::requestTrust()
{
    ++requests;
    return trusted;
}

FakePlatform::FakePlatform(const QString& folder)
    : m_folder(folder)
{
}

} // namespace Tavrin
