#include "Core/HotKey/HotKeyManager.h"

#include "Core/Action/ActionExecutor.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Support/Diagnostics.h"

#include <algorithm>

namespace Tavrin {
namespace {

HotKeyManager* sharedManager = nullptr;

void printFailure(const QString& name, OSStatus status)
{
    Diagnostics::printLine(
        QStringLiteral("Đăng ký phím tắt thất bại cho %1: code %2").arg(name, QString::number(status)));
}

} // namespace

HotKeyManager::HotKeyManager(
    HotKeyBackend& backend, ConfigStore& store, ActionExecutor& executor, AccessibilityService& accessibility)
    : m_backend(backend)
    , m_store(store)
    , m_executor(executor)
    , m_accessibility(accessibility)
{
    const OSStatus status = m_backend.installEventHandler(this);
    m_hasHandler = status == noErr;
    if (!m_hasHandler)
        Diagnostics::printLine(
            QStringLiteral("Không thể cài đặt Carbon Event Handler trên Dispatcher: %1").arg(status));
    if (!sharedManager)
        sharedManager = this;
}

HotKeyManager::~HotKeyManager()
{
    unregisterAll();
    if (m_hasHandler)
        m_backend.removeEventHandler();
    if (sharedManager == this)
        sharedManager = nullptr;
}

HotKeyManager& HotKeyManager::shared()
{
    Q_ASSERT_X(sharedManager, "HotKeyManager::shared", "no manager has been built yet");
    return *sharedManager;
}

void HotKeyManager::syncShortcuts(std::span<const ShortcutItem> items)
{
    m_isSynchronised = true;
    unregisterAll();
    if (!m_isPaused)
        registerItems(items);
}

void HotKeyManager::setPaused(bool paused)
{
    const bool changed = m_isPaused != paused;
    m_isPaused = paused;
    if (m_isPaused)
        unregisterAll();
    else
        syncShortcuts(m_store.shortcuts());
    if (changed)
        Q_EMIT pausedChanged();
}

bool HotKeyManager::isAccessibilityGranted() const
{
    return m_accessibility.isTrusted();
}

void HotKeyManager::requestAccessibility()
{
    if (!m_accessibility.requestTrust())
        openAccessibilitySettings();
}

void HotKeyManager::openAccessibilitySettings()
{
    m_accessibility.openAccessibilitySettings();
}

void HotKeyManager::registerItems(std::span<const ShortcutItem> items)
{
    std::vector<const ShortcutItem*> enabled;
    std::vector<HotKeyCombination> combinations;
    for (const ShortcutItem& item : items) {
        if (!item.isEnabled)
            continue;
        enabled.push_back(&item);
        combinations.push_back({item.keyCode, item.modifiers});
    }
    const auto results = m_backend.registerHotKeys(combinations);
    Q_ASSERT(results.size() == combinations.size());

    for (std::size_t index = 0; index < enabled.size(); ++index) {
        const HotKeyRegistration& result = results[index];
        if (result.state != HotKeyRegistration::State::failed && result.ref != 0)
            accept(*enabled[index], result.ref);
        else
            printFailure(enabled[index]->name, result.status);
    }
}

void HotKeyManager::accept(const ShortcutItem& item, EventHotKeyRef ref)
{
    m_backend.setHotKeyID(ref, {signature, m_currentId});
    m_registeredHotKeys.emplace(m_currentId, ref);
    m_idToShortcut.emplace(m_currentId, item);
    ++m_currentId;
}

void HotKeyManager::unregisterAll()
{
    std::vector<EventHotKeyRef> refs;
    refs.reserve(m_registeredHotKeys.size());
    for (const auto& [id, ref] : m_registeredHotKeys)
        refs.push_back(ref);
    if (!refs.empty())
        m_backend.unregisterHotKeys(refs);
    m_registeredHotKeys.clear();
    m_idToShortcut.clear();
    m_currentId = 1;
}

OSStatus HotKeyManager::hotKeyPressed(const HotKeyEvent* event)
{
    if (!event)
        return eventNotHandledErr;
    // Whatever reaches this handler is ours: the signature is not compared.
    handleHotKeyPressed(event->hotKeyID.id, event->serverTime);
    return noErr;
}

void HotKeyManager::hotKeySettled(EventHotKeyRef ref, HotKeyRegistration::State state, OSStatus status)
{
    if (state != HotKeyRegistration::State::failed)
        return;
    const auto found
        = std::ranges::find_if(m_registeredHotKeys, [ref](const auto& entry) { return entry.second == ref; });
    if (found == m_registeredHotKeys.end())
        return;
    const std::uint32_t id = found->first;
    printFailure(m_idToShortcut.at(id).name, status);
    forget(id);
}

void HotKeyManager::hotKeysInvalidated()
{
    syncShortcuts(m_store.shortcuts());
}

void HotKeyManager::forget(std::uint32_t id)
{
    m_registeredHotKeys.erase(id);
    m_idToShortcut.erase(id);
}

void HotKeyManager::handleHotKeyPressed(std::uint32_t id, std::uint32_t serverTime)
{
    const auto found = m_idToShortcut.find(id);
    if (found != m_idToShortcut.end())
        m_executor.execute(found->second, ActivationContext{serverTime, {}});
}

} // namespace Tavrin
