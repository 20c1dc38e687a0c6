#include "Platform/Linux/X11/X11KeyCapture.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Linux/KeyPositions.h"
#include "Platform/Linux/X11/XcbReply.h"
#include "Platform/Linux/X11/Xkb.h"

#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// X key codes are evdev codes moved up by this (the first eight are reserved by the protocol).
constexpr std::uint32_t evdevOffset = 8;

/// A menu that is just closing still holds the keyboard for a moment.
constexpr auto retryInterval = 50ms;
constexpr int mostAttempts = 10;

std::bitset<256> modifierKeys(xcb_connection_t* connection)
{
    const XcbReply<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    std::bitset<256> keys;
    for (int index = 0; reply && index < xcb_get_modifier_mapping_keycodes_length(reply.get()); ++index)
        keys.set(xcb_get_modifier_mapping_keycodes(reply.get())[index]);
    return keys;
}

std::bitset<256> heldKeys(xcb_connection_t* connection)
{
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
    std::bitset<256> keys;
    for (std::size_t key = 0; reply && key < keys.size(); ++key)
        keys.set(key, reply->keys[key / 8] >> (key % 8) & 1);
    return keys;
}

} // namespace

X11KeyCapture::X11KeyCapture()
{
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(retryInterval);
    connect(&m_retryTimer, &QTimer::timeout, this, &X11KeyCapture::grab);
}

X11KeyCapture::~X11KeyCapture()
{
    X11KeyCapture::stop();
}

void X11KeyCapture::start(Callbacks callbacks)
{
    m_callbacks = std::move(callbacks);
    if (m_connection)
        return;
    m_attempts = 0;
    m_connection = X11Connection::open();
    if (!m_connection) {
        QMetaObject::invokeMethod(this, &X11KeyCapture::end, Qt::QueuedConnection);
        return;
    }
    m_mapping = queryKeyboardMapping(*m_connection);
    m_modifierKeys = modifierKeys(m_connection->xcb());
    // A held key then repeats without being let go in between.
    if (m_connection->hasXkb())
        xcb_xkb_per_client_flags_unchecked(m_connection->xcb(), XCB_XKB_ID_USE_CORE_KBD,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0,
            0, 0);
    m_connection->addListener(this);
    connect(m_connection.get(), &X11Connection::lost, this, &X11KeyCapture::end, Qt::QueuedConnection);
    m_connection->watch();
    grab();
}

void X11KeyCapture::stop()
{
    m_retryTimer.stop();
    m_callbacks = {};
    if (!m_connection)
        return;
    m_focusLoss.reset();
    m_connection->removeListener(this);
    xcb_ungrab_keyboard(m_connection->xcb(), XCB_CURRENT_TIME);
    // The reply comes after the server has done it.
    heldKeys(m_connection->xcb());
    // We may be in one of its events.
    m_connection.release()->deleteLater();
}

void X11KeyCapture::grab()
{
    if (!m_connection)
        return;
    const auto cookie = xcb_grab_keyboard(m_connection->xcb(), /*owner_events=*/0, m_connection->root(),
        XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(m_connection->xcb(), cookie, nullptr));
    if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) {
        m_heldBefore = heldKeys(m_connection->xcb());
        m_focusLoss = std::make_unique<FocusLoss>(*m_connection, [this] { end(); });
        m_connection->deliverQueuedEventsSoon();
    } else if (++m_attempts < mostAttempts) {
        m_retryTimer.start();
    } else {
        QMetaObject::invokeMethod(this, &X11KeyCapture::end, Qt::QueuedConnection);
    }
}

void X11KeyCapture::end()
{
    const auto ended = std::move(m_callbacks.ended);
    stop();
    if (ended)
        ended();
}

void X11KeyCapture::handleEvent(const xcb_generic_event_t& event)
{
    const std::uint8_t type = event.response_type & 0x7F;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    if (type == XCB_KEY_PRESS)
        handleKeyPress(key);
    else if (type == XCB_KEY_RELEASE)
        m_heldBefore.reset(key.detail);
}

void X11KeyCapture::handleKeyPress(const xcb_key_press_event_t& event)
{
    if (m_modifierKeys.test(event.detail) || m_heldBefore.test(event.detail) || event.detail < evdevOffset)
        return;
    // A copy: the callback may end the capture.
    const auto keyDown = m_callbacks.keyDown;
    if (keyDown)
        keyDown(KeyPositions::keyCode(event.detail - evdevOffset), carbonModifiers(event.state));
}

std::uint32_t X11KeyCapture::carbonModifiers(std::uint16_t state) const
{
    std::uint32_t modifiers = 0;
    if (state & XCB_MOD_MASK_SHIFT)
        modifiers |= shiftKey;
    if (state & XCB_MOD_MASK_CONTROL)
        modifiers |= controlKey;
    if (state & m_mapping.alt)
        modifiers |= optionKey;
    if (state & m_mapping.super)
        modifiers |= cmdKey;
    return modifiers;
}

} // namespace Tavrin
