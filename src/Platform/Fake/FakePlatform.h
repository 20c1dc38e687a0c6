#pragma once

#include "Platform/Fake/FakeApplications.h"
#include "Platform/Fake/FakeHotKeyBackend.h"
#include "Platform/Platform.h"

#include <QStringList>
#include <map>

namespace Tavrin {

/// A keyboard that is played by the test.
class FakeKeyCapture : public KeyCapture {
public:
    void start(Callbacks callbacks) override { m_callbacks = std::move(callbacks); }
    void stop() override { m_callbacks = {}; }

    bool isCapturing() const { return m_callbacks.keyDown != nullptr; }
    /// The user presses a key; goes nowhere unless a capture is under way.
    void press(std::uint32_t keyCode, std::uint32_t modifiers);
    /// The keyboard goes to somebody else.
    void lose();

private:
    Callbacks m_callbacks;
};

/// Knows the applications it is told of, and records what it was asked to open.
class FakeWorkspace : public Workspace {
public:
    void locateApplication(const QString& bundleIdentifier, LocateCompletion completion) override;
    void openApplication(
        const QString& location, const ActivationContext& context, OpenCompletion completion) override;
    void openURL(const QUrl& url, const ActivationContext& context) override;
    void openWithFallback(FallbackTarget kind, const QString& target) override;

    /// Identifier to location.
    std::map<QString, QString> applications;
    /// Locations that cannot be opened.
    QStringList broken;

    QStringList opened;
    QList<std::uint32_t> openTimes;
    QStringList addresses;
    QStringList fallbacks;
};

class FakeScriptRunner : public ScriptRunner {
public:
    void runShellScript(const QString& script, Failure failure) override;
    void runAppleScript(const QString& source, Failure failure) override;

    /// Reason for which everything fails; empty for success.
    QString failureReason;
    QStringList shellScripts;
    QStringList appleScripts;
};

/// Holds what it is given and answers at once, or when it is told to.
class FakePasteboard : public Pasteboard {
public:
    void read(Detail detail, ReadCompletion completion) override;
    void write(PasteboardContents newContents, Stay newStay) override;
    /// Answers the reads that were held back.
    void answer();

    PasteboardContents contents;
    Stay stay = Stay::lasting;
    bool holdsBack = false;
    QList<Detail> reads;
    int writes = 0;

private:
    std::vector<std::function<void()>> m_heldBack;
};

class FakePasteCommand : public PasteCommand {
public:
    bool post() override;

    bool possible = true;
    int posts = 0;
    /// Called at each post.
    std::function<void()> posted;
};

class FakeSystemActions : public SystemActions {
public:
    void perform(SystemActionType action, Failure failure) override;

    /// Reason for which everything fails; empty for success.
    QString failureReason;
    std::vector<SystemActionType> performed;
};

class FakeLoginItem : public LoginItem {
public:
    bool isEnabled() const override { return enabled; }
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;

    bool enabled = false;
    std::optional<QString> error;
    int calls = 0;
};

class FakeApplicationShell : public ApplicationShell, public WindowShell {
public:
    ActivationPolicy activationPolicy() const override { return policy; }
    void setActivationPolicy(ActivationPolicy newPolicy) override;
    bool isActive() const override { return active; }
    void hide() override;
    void beep() override { ++beeps; }
    void windowWillShow(std::uintptr_t windowId) override;
    void activateWindow(std::uintptr_t windowId, const ActivationContext& context) override;

    ActivationPolicy policy = ActivationPolicy::regular;
    int policyChanges = 0;
    int activations = 0;
    bool active = false;
    int hides = 0;
    int beeps = 0;
};

class FakeAppearance : public Appearance {
public:
    void start() override { ++starts; }
    using Appearance::setDark;

    int starts = 0;
};

class FakeAccessibility : public AccessibilityService {
public:
    bool isTrusted() const override { return trusted; }
    bool requestTrust() override;
    void openAccessibilitySettings() override { ++settingsOpened; }

    bool trusted = true;
    int requests = 0;
    int settingsOpened = 0;
};

class FakeStatusItem : public StatusItem {
public:
    void setMenu(std::function<StatusMenuContent()> newContent) override { content = std::move(newContent); }
    void setActivated(std::function<void()> newActivated) override { activated = std::move(newActivated); }
    void show() override { isShown = true; }
    void refresh() override { ++refreshes; }

    std::function<StatusMenuContent()> content;
    std::function<void()> activated;
    bool isShown = false;
    int refreshes = 0;
};

/// Records what is asked for and answers when it is told to.
class FakeManifestSource : public ManifestSource {
public:
    struct Request {
        QUrl address;
        Limits limits;
    };

    std::unique_ptr<ManifestFetch> fetch(
        const QUrl& address, const Limits& limits, Completion completion) override;

    /// The last fetch is neither answered nor ended.
    bool isFetching() const { return !m_underWay.expired(); }
    /// Answers the last fetch; false if it is not under way.
    bool answer(const ManifestAnswer& answer);

    std::vector<Request> requests;

private:
    std::weak_ptr<Completion> m_underWay;
};

/// Records what is to be downloaded and installed, and goes on when it is told to.
class FakeUpdateInstaller : public UpdateInstaller {
public:
    struct Request {
        QUrl address;
        std::chrono::milliseconds silence;
    };

    std::unique_ptr<ArchiveDownload> download(
        const QUrl& address, std::chrono::milliseconds silence, DownloadHandlers handlers) override;
    void install(const QString& archive, InstallCompletion completion) override;

    /// The last download has neither ended nor been cancelled.
    bool isDownloading() const { return !m_underWay.expired(); }
    /// More of the last download arrives; false if it is not under way.
    bool progress(qint64 written, qint64 expected);
    /// The last download ends; false if it is not under way.
    bool end(const DownloadResult& result);
    /// The updater of the last install runs, or does not for this reason.
    void answerInstall(const std::optional<QString>& error);

    std::vector<Request> requests;
    QStringList installed;

private:
    std::weak_ptr<DownloadHandlers> m_underWay;
    InstallCompletion m_installing;
};

/// A system that exists in memory only: nothing is grabbed, opened or started.
class FakePlatform : public Platform {
public:
    /// User data and settings go below this folder.
    explicit FakePlatform(const QString& folder);

    void start(Requests newRequests) override { requests = std::move(newRequests); }
    Instance instance() override { return Instance::first; }
    QString applicationSupport() const override { return m_folder; }
    QString settingsFile() const override { return m_folder + u"/Tavrin.conf"; }

    HotKeyBackend& hotKeys() override { return hotKeyBackend; }
    KeyCapture& keyCapture() override { return fakeKeyCapture; }
    AccessibilityService& accessibility() override { return accessibilityService; }
    Workspace& workspace() override { return fakeWorkspace; }
    ScriptRunner& scripts() override { return scriptRunner; }
    const std::vector<ScriptPreset>& scriptPresets() const override { return referenceScriptPresets(); }
    Pasteboard& pasteboard() override { return fakePasteboard; }
    PasteCommand& pasteCommand() override { return fakePasteCommand; }
    SystemActions& systemActions() override { return fakeSystemActions; }
    LoginItem& loginItem() override { return fakeLoginItem; }
    ApplicationShell& application() override { return applicationShell; }
    WindowShell& windows() override { return applicationShell; }
    Appearance& appearance() override { return fakeAppearance; }
    StatusItem& statusItem() override { return fakeStatusItem; }
    ManifestSource& manifests() override { return manifestSource; }
    UpdateInstaller& updateInstaller() override { return fakeUpdateInstaller; }
    std::shared_ptr<const ApplicationCatalog> applications() override { return applicationCatalog; }
    OpenPanel& openPanel() override { return fakeOpenPanel; }
    void releaseIdleMemory() override { ++idleReleases; }

    FakeHotKeyBackend hotKeyBackend;
    FakeKeyCapture fakeKeyCapture;
    FakeAccessibility accessibilityService;
    FakeWorkspace fakeWorkspace;
    FakeScriptRunner scriptRunner;
    FakePasteboard fakePasteboard;
    FakePasteCommand fakePasteCommand;
    FakeSystemActions fakeSystemActions;
    FakeLoginItem fakeLoginItem;
    FakeApplicationShell applicationShell;
    FakeAppearance fakeAppearance;
    FakeStatusItem fakeStatusItem;
    FakeManifestSource manifestSource;
    FakeUpdateInstaller fakeUpdateInstaller;
    std::shared_ptr<FakeApplicationCatalog> applicationCatalog = std::make_shared<FakeApplicationCatalog>();
    FakeOpenPanel fakeOpenPanel;
    Requests requests;
    int idleReleases = 0;

private:
    QString m_folder;
};

} // namespace Tavrin
