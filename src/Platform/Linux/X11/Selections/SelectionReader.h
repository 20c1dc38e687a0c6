#pragma once

#include "Core/Action/Pasteboard.h"
#include "Platform/Linux/X11/Selections/SelectionConnection.h"

#include <QByteArrayList>
#include <chrono>

namespace Tavrin {

/// One reading of a selection that another program owns: which targets it has, then the plain text, then
/// the formats beside it, one after the other. An owner that does not answer is left alone soon; what it
/// handed over until then counts.
class SelectionReader {
public:
    using Clock = std::chrono::steady_clock;
    using Completion = std::function<void(PasteboardContents)>;

    /// Asks for the first of it.
    SelectionReader(SelectionConnection& connection, xcb_atom_t selection, Pasteboard::Detail detail);

    void handle(const xcb_generic_event_t& event);
    Clock::time_point deadline() const { return std::min(m_progressDeadline, m_deadline); }
    void expire();

    bool isDone() const { return m_stage == Stage::done; }
    /// What has been read.
    PasteboardContents takeContents() { return std::move(m_contents); }

private:
    enum class Stage { targets, text, formats, done };
    using Property = SelectionConnection::Property;

    void request(const QByteArray& target);
    void requestNext();
    void handleNotify(const xcb_selection_notify_event_t& notify);
    void handlePiece();
    /// An answer is complete; without a type, there was none.
    void receive(const Property& property);
    void receiveTargets(const Property& property);
    void receiveText(const Property& property);
    void receiveFormat(const Property& property);
    void progress();
    bool isOwnerTheSame();

    SelectionConnection& m_connection;
    xcb_atom_t m_selection;
    Pasteboard::Detail m_detail;
    xcb_window_t m_owner;
    xcb_timestamp_t m_time;
    Stage m_stage = Stage::targets;
    Clock::time_point m_deadline;
    Clock::time_point m_progressDeadline;

    QByteArrayList m_textTargets;
    QByteArrayList m_formatTargets;
    PasteboardContents m_contents;
    qsizetype m_room;

    QByteArray m_target;
    xcb_atom_t m_targetAtom = XCB_ATOM_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    bool m_comesInPieces = false;
    Property m_pieces;
};

} // namespace Tavrin
