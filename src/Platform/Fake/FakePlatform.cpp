#include "Platform/Fake/FakePlatform.h"

namespace Tavrin {
namespace {

/// Holds the completion for as long as the fetch is wanted.
class FakeFetch : public ManifestFetch {
public:
    explicit FakeFetch(std::shared_ptr<ManifestSource::Completion> completion)
        : m_completion(std::move(completion))
    {
    }

private:
    std::shared_ptr<ManifestSource::Completion> m_completion;
};

/// Holds the handlers for as long as the download is wanted.
class FakeDownload : public ArchiveDownload {
public:
    explicit FakeDownload(std::shared_ptr<UpdateInstaller::DownloadHandlers> handlers)
        : m_handlers(std::move(handlers))
    {
    }

private:
    std::shared_ptr<UpdateInstaller::DownloadHandlers> m_handlers;
};

} // namespace

void FakeKeyCapture::press(std::uint32_t keyCode, std::uint32_t modifiers)
{
    // A copy: the callback may end the capture.
    const auto keyDown = m_callbacks.keyDown;
    if (keyDown)
        keyDown(keyCode, modifiers);
}

void FakeKeyCapture::lose()
{
    const auto ended = std::exchange(m_callbacks, {}).ended;
    if (ended)
        ended();
}

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

void FakePasteboard::read(Detail detail, ReadCompletion completion)
{
    reads.append(detail);
    PasteboardContents found = contents;
    if (detail == Detail::string)
        found.formats.clear();
    auto complete = [completion = std::move(completion), found = std::move(found)] { completion(found); };
    if (holdsBack)
        m_heldBack.emplace_back(std::move(complete));
    else
        complete();
}

void FakePasteboard::write(PasteboardContents newContents, Stay newStay)
{
    contents = std::move(newContents);
    stay = newStay;
    ++writes;
}

void FakePasteboard::answer()
{
    for (const auto& complete : std::exchange(m_heldBack, {}))
        complete();
}

bool FakePasteCommand::post()
{
    ++posts;
    if (posted)
        posted();
    return possible;
}

void FakeSystemActions::perform(SystemActionType action, Failure failure)
{
    performed.push_back(action);
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

void FakeApplicationShell::hide()
{
    ++hides;
    active = false;
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

std::unique_ptr<ManifestFetch> FakeManifestSource::fetch(
    const QUrl& address, const Limits& limits, Completion completion)
{
    requests.push_back({address, limits});
    auto underWay = std::make_shared<Completion>(std::move(completion));
    m_underWay = underWay;
    return std::make_unique<FakeFetch>(std::move(underWay));
}

bool FakeManifestSource::answer(const ManifestAnswer& answer)
{
    const auto completion = std::exchange(m_underWay, {}).lock();
    if (completion)
        (*completion)(answer);
    return completion != nullptr;
}

std::unique_ptr<ArchiveDownload> FakeUpdateInstaller::download(
    const QUrl& address, std::chrono::milliseconds silence, DownloadHandlers handlers)
{
    requests.push_back({address, silence});
    auto underWay = std::make_shared<DownloadHandlers>(std::move(handlers));
    m_underWay = underWay;
    return std::make_unique<FakeDownload>(std::move(underWay));
}

void FakeUpdateInstaller::install(const QString& archive, InstallCompletion completion)
{
    installed.append(archive);
    m_installing = std::move(completion);
}

bool FakeUpdateInstaller::progress(qint64 written, qint64 expected)
{
    const auto handlers = m_underWay.lock();
    if (handlers)
        handlers->progress(written, expected);
    return handlers != nullptr;
}

bool FakeUpdateInstaller::end(const DownloadResult& result)
{
    const auto handlers = std::exchange(m_underWay, {}).lock();
    if (handlers)
        handlers->ended(result);
    return handlers != nullptr;
}

void FakeUpdateInstaller::answerInstall(const std::optional<QString>& error)
{
    if (const InstallCompletion completion = std::exchange(m_installing, nullptr))
        completion(error);
}

FakePlatform::FakePlatform(const QString& folder)
    : m_folder(folder)
{
}

} // namespace Tavrin
