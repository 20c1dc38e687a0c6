#include "Platform/Linux/X11/Selections/OutgoingTransfers.h"

#include <algorithm>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// Between two pieces. A program that is busy may take long; toolkits themselves give up after five seconds.
constexpr auto patience = 5s;

} // namespace

void OutgoingTransfers::begin(
    xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray& data)
{
    std::erase_if(m_transfers, [&](const Transfer& transfer) {
        return transfer.requestor == requestor && transfer.property == property;
    });
    // Before the property is there, or its deletion could be missed.
    watch(requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto size = static_cast<std::uint32_t>(data.size());
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property,
        m_connection.atom(SelectionConnection::incremental), 32, 1, &size);
    m_transfers.push_back({requestor, property, type, data, 0, Clock::now() + patience});
}

void OutgoingTransfers::propertyDeleted(xcb_window_t requestor, xcb_atom_t property)
{
    const auto transfer = std::ranges::find_if(m_transfers, [&](const Transfer& candidate) {
        return candidate.requestor == requestor && candidate.property == property;
    });
    if (transfer == m_transfers.end())
        return;
    const qsizetype length = std::min(m_connection.chunkSize(), transfer->data.size() - transfer->offset);
    // The last piece is an empty one.
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, transfer->type, 8,
        static_cast<std::uint32_t>(length), transfer->data.constData() + transfer->offset);
    transfer->offset += length;
    transfer->deadline = Clock::now() + patience;
    if (length > 0)
        return;
    m_transfers.erase(transfer);
    unwatchIfUnused(requestor);
}

void OutgoingTransfers::windowGone(xcb_window_t requestor)
{
    std::erase_if(m_transfers, [&](const Transfer& transfer) { return transfer.requestor == requestor; });
}

std::optional<OutgoingTransfers::Clock::time_point> OutgoingTransfers::deadline() const
{
    const auto earliest = std::ranges::min_element(m_transfers, {}, &Transfer::deadline);
    return earliest == m_transfers.end() ? std::nullopt : std::optional(earliest->deadline);
}

void OutgoingTransfers::expire()
{
    const auto now = Clock::now();
    std::vector<xcb_window_t> left;
    std::erase_if(m_transfers, [&](const Transfer& transfer) {
        const bool isLate = transfer.deadline <= now;
        if (isLate)
            left.push_back(transfer.requestor);
        return isLate;
    });
    for (const xcb_window_t requestor : left)
        unwatchIfUnused(requestor);
}

void OutgoingTransfers::watch(xcb_window_t requestor, std::uint32_t events)
{
    xcb_change_window_attributes(m_connection.xcb(), requestor, XCB_CW_EVENT_MASK, &events);
}

void OutgoingTransfers::unwatchIfUnused(xcb_window_t requestor)
{
    if (std::ranges::find(m_transfers, requestor, &Transfer::requestor) == m_transfers.end())
        watch(requestor, XCB_EVENT_MASK_NO_EVENT);
}

} // namespace Tavrin
