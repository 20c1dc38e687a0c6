#pragma once

#include "Platform/Linux/X11/Selections/OutgoingTransfers.h"
#include "Platform/Linux/X11/Selections/SelectionOffer.h"

#include <unordered_map>

namespace Tavrin {

/// Owns selections and answers the programs that ask for them (Inter-Client Communication Conventions
/// Manual, "Responsibilities of the Selection Owner"). Everything from the thread of the connection.
class SelectionOwner {
public:
    explicit SelectionOwner(SelectionConnection& connection)
        : m_connection(connection)
        , m_transfers(connection)
    {
    }

    /// Takes the selection, or goes on owning it, with these contents. False if the server does not give
    /// it to us.
    bool own(xcb_atom_t selection, SelectionOffer offer);
    /// Lets the selection go: nobody owns it then.
    void release(xcb_atom_t selection);
    /// What we hold there; null if the selection is not ours.
    const SelectionOffer* offer(xcb_atom_t selection) const;

    void handle(const xcb_generic_event_t& event);

    std::optional<OutgoingTransfers::Clock::time_point> deadline() const { return m_transfers.deadline(); }
    void expire() { m_transfers.expire(); }
    bool isTransferring() const { return !m_transfers.isEmpty(); }
    /// Whether much memory has become free since the last call.
    bool takeFreedMuch() { return std::exchange(m_hasFreedMuch, false); }

private:
    struct Owned {
        SelectionOffer offer;
        xcb_timestamp_t time;
        /// In the order of the offer's targets.
        std::vector<xcb_atom_t> targets;
    };

    void answer(const xcb_selection_request_event_t& request);
    bool answerMany(const Owned& owned, const xcb_selection_request_event_t& request);
    bool put(const Owned& owned, xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target);
    bool putData(const Owned& owned, xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target);
    void putWords(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
        const std::vector<std::uint32_t>& words);
    std::vector<xcb_atom_t> allTargets(const Owned& owned) const;
    void forget(xcb_atom_t selection);

    SelectionConnection& m_connection;
    OutgoingTransfers m_transfers;
    std::unordered_map<xcb_atom_t, Owned> m_owned;
    bool m_hasFreedMuch = false;
};

} // namespace Tavrin
