#pragma once

#include "Core/HotKey/HotKeyBackend.h"
#include "Core/Model/ShortcutItem.h"

#include <QObject>
#include <map>
#include <span>

namespace Tavrin {

class ActionExecutor;
class ConfigStore;

/// Whether this program may synthesise keys for other programs. Main thread.
class AccessibilityService {
public:
    virtual ~AccessibilityService() = default;
    virtual bool isTrusted() const = 0;
    /// Asks the user for the permission; the answer so far.
    virtual bool requestTrust() = 0;
    /// Opens the page of the system's settings where the permission is given.
    virtual void openAccessibilitySettings() = 0;
};

/// Turns enabled shortcuts into global hotkeys and presses into actions. Main thread only.
class HotKeyManager : public QObject, private HotKeyEventHandler {
    Q_OBJECT

public:
    /// Signature of every hotkey id of this program: 'TvRn'.
    static constexpr std::uint32_t signature = 0x5476526E;

    /// Installs the event handler; prints one line if that fails. The services outlive the manager.
    HotKeyManager(HotKeyBackend& backend, ConfigStore& store, ActionExecutor& executor,
        AccessibilityService& accessibility);
    /// Unregisters everything.
    ~HotKeyManager() override;

    /// The manager of the running program; set by the composition root.
    static HotKeyManager& shared();

    /// Replaces all registrations by those for the enabled items, in list order; none while paused.
    void syncShortcuts(std::span<const ShortcutItem> items);
    /// syncShortcuts has been called.
    bool isSynchronised() const { return m_isSynchronised; }

    bool isPaused() const { return m_isPaused; }
    /// Pausing unregisters everything; resuming registers the enabled shortcuts of the store anew.
    void setPaused(bool paused);

    bool isAccessibilityGranted() const;
    void requestAccessibility();
    /// Opens the desktop's page for the permission.
    void openAccessibilitySettings();

    const std::map<std::uint32_t, EventHotKeyRef>& registeredHotKeys() const { return m_registeredHotKeys; }
    const std::map<std::uint32_t, ShortcutItem>& idToShortcut() const { return m_idToShortcut; }
    std::uint32_t currentId() const { return m_currentId; }

Q_SIGNALS:
    void pausedChanged();

private:
    OSStatus hotKeyPressed(const HotKeyEvent* event) override;
    void hotKeySettled(EventHotKeyRef ref, HotKeyRegistration::State state, OSStatus status) override;
    void hotKeysInvalidated() override;

    void registerItems(std::span<const ShortcutItem> items);
    void accept(const ShortcutItem& item, EventHotKeyRef ref);
    void unregisterAll();
    void forget(std::uint32_t id);
    void handleHotKeyPressed(std::uint32_t id, std::uint32_t serverTime);

    HotKeyBackend& m_backend;
    ConfigStore& m_store;
    ActionExecutor& m_executor;
    AccessibilityService& m_accessibility;
    std::map<std::uint32_t, EventHotKeyRef> m_registeredHotKeys;
    std::map<std::uint32_t, ShortcutItem> m_idToShortcut;
    std::uint32_t m_currentId = 1;
    bool m_hasHandler = false;
    bool m_isPaused = false;
    bool m_isSynchronised = false;
};

} // namespace Tavrin
