#include "Platform/Linux/X11/Selections/SelectionConnection.h"

#include <algorithm>
#include <cstring>

namespace Tavrin {
namespace {

/// What other programs put into a property at once as well; the largest request is 16 MB on most servers,
/// and while the server copies one, nothing else moves.
constexpr qsizetype largestChunk = 256 * 1024;
/// Of a request that changes a property, beside the data; rounded up.
constexpr qsizetype requestHeader = 64;
constexpr qsizetype bytesPerWord = 4;

/// Programs make names up as they go; what was learned is then learned anew.
constexpr qsizetype knownNamesLimit = 1024;

/// No owner is this many questions late. The server never forgets a name, so they are used again.
constexpr unsigned propertyCount = 32;

} // namespace

std::unique_ptr<SelectionConnection> SelectionConnection::open()
{
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int index = 0; index < screenNumber && screens.rem > 1; ++index)
        xcb_screen_next(&screens);
    return std::unique_ptr<SelectionConnection>(new SelectionConnection(connection, *screens.data));
}

SelectionConnection::SelectionConnection(xcb_connection_t* connection, const xcb_screen_t& screen)
    : m_connection(connection)
    , m_window(xcb_generate_id(connection))
{
    xcb_prefetch_maximum_request_length(m_connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, 0, m_window, screen.root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const auto known = atoms({"CLIPBOARD", "CLIPBOARD_MANAGER", "TARGETS", "TIMESTAMP", "MULTIPLE",
        "SAVE_TARGETS", "ATOM_PAIR", "INCR", "NULL", "TAVRIN_SAVED_TARGETS", "TAVRIN_TIME"});
    std::ranges::copy(known, m_atoms.begin());
    const qsizetype largestRequest = xcb_get_maximum_request_length(m_connection) * bytesPerWord;
    m_chunkSize = std::min(largestChunk, largestRequest - requestHeader);
}

SelectionConnection::~SelectionConnection()
{
    xcb_disconnect(m_connection);
}

void SelectionConnection::remember(const QByteArray& name, xcb_atom_t atom)
{
    if (m_atomOfName.size() >= knownNamesLimit) {
        m_atomOfName.clear();
        m_nameOfAtom.clear();
    }
    m_atomOfName.insert(name, atom);
    m_nameOfAtom.insert(atom, name);
}

std::vector<xcb_atom_t> SelectionConnection::atoms(const QByteArrayList& names)
{
    std::vector<std::pair<qsizetype, xcb_intern_atom_cookie_t>> asked;
    std::vector<xcb_atom_t> result(static_cast<std::size_t>(names.size()), XCB_ATOM_NONE);
    for (qsizetype index = 0; index < names.size(); ++index) {
        result[static_cast<std::size_t>(index)] = m_atomOfName.value(names[index], XCB_ATOM_NONE);
        if (result[static_cast<std::size_t>(index)] == XCB_ATOM_NONE)
            asked.emplace_back(index,
                xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(names[index].size()),
                    names[index].constData()));
    }
    for (const auto& [index, cookie] : asked) {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        if (!reply)
            continue;
        result[static_cast<std::size_t>(index)] = reply->atom;
        remember(names[index], reply->atom);
    }
    return result;
}

QByteArrayList SelectionConnection::names(const std::vector<xcb_atom_t>& atoms)
{
    std::vector<std::pair<std::size_t, xcb_get_atom_name_cookie_t>> asked;
    QByteArrayList result(static_cast<qsizetype>(atoms.size()));
    for (std::size_t index = 0; index < atoms.size(); ++index) {
        result[static_cast<qsizetype>(index)] = m_nameOfAtom.value(atoms[index]);
        if (result[static_cast<qsizetype>(index)].isEmpty() && atoms[index] != XCB_ATOM_NONE)
            asked.emplace_back(index, xcb_get_atom_name(m_connection, atoms[index]));
    }
    for (const auto& [index, cookie] : asked) {
        xcb_generic_error_t* error = nullptr;
        const XcbReply<xcb_get_atom_name_reply_t> reply(
            xcb_get_atom_name_reply(m_connection, cookie, &error));
        const XcbReply<xcb_generic_error_t> noSuchAtom(error);
        if (!reply)
            continue;
        const QByteArray name(
            xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
        result[static_cast<qsizetype>(index)] = name;
        remember(name, atoms[index]);
    }
    return result;
}

xcb_timestamp_t SelectionConnection::serverTime()
{
    // Nothing is appended, but the event that says so carries the time.
    xcb_change_property(
        m_connection, XCB_PROP_MODE_APPEND, m_window, m_atoms[clock], XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(m_connection);
    while (Event event{xcb_wait_for_event(m_connection)}) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
        if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY && notify.window == m_window
            && notify.atom == m_atoms[clock])
            return notify.time;
        m_inHand.push_back(std::move(event));
    }
    return XCB_CURRENT_TIME;
}

bool SelectionConnection::isAlive()
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply != nullptr;
}

xcb_window_t SelectionConnection::owner(xcb_atom_t selection)
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<std::uint32_t> SelectionConnection::Property::words() const
{
    std::vector<std::uint32_t> result;
    if (format != 32)
        return result;
    result.resize(static_cast<std::size_t>(data.size()) / sizeof(std::uint32_t));
    if (!result.empty())
        std::memcpy(result.data(), data.constData(), result.size() * sizeof(std::uint32_t));
    return result;
}

SelectionConnection::Property SelectionConnection::property(
    xcb_window_t window, xcb_atom_t property, qsizetype limit, Reading reading)
{
    const auto words = static_cast<std::uint32_t>(limit / bytesPerWord);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection,
        xcb_get_property(
            m_connection, reading == Reading::remove, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, words),
        &error));
    const XcbReply<xcb_generic_error_t> windowIsGone(error);
    if (!reply)
        return {};
    if (reply->bytes_after > 0) {
        if (reading == Reading::remove)
            xcb_delete_property(m_connection, window, property);
        return {reply->type, reply->format, {}, true};
    }
    return {reply->type, reply->format,
        QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get()))};
}

xcb_atom_t SelectionConnection::nextProperty()
{
    m_propertyNumber = (m_propertyNumber + 1) % propertyCount;
    return atom("TAVRIN_SELECTION_" + QByteArray::number(m_propertyNumber));
}

SelectionConnection::Event SelectionConnection::nextEvent()
{
    if (m_inHand.empty())
        return Event{xcb_poll_for_event(m_connection)};
    Event event = std::move(m_inHand.front());
    m_inHand.pop_front();
    return event;
}

bool SelectionConnection::hasEventInHand()
{
    if (m_inHand.empty()) {
        if (Event event{xcb_poll_for_queued_event(m_connection)})
            m_inHand.push_back(std::move(event));
    }
    return !m_inHand.empty();
}

} // namespace Tavrin
