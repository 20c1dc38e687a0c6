#pragma once

#include "Platform/Linux/X11/XcbReply.h"

#include <QByteArrayList>
#include <QHash>
#include <array>
#include <deque>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin {

/// A connection to the X server for selections alone, with the one window that owns them and asks for
/// them. One thread, its own; a round trip waits for the server, never for another program.
class SelectionConnection {
public:
    enum Atom : std::size_t {
        clipboard,
        clipboardManager,
        targets,
        timestamp,
        multiple,
        saveTargets,
        atomPair,
        incremental,
        none,
        handOver,
        clock,
        atomCount
    };
    using Event = XcbReply<xcb_generic_event_t>;

    /// Null if there is no X server.
    static std::unique_ptr<SelectionConnection> open();
    ~SelectionConnection();
    SelectionConnection(const SelectionConnection&) = delete;
    SelectionConnection& operator=(const SelectionConnection&) = delete;

    xcb_connection_t* xcb() const { return m_connection; }
    xcb_window_t window() const { return m_window; }
    int descriptor() const { return xcb_get_file_descriptor(m_connection); }
    bool isBroken() const { return xcb_connection_has_error(m_connection) != 0; }

    /// Asks the server: that a connection was cut shows only when it is used.
    bool isAlive();

    /// Most bytes that are written into a property at once.
    qsizetype chunkSize() const { return m_chunkSize; }

    xcb_atom_t atom(Atom known) const { return m_atoms[known]; }
    xcb_atom_t atom(const QByteArray& name) { return atoms({name}).front(); }
    /// One atom for each name; one round trip for all that are not known yet.
    std::vector<xcb_atom_t> atoms(const QByteArrayList& names);
    QByteArray name(xcb_atom_t atom) { return names({atom}).front(); }
    /// One name for each atom, empty where there is no such atom; one round trip for all not known yet.
    QByteArrayList names(const std::vector<xcb_atom_t>& atoms);

    /// The server's time now, in its milliseconds.
    xcb_timestamp_t serverTime();
    /// The window that owns the selection, whoever's it is.
    xcb_window_t owner(xcb_atom_t selection);

    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        /// Bits of an element: 8, 16 or 32; 0 if there is no such property.
        std::uint8_t format = 0;
        QByteArray data;
        /// It holds more bytes than asked for; there is no data then.
        bool isTooLarge = false;
        /// The elements where they have 32 bits.
        std::vector<std::uint32_t> words() const;
    };
    enum class Reading { keep, remove };
    /// The property, if it holds no more bytes than `limit`.
    Property property(xcb_window_t window, xcb_atom_t property, qsizetype limit, Reading reading);

    /// A property of our window for the next answer that we ask for. Each is another one, so that a late
    /// answer to an earlier question is not taken for the answer to a later one.
    xcb_atom_t nextProperty();

    /// The next event that has arrived, in order; null if there is none.
    Event nextEvent();
    /// Whether nextEvent() would give one without looking at the socket: replies bring events along.
    bool hasEventInHand();

private:
    explicit SelectionConnection(xcb_connection_t* connection, const xcb_screen_t& screen);
    void remember(const QByteArray& name, xcb_atom_t atom);

    xcb_connection_t* m_connection;
    xcb_window_t m_window;
    qsizetype m_chunkSize;
    std::array<xcb_atom_t, atomCount> m_atoms{};
    QHash<QByteArray, xcb_atom_t> m_atomOfName;
    QHash<xcb_atom_t, QByteArray> m_nameOfAtom;
    unsigned m_propertyNumber = 0;
    std::deque<Event> m_inHand;
};

} // namespace Tavrin
