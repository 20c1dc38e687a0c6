#pragma once

#include "Platform/Linux/X11/Selections/SelectionConnection.h"

#include <chrono>
#include <optional>

namespace Tavrin {

/// What is too large for one property is handed over in pieces: the requestor deletes the property to ask
/// for the next (Inter-Client Communication Conventions Manual, "INCR Properties"). Any number at once; a
/// requestor that is gone, or asks for no further piece for some seconds, is forgotten.
class OutgoingTransfers {
public:
    using Clock = std::chrono::steady_clock;

    explicit OutgoingTransfers(SelectionConnection& connection)
        : m_connection(connection)
    {
    }

    /// Announces the transfer in the property. The data is shared, and kept until the transfer has ended.
    void begin(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray& data);

    void propertyDeleted(xcb_window_t requestor, xcb_atom_t property);
    void windowGone(xcb_window_t requestor);

    bool isEmpty() const { return m_transfers.empty(); }
    /// When to call expire() at the latest; nothing if no transfer is under way.
    std::optional<Clock::time_point> deadline() const;
    void expire();

private:
    struct Transfer {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        QByteArray data;
        qsizetype offset;
        Clock::time_point deadline;
    };

    void watch(xcb_window_t requestor, std::uint32_t events);
    void unwatchIfUnused(xcb_window_t requestor);

    SelectionConnection& m_connection;
    std::vector<Transfer> m_transfers;
};

} // namespace Tavrin
