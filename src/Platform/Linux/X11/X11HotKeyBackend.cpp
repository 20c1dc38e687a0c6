#include "Platform/Linux/X11/X11HotKeyBackend.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Linux/KeyPositions.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "Platform/Linux/X11/XcbReply.h"
#include "Platform/Linux/X11/Xkb.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <xcb/xinput.h>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// X key codes are evdev codes moved up by this (the first eight are reserved by the protocol).
constexpr std::uint32_t evdevOffset = 8;

/// A change of the keyboard comes as a burst of events; every injected key causes some, too.
constexpr auto mappingDelay = 20ms;

/// The server drops a killed program's grabs a moment after it starts us again.
constexpr auto retryDelay = 100ms;
constexpr auto oldGrabsAge = 2s;

/// Low eight bits of an event's state are modifiers; pointer buttons and the layout's group follow.
constexpr std::uint16_t modifierBits = 0xFF;

OSStatus statusOf(const xcb_generic_error_t& error)
{
    return error.error_code == XCB_ACCESS ? eventHotKeyExistsErr : eventHotKeyInvalidErr;
}

} // namespace

X11HotKeyBackend::X11HotKeyBackend(X11Connection& connection, X11KeyInjector& injector)
    : m_connection(connection)
    , m_injector(injector)
{
    // Events first: a change between the query and the selection would never be noticed.
    selectMappingEvents();
    m_mapping = queryKeyboardMapping(connection);
    m_age.start();
    m_mappingTimer.setSingleShot(true);
    m_mappingTimer.setInterval(mappingDelay);
    connect(&m_mappingTimer, &QTimer::timeout, this, &X11HotKeyBackend::checkMapping);
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(retryDelay);
    connect(&m_retryTimer, &QTimer::timeout, this, &X11HotKeyBackend::retryPending);
    m_connection.addListener(this);
}

X11HotKeyBackend::~X11HotKeyBackend()
{
    m_connection.removeListener(this);
    std::vector<EventHotKeyRef> refs;
    for (const auto& [ref, hotKey] : m_hotKeys)
        refs.push_back(ref);
    X11HotKeyBackend::unregisterHotKeys(refs);
}

OSStatus X11HotKeyBackend::installEventHandler(HotKeyEventHandler* handler)
{
    // Without raw events a held key could not be told from one pressed again.
    if (!m_connection.hasXInput2())
        return eventNotHandledErr;
    m_handler = handler;
    return noErr;
}

void X11HotKeyBackend::removeEventHandler()
{
    m_handler = nullptr;
}

std::vector<HotKeyRegistration> X11HotKeyBackend::registerHotKeys(
    std::span<const HotKeyCombination> combinations)
{
    using State = HotKeyRegistration::State;
    std::vector<HotKeyRegistration> results(combinations.size());
    std::vector<Grab> grabs;
    std::vector<std::size_t> indexes;
    for (std::size_t index = 0; index < combinations.size(); ++index) {
        const auto grab = resolve(combinations[index]);
        if (!grab) {
            if (const auto code = KeyPositions::evdevCode(combinations[index].keyCode))
                m_missingKeys.insert(static_cast<xcb_keycode_t>(*code + evdevOffset));
            results[index] = {State::failed, eventHotKeyInvalidErr, 0};
        } else if (!m_refs.try_emplace(*grab, m_nextRef).second) {
            results[index] = {State::failed, eventHotKeyExistsErr, 0};
        } else {
            m_hotKeys[m_nextRef].grab = *grab;
            results[index] = {State::registered, noErr, m_nextRef++};
            grabs.push_back(*grab);
            indexes.push_back(index);
        }
    }
    // Before the grabs, and so in force when their replies are here: without its raw press the first press
    // of a new hotkey would be taken for a repeat.
    selectRawPresses(!m_hotKeys.empty());
    const std::vector<OSStatus> statuses = grabAll(grabs);
    for (std::size_t position = 0; position < statuses.size(); ++position) {
        HotKeyRegistration& result = results[indexes[position]];
        if (statuses[position] == noErr)
            continue;
        if (statuses[position] == eventHotKeyExistsErr && meetsOldGrabs()) {
            m_hotKeys[result.ref].isPending = true;
            result.state = State::pending;
            m_retryTimer.start();
        } else {
            discard(result.ref);
            result = {State::failed, statuses[position], 0};
        }
    }
    selectRawPresses(!m_hotKeys.empty());
    m_connection.flush();
    m_connection.deliverQueuedEventsSoon();
    return results;
}

void X11HotKeyBackend::setHotKeyID(EventHotKeyRef ref, EventHotKeyID hotKeyID)
{
    if (const auto found = m_hotKeys.find(ref); found != m_hotKeys.end())
        found->second.hotKeyID = hotKeyID;
}

void X11HotKeyBackend::unregisterHotKeys(std::span<const EventHotKeyRef> refs)
{
    for (const EventHotKeyRef ref : refs) {
        const auto found = m_hotKeys.find(ref);
        if (found == m_hotKeys.end())
            continue;
        if (!found->second.isPending)
            ungrab(found->second.grab);
        discard(ref);
    }
    if (m_hotKeys.empty()) {
        m_missingKeys.clear();
        selectRawPresses(false);
    }
    m_connection.flush();
}

void X11HotKeyBackend::standAside(xcb_keycode_t keycode, std::uint16_t modifiers)
{
    selectRawPresses(false);
    const auto found = m_refs.find({keycode, modifiers});
    if (found == m_refs.end() || m_hotKeys.at(found->second).isPending)
        return;
    m_letThrough = found->second;
    ungrab(found->first);
}

void X11HotKeyBackend::resume()
{
    selectRawPresses(!m_hotKeys.empty());
    const auto found = m_hotKeys.find(std::exchange(m_letThrough, 0));
    if (found == m_hotKeys.end() || grabAll({&found->second.grab, 1}).front() == noErr)
        return;
    found->second.isPending = true;
    m_retryTimer.start();
}

std::optional<X11HotKeyBackend::Grab> X11HotKeyBackend::resolve(HotKeyCombination combination) const
{
    const auto code = KeyPositions::evdevCode(combination.keyCode);
    if (!code || *code + evdevOffset > m_connection.setup().max_keycode)
        return std::nullopt;
    Grab grab{static_cast<xcb_keycode_t>(*code + evdevOffset), 0};
    if (!m_mapping.keys.test(grab.keycode))
        return std::nullopt;

    const std::pair<std::uint32_t, std::uint16_t> modifiers[] = {
        {shiftKey, XCB_MOD_MASK_SHIFT},
        {controlKey, XCB_MOD_MASK_CONTROL},
        {optionKey, m_mapping.alt},
        {cmdKey, m_mapping.super},
    };
    for (const auto& [carbon, bit] : modifiers) {
        if (!(combination.modifiers & carbon))
            continue;
        if (!bit)
            return std::nullopt;
        grab.modifiers |= bit;
    }
    return grab;
}

std::vector<std::uint16_t> X11HotKeyBackend::lockVariants() const
{
    std::vector<std::uint16_t> variants{0};
    for (const std::uint16_t lock :
        {std::uint16_t{XCB_MOD_MASK_LOCK}, m_mapping.numLock, m_mapping.scrollLock}) {
        if (!lock)
            continue;
        const std::size_t count = variants.size();
        for (std::size_t index = 0; index < count; ++index)
            variants.push_back(variants[index] | lock);
    }
    return variants;
}

std::vector<OSStatus> X11HotKeyBackend::grabAll(std::span<const Grab> grabs)
{
    const std::vector<std::uint16_t> variants = lockVariants();
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(grabs.size() * variants.size());
    for (const Grab& grab : grabs) {
        for (const std::uint16_t locks : variants)
            cookies.push_back(
                xcb_grab_key_checked(m_connection.xcb(), /*owner_events=*/0, m_connection.root(),
                    grab.modifiers | locks, grab.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    // From the last to the first: that check is the one round trip, all others are answered by then.
    std::vector<OSStatus> statuses(grabs.size(), noErr);
    for (std::size_t index = cookies.size(); index-- > 0;) {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_connection.xcb(), cookies[index]));
        if (error)
            statuses[index / variants.size()] = statusOf(*error);
    }
    for (std::size_t index = 0; index < grabs.size(); ++index) {
        if (statuses[index] != noErr)
            ungrab(grabs[index]);
    }
    return statuses;
}

void X11HotKeyBackend::ungrab(const Grab& grab)
{
    for (const std::uint16_t locks : lockVariants())
        xcb_ungrab_key(m_connection.xcb(), grab.keycode, m_connection.root(), grab.modifiers | locks);
}

void X11HotKeyBackend::discard(EventHotKeyRef ref)
{
    const auto found = m_hotKeys.find(ref);
    m_refs.erase(found->second.grab);
    m_hotKeys.erase(found);
}

bool X11HotKeyBackend::meetsOldGrabs() const
{
    return std::chrono::milliseconds(m_age.elapsed()) < oldGrabsAge;
}

void X11HotKeyBackend::retryPending()
{
    std::vector<EventHotKeyRef> refs;
    std::vector<Grab> grabs;
    for (auto& [ref, hotKey] : m_hotKeys) {
        if (!hotKey.isPending)
            continue;
        hotKey.isPending = false;
        refs.push_back(ref);
        grabs.push_back(hotKey.grab);
    }
    const std::vector<OSStatus> statuses = grabAll(grabs);
    m_connection.flush();
    for (std::size_t index = 0; index < refs.size(); ++index) {
        const bool failed = statuses[index] != noErr;
        if (failed)
            discard(refs[index]);
        if (m_handler)
            m_handler->hotKeySettled(refs[index],
                failed ? HotKeyRegistration::State::failed : HotKeyRegistration::State::registered,
                statuses[index]);
    }
    m_connection.deliverQueuedEventsSoon();
}

void X11HotKeyBackend::selectRawPresses(bool select)
{
    // Every key typed anywhere wakes us while these are selected, so they are only while there is a
    // hotkey to tell from a repeat.
    if (select == m_rawPressesSelected || !m_connection.hasXInput2())
        return;
    m_rawPressesSelected = select;
    struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } events{
        {XCB_INPUT_DEVICE_ALL_MASTER, 1}, select ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS} : 0U};
    xcb_input_xi_select_events(m_connection.xcb(), m_connection.root(), 1, &events.header);
}

void X11HotKeyBackend::selectMappingEvents()
{
    if (!m_connection.hasXkb())
        return;
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t mapParts
        = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS;
    xcb_xkb_select_events(
        m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, mapParts, mapParts, nullptr);
}

void X11HotKeyBackend::handleEvent(const xcb_generic_event_t& event)
{
    const std::uint8_t type = event.response_type & 0x7F;
    if (type == XCB_KEY_PRESS)
        handleKeyPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
    else if (type == XCB_GE_GENERIC)
        handleRawEvent(reinterpret_cast<const xcb_ge_generic_event_t&>(event));
    else if (type == XCB_MAPPING_NOTIFY || (m_connection.hasXkb() && type == m_connection.xkbFirstEvent()))
        m_mappingTimer.start();
}

void X11HotKeyBackend::handleRawEvent(const xcb_ge_generic_event_t& event)
{
    if (event.extension != m_connection.xInputOpcode() || event.event_type != XCB_INPUT_RAW_KEY_PRESS)
        return;
    const auto& press = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    m_lastRawPress = PressMark{static_cast<xcb_keycode_t>(press.detail), press.time};
}

void X11HotKeyBackend::handleKeyPress(const xcb_key_press_event_t& event)
{
    // Before anything else: what is typed from now on, by the user or by us, goes where the focus is.
    xcb_ungrab_keyboard(m_connection.xcb(), event.time);
    m_connection.flush();

    const bool isReal = m_lastRawPress == PressMark{event.detail, event.time};
    if (!isReal || m_injector.isOwn(event) || !m_handler)
        return;
    const auto modifiers = static_cast<std::uint16_t>(event.state & modifierBits & ~m_mapping.locks());
    const auto found = m_refs.find({event.detail, modifiers});
    if (found == m_refs.end())
        return;
    const HotKeyEvent hotKeyEvent{m_hotKeys.at(found->second).hotKeyID, event.time};
    m_handler->hotKeyPressed(&hotKeyEvent);
}

void X11HotKeyBackend::checkMapping()
{
    const KeyboardMapping mapping = queryKeyboardMapping(m_connection);
    const bool hasNewKey = std::ranges::any_of(m_missingKeys,
        [&](xcb_keycode_t key) { return mapping.keys.test(key) && !m_mapping.keys.test(key); });
    if (mapping.hasSameModifiers(m_mapping) && !hasNewKey) {
        m_mapping.keys = mapping.keys;
        return;
    }
    // The old grabs go with the old bits; the owner then registers anew with the new ones.
    std::vector<EventHotKeyRef> refs;
    for (const auto& [ref, hotKey] : m_hotKeys)
        refs.push_back(ref);
    unregisterHotKeys(refs);
    m_mapping = mapping;
    if (m_handler)
        m_handler->hotKeysInvalidated();
}

} // namespace Tavrin
