#include "Platform/Linux/X11/Selections/SelectionOwner.h"

#include <algorithm>

namespace Tavrin {
namespace {

/// Conversions that one request may ask for; more is no program's need.
constexpr qsizetype manyLimit = 256;
constexpr qsizetype pairSize = 2 * sizeof(std::uint32_t);

/// From here on it is worth looking for memory to give back.
constexpr qsizetype muchMemory = 256 * 1024;

} // namespace

bool SelectionOwner::own(xcb_atom_t selection, SelectionOffer offer)
{
    auto targets = m_connection.atoms(offer.targets());
    // Twice, because a program that takes it in the same moment may have the later time.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const xcb_timestamp_t time = m_connection.serverTime();
        xcb_set_selection_owner(m_connection.xcb(), m_connection.window(), selection, time);
        if (m_connection.owner(selection) != m_connection.window())
            continue;
        forget(selection);
        m_owned.emplace(selection, Owned{std::move(offer), time, std::move(targets)});
        return true;
    }
    forget(selection);
    return false;
}

void SelectionOwner::release(xcb_atom_t selection)
{
    const auto owned = m_owned.find(selection);
    if (owned == m_owned.end())
        return;
    xcb_set_selection_owner(m_connection.xcb(), XCB_WINDOW_NONE, selection, owned->second.time);
    forget(selection);
}

const SelectionOffer* SelectionOwner::offer(xcb_atom_t selection) const
{
    const auto owned = m_owned.find(selection);
    return owned == m_owned.end() ? nullptr : &owned->second.offer;
}

void SelectionOwner::forget(xcb_atom_t selection)
{
    const auto owned = m_owned.find(selection);
    if (owned == m_owned.end())
        return;
    m_hasFreedMuch |= owned->second.offer.size() >= muchMemory;
    m_owned.erase(owned);
}

void SelectionOwner::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_SELECTION_REQUEST:
        return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    case XCB_SELECTION_CLEAR: {
        const xcb_atom_t selection = reinterpret_cast<const xcb_selection_clear_event_t&>(event).selection;
        // The loss may be an old one, from before we took the selection again.
        if (m_connection.owner(selection) != m_connection.window())
            forget(selection);
        return;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.state == XCB_PROPERTY_DELETE)
            m_transfers.propertyDeleted(notify.window, notify.atom);
        return;
    }
    case XCB_DESTROY_NOTIFY:
        return m_transfers.windowGone(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    case 0: {
        const auto& error = reinterpret_cast<const xcb_value_error_t&>(event);
        if (error.error_code == XCB_WINDOW)
            m_transfers.windowGone(error.bad_value);
        return;
    }
    default:
        return;
    }
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request)
{
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;

    // Requests with a time before ours are answered, too: programs ask with the time of the last event
    // that they happened to see, and would paste nothing.
    const auto owned = m_owned.find(request.selection);
    // Nobody but us has a reason to have something put on our own window.
    if (owned != m_owned.end() && request.requestor != m_connection.window()) {
        // Without a property, it is an old program that means the target's name.
        const xcb_atom_t property = request.property ? request.property : request.target;
        const bool isAnswered = request.target == m_connection.atom(SelectionConnection::multiple)
            ? request.property && answerMany(owned->second, request)
            : put(owned->second, request.requestor, property, request.target);
        if (isAnswered)
            notify.property = property;
    }
    xcb_send_event(m_connection.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
        reinterpret_cast<const char*>(&notify));
}

bool SelectionOwner::answerMany(const Owned& owned, const xcb_selection_request_event_t& request)
{
    auto pairs = m_connection
                     .property(request.requestor, request.property, manyLimit * pairSize,
                         SelectionConnection::Reading::keep)
                     .words();
    if (pairs.size() < 2 || pairs.size() % 2 != 0)
        return false;
    for (std::size_t index = 0; index < pairs.size(); index += 2) {
        const xcb_atom_t target = pairs[index];
        const xcb_atom_t property = pairs[index + 1];
        const bool isAnswered = target != m_connection.atom(SelectionConnection::multiple) && property
            && put(owned, request.requestor, property, target);
        // The manual says that the target becomes None, the toolkits look at the property.
        if (!isAnswered)
            pairs[index] = pairs[index + 1] = XCB_ATOM_NONE;
    }
    putWords(request.requestor, request.property, m_connection.atom(SelectionConnection::atomPair), pairs);
    return true;
}

bool SelectionOwner::put(const Owned& owned, xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target)
{
    if (target == m_connection.atom(SelectionConnection::targets)) {
        putWords(requestor, property, XCB_ATOM_ATOM, allTargets(owned));
        return true;
    }
    if (target == m_connection.atom(SelectionConnection::timestamp)) {
        putWords(requestor, property, XCB_ATOM_INTEGER, {owned.time});
        return true;
    }
    if (target == m_connection.atom(SelectionConnection::saveTargets) && owned.offer.isLasting()) {
        putWords(requestor, property, m_connection.atom(SelectionConnection::none), {});
        return true;
    }
    return putData(owned, requestor, property, target);
}

bool SelectionOwner::putData(
    const Owned& owned, xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target)
{
    // By our own list, not by the atom's name: what nobody offered costs no round trip.
    if (std::ranges::find(owned.targets, target) == owned.targets.end())
        return false;
    const auto value = owned.offer.value(m_connection.name(target));
    if (!value)
        return false;
    const xcb_atom_t type = m_connection.atom(value->type);
    if (value->data.size() > m_connection.chunkSize()) {
        m_transfers.begin(requestor, property, type, value->data);
        return true;
    }
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, type, 8,
        static_cast<std::uint32_t>(value->data.size()), value->data.constData());
    return true;
}

void SelectionOwner::putWords(
    xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const std::vector<std::uint32_t>& words)
{
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, type, 32,
        static_cast<std::uint32_t>(words.size()), words.data());
}

std::vector<xcb_atom_t> SelectionOwner::allTargets(const Owned& owned) const
{
    std::vector<xcb_atom_t> result{m_connection.atom(SelectionConnection::targets),
        m_connection.atom(SelectionConnection::timestamp), m_connection.atom(SelectionConnection::multiple)};
    if (owned.offer.isLasting())
        result.push_back(m_connection.atom(SelectionConnection::saveTargets));
    result.insert(result.end(), owned.targets.begin(), owned.targets.end());
    return result;
}

} // namespace Tavrin
