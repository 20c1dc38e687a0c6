#include "Platform/Linux/X11/HeldKeys.h"

#include "Platform/Linux/X11/XcbReply.h"
#include "Platform/Linux/X11/Xkb.h"

#include <algorithm>
#include <optional>
#include <xcb/xinput.h>

namespace Tavrin {
namespace {

constexpr int keyCount = 256, bitsPerByte = 8;

/// XTEST's request has seven bits for a device.
constexpr xcb_input_device_id_t highestId = 0x7F;

/// The keyboard that the key class of this device was taken from.
xcb_input_device_id_t sourceOf(const xcb_input_xi_device_info_t& device)
{
    for (auto part = xcb_input_xi_device_info_classes_iterator(&device); part.rem;
         xcb_input_device_class_next(&part)) {
        if (part.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_KEY)
            return part.data->sourceid;
    }
    return 0;
}

void addKeys(HeldKeys& result, const xcb_input_query_device_state_reply_t& reply, KeyboardId keyboard)
{
    for (auto part = xcb_input_query_device_state_classes_iterator(&reply); part.rem;
         xcb_input_input_state_next(&part)) {
        if (part.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
            continue;
        const auto& state = reinterpret_cast<const xcb_input_key_state_t&>(*part.data);
        for (int keycode = 0; keycode < keyCount; ++keycode) {
            if (state.keys[keycode / bitsPerByte] >> (keycode % bitsPerByte) & 1)
                result.keys.push_back({static_cast<xcb_keycode_t>(keycode), keyboard});
        }
    }
}

/// Request numbers begin anew after the highest.
bool isBefore(std::uint32_t sequence, std::uint32_t other)
{
    return static_cast<std::int32_t>(sequence - other) < 0;
}

} // namespace

std::vector<HeldKeys::Key> releasedMeanwhile(
    std::span<const HeldKeys::Key> held, std::span<const KeyReport> reports)
{
    std::vector<HeldKeys::Key> result;
    for (const HeldKeys::Key& key : held) {
        // One of the releases is ours.
        int releases = 0;
        for (const KeyReport& report : reports) {
            if (report.key != key)
                continue;
            if (report.isPress) {
                if (releases > 1)
                    result.push_back(key);
                break;
            }
            ++releases;
        }
    }
    return result;
}

KeyboardWatch::KeyboardWatch()
    : m_connection(X11Connection::open())
{
    if (!m_connection || !m_connection->hasXInput2() || !m_connection->hasXkb())
        return;
    findKeyboards();
    selectReports();
    queryHeldKeys();
}

KeyboardWatch::~KeyboardWatch() = default;

void KeyboardWatch::findKeyboards()
{
    xcb_connection_t* const xcb = m_connection->xcb();
    const XcbReply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!reply)
        return;
    // The first master is the keyboard of every program that does not ask for another one.
    std::optional<xcb_input_device_id_t> master;
    xcb_input_device_id_t source = 0;
    for (auto device = xcb_input_xi_query_device_infos_iterator(reply.get()); device.rem;
         xcb_input_xi_device_info_next(&device)) {
        const xcb_input_xi_device_info_t& info = *device.data;
        if (info.type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD && !master) {
            master = info.deviceid;
            source = sourceOf(info);
        } else if (info.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && info.attachment == master
            && info.enabled && info.deviceid <= highestId) {
            m_keyboards.push_back(static_cast<KeyboardId>(info.deviceid));
        }
    }
    if (std::ranges::find(m_keyboards, source) != m_keyboards.end())
        m_held.current = static_cast<KeyboardId>(source);
}

void KeyboardWatch::selectReports()
{
    struct Selection {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    };
    std::vector<Selection> selections;
    for (const KeyboardId keyboard : m_keyboards)
        selections.push_back(
            {{keyboard, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE});
    if (!selections.empty())
        xcb_input_xi_select_events(m_connection->xcb(), m_connection->root(),
            static_cast<std::uint16_t>(selections.size()), &selections.front().header);
}

void KeyboardWatch::queryHeldKeys()
{
    xcb_connection_t* const xcb = m_connection->xcb();
    std::vector<xcb_input_query_device_state_cookie_t> cookies;
    for (const KeyboardId keyboard : m_keyboards)
        cookies.push_back(xcb_input_query_device_state(xcb, keyboard));
    const auto stateCookie = xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD);
    for (std::size_t index = 0; index < cookies.size(); ++index) {
        const XcbReply<xcb_input_query_device_state_reply_t> reply(
            xcb_input_query_device_state_reply(xcb, cookies[index], nullptr));
        // A keyboard that has just been unplugged holds nothing.
        if (reply)
            addKeys(m_held, *reply, m_keyboards[index]);
    }
    const XcbReply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(xcb, stateCookie, nullptr));
    if (state)
        m_held.modifiers = state->baseMods;
    m_firstQuery = cookies.empty() ? stateCookie.sequence : cookies.front().sequence;
}

std::vector<KeyReport> KeyboardWatch::takeReports()
{
    std::vector<KeyReport> reports;
    if (m_keyboards.empty())
        return reports;
    xcb_connection_t* const xcb = m_connection->xcb();
    // Once this is answered, all that happened before is in the queue.
    const XcbReply<xcb_get_input_focus_reply_t> fence(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(xcb)}) {
        if ((event->response_type & 0x7F) != XCB_GE_GENERIC || isBefore(event->full_sequence, m_firstQuery))
            continue;
        const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(*event);
        if (raw.extension == m_connection->xInputOpcode())
            reports.push_back(
                {{static_cast<xcb_keycode_t>(raw.detail), static_cast<KeyboardId>(raw.sourceid)},
                    raw.event_type == XCB_INPUT_RAW_KEY_PRESS});
    }
    return reports;
}

} // namespace Tavrin
