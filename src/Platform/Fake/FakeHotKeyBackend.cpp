#include "Platform/Fake/FakeHotKeyBackend.h"

namespace Tavrin {

OSStatus FakeHotKeyBackend::installEventHandler(HotKeyEventHandler* handler)
{
    if (installStatus == noErr)
        m_handler = handler;
    return installStatus;
}

void FakeHotKeyBackend::removeEventHandler()
{
    m_handler = nullptr;
}

std::vector<HotKeyRegistration> FakeHotKeyBackend::registerHotKeys(
    std::span<const HotKeyCombination> combinations)
{
    ++batches;
    std::vector<HotKeyRegistration> results;
    for (const HotKeyCombination& combination : combinations) {
        if (const auto failure = failures.find(combination.keyCode); failure != failures.end()) {
            results.push_back({HotKeyRegistration::State::failed, failure->second, 0});
            continue;
        }
        const EventHotKeyRef ref = m_nextRef++;
        entries[ref] = {combination, {}};
        const bool pending = pendingKeyCodes.contains(combination.keyCode);
        results.push_back(
            {pending ? HotKeyRegistration::State::pending : HotKeyRegistration::State::registered, noErr,
                ref});
    }
    return results;
}

void FakeHotKeyBackend::setHotKeyID(EventHotKeyRef ref, EventHotKeyID hotKeyID)
{
    if (const auto entry = entries.find(ref); entry != entries.end())
        entry->second.hotKeyID = hotKeyID;
}

void FakeHotKeyBackend::unregisterHotKeys(std::span<const EventHotKeyRef> refs)
{
    for (const EventHotKeyRef ref : refs)
        entries.erase(ref);
}

OSStatus FakeHotKeyBackend::deliver(const HotKeyEvent* event)
{
    return m_handler ? m_handler->hotKeyPressed(event) : eventNotHandledErr;
}

bool FakeHotKeyBackend::press(HotKeyCombination combination, std::uint32_t serverTime)
{
    for (const auto& [ref, entry] : entries) {
        if (entry.combination != combination)
            continue;
        const HotKeyEvent event{entry.hotKeyID, serverTime};
        return deliver(&event) == noErr;
    }
    return false;
}

void FakeHotKeyBackend::settle(EventHotKeyRef ref, HotKeyRegistration::State state, OSStatus status)
{
    if (state == HotKeyRegistration::State::failed)
        entries.erase(ref);
    if (m_handler)
        m_handler->hotKeySettled(ref, state, status);
}

void FakeHotKeyBackend::invalidate()
{
    entries.clear();
    if (m_handler)
        m_handler->hotKeysInvalidated();
}

} // namespace Tavrin
