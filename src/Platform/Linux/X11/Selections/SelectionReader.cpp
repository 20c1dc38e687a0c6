#include "Platform/Linux/X11/Selections/SelectionReader.h"

#include "Platform/Linux/X11/Selections/SelectionTargets.h"

#include <algorithm>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// Whoever pressed a key waits: an owner that is alive answers within a few milliseconds, a busy one
/// within these.
constexpr auto patience = 300ms;
/// For everything together, also while pieces keep coming.
constexpr auto totalPatience = 1s;

/// For everything together: beyond this, nobody puts something back after a paste.
constexpr qsizetype largestContents = 64 * 1024 * 1024;
constexpr qsizetype largestTargetList = 4096;

} // namespace

SelectionReader::SelectionReader(
    SelectionConnection& connection, xcb_atom_t selection, Pasteboard::Detail detail)
    : m_connection(connection)
    , m_selection(selection)
    , m_detail(detail)
    , m_owner(connection.owner(selection))
    , m_time(connection.serverTime())
    , m_deadline(Clock::now() + totalPatience)
    , m_progressDeadline(Clock::now() + patience)
    , m_room(largestContents)
{
    if (m_owner == XCB_WINDOW_NONE)
        m_stage = Stage::done;
    else
        request("TARGETS");
}

void SelectionReader::request(const QByteArray& target)
{
    m_target = target;
    m_targetAtom = m_connection.atom(target);
    m_property = m_connection.nextProperty();
    m_comesInPieces = false;
    xcb_delete_property(m_connection.xcb(), m_connection.window(), m_property);
    xcb_convert_selection(
        m_connection.xcb(), m_connection.window(), m_selection, m_targetAtom, m_property, m_time);
}

void SelectionReader::requestNext()
{
    m_stage = Stage::done;
    if (!m_contents.string) {
        // Without a text nothing is put back later, so the rest is left alone.
        if (m_textTargets.isEmpty())
            return;
        m_stage = Stage::text;
        return request(m_textTargets.takeFirst());
    }
    if (m_formatTargets.isEmpty() || !isOwnerTheSame())
        return;
    m_stage = Stage::formats;
    request(m_formatTargets.takeFirst());
}

/// What one program offers must not come together with what the next one has put there.
bool SelectionReader::isOwnerTheSame()
{
    return m_connection.owner(m_selection) == m_owner;
}

void SelectionReader::handle(const xcb_generic_event_t& event)
{
    const auto type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_NOTIFY)
        return handleNotify(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
    if (type != XCB_PROPERTY_NOTIFY || isDone() || !m_comesInPieces)
        return;
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.window == m_connection.window() && notify.atom == m_property
        && notify.state == XCB_PROPERTY_NEW_VALUE)
        handlePiece();
}

void SelectionReader::handleNotify(const xcb_selection_notify_event_t& notify)
{
    if (isDone() || m_comesInPieces || notify.selection != m_selection || notify.target != m_targetAtom)
        return;
    if (notify.property == XCB_ATOM_NONE)
        return receive({});
    if (notify.property != m_property)
        return;
    Property property = m_connection.property(
        m_connection.window(), m_property, m_room, SelectionConnection::Reading::remove);
    if (property.type != m_connection.atom(SelectionConnection::incremental))
        return receive(property);
    // Removing the property has asked for the first piece.
    m_comesInPieces = true;
    m_pieces = {};
    progress();
}

void SelectionReader::handlePiece()
{
    const Property piece = m_connection.property(m_connection.window(), m_property,
        m_room - m_pieces.data.size(), SelectionConnection::Reading::remove);
    if (piece.isTooLarge)
        return receive({});
    // Owners that add to the property before we remove it say so twice.
    if (piece.format == 0)
        return;
    m_pieces.type = piece.type;
    m_pieces.format = piece.format;
    if (piece.data.isEmpty())
        return receive(std::exchange(m_pieces, {}));
    m_pieces.data += piece.data;
    progress();
}

void SelectionReader::receive(const Property& property)
{
    progress();
    m_room -= property.data.size();
    switch (m_stage) {
    case Stage::targets:
        receiveTargets(property);
        break;
    case Stage::text:
        receiveText(property);
        break;
    case Stage::formats:
        receiveFormat(property);
        break;
    case Stage::done:
        break;
    }
    requestNext();
}

void SelectionReader::receiveTargets(const Property& property)
{
    std::vector<xcb_atom_t> atoms = property.words();
    if (atoms.empty()) {
        // Small programs have one text and no list.
        m_textTargets = {SelectionTargets::utf8String, SelectionTargets::latin1String};
        return;
    }
    atoms.resize(std::min<std::size_t>(atoms.size(), largestTargetList));
    const QByteArrayList offered = m_connection.names(atoms);
    m_textTargets = SelectionTargets::textTargets(offered);
    if (m_detail == Pasteboard::Detail::allFormats)
        m_formatTargets = SelectionTargets::formatTargets(offered);
}

void SelectionReader::receiveText(const Property& property)
{
    if (property.format == 8 && !property.isTooLarge)
        m_contents.string
            = SelectionTargets::decodeText(m_target, m_connection.name(property.type), property.data);
}

void SelectionReader::receiveFormat(const Property& property)
{
    if (property.format == 8 && !property.isTooLarge)
        m_contents.formats.push_back({QString::fromLatin1(m_target), property.data});
}

void SelectionReader::progress()
{
    m_progressDeadline = Clock::now() + patience;
}

void SelectionReader::expire()
{
    if (deadline() <= Clock::now())
        m_stage = Stage::done;
}

} // namespace Tavrin
