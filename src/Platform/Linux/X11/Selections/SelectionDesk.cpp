#include "Platform/Linux/X11/Selections/SelectionDesk.h"

#include <algorithm>
#include <malloc.h>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// The program is ending, and its user must not wait for a clipboard manager.
constexpr auto handOverLimit = 300ms;

constexpr xcb_atom_t primary = XCB_ATOM_PRIMARY;

} // namespace

bool SelectionDesk::isConnected()
{
    if (m_connection && m_connection->isAlive())
        return true;
    drop();
    m_connection = SelectionConnection::open();
    if (!m_connection)
        return false;
    m_owner.emplace(*m_connection);
    return true;
}

void SelectionDesk::drop()
{
    finishReading();
    m_handOverDeadline.reset();
    m_isLent = false;
    m_owner.reset();
    m_connection.reset();
}

void SelectionDesk::read(Pasteboard::Detail detail, SelectionReader::Completion completion)
{
    if (!isConnected() || m_isEnding)
        return completion({});
    start(m_connection->atom(SelectionConnection::clipboard), detail, std::move(completion));
}

void SelectionDesk::start(
    xcb_atom_t selection, Pasteboard::Detail detail, SelectionReader::Completion completion)
{
    if (const SelectionOffer* offer = m_owner->offer(selection);
        offer && m_connection->owner(selection) == m_connection->window())
        return completion(offer->contents(detail));
    m_completion = std::move(completion);
    m_reader = std::make_unique<SelectionReader>(*m_connection, selection, detail);
    if (m_reader->isDone())
        finishReading();
}

void SelectionDesk::finishReading()
{
    if (!m_reader)
        return;
    PasteboardContents contents = m_reader->takeContents();
    m_reader.reset();
    std::exchange(m_completion, {})(std::move(contents));
}

void SelectionDesk::write(const PasteboardContents& contents, Pasteboard::Stay stay)
{
    if (isConnected())
        m_owner->own(m_connection->atom(SelectionConnection::clipboard), SelectionOffer(contents, stay));
}

void SelectionDesk::lend(const QString& text, std::function<void(bool)> completion)
{
    if (!isConnected() || m_isEnding)
        return completion(false);
    // What is ours there now was lent; before it was somebody's text, and that still is to come back.
    if (m_isLent && m_connection->owner(primary) == m_connection->window())
        return lendNow(text, completion);
    start(primary, Pasteboard::Detail::string,
        [this, text, completion = std::move(completion)](PasteboardContents found) {
            m_borrowed = std::move(found.string);
            lendNow(text, completion);
        });
}

void SelectionDesk::lendNow(const QString& text, const std::function<void(bool)>& completion)
{
    m_isLent = m_owner->own(primary, SelectionOffer({text, {}}, Pasteboard::Stay::passing));
    completion(m_isLent);
}

void SelectionDesk::giveBack()
{
    const auto borrowed = std::exchange(m_borrowed, std::nullopt);
    if (!std::exchange(m_isLent, false) || !isConnected()
        || m_connection->owner(primary) != m_connection->window())
        return;
    if (borrowed)
        m_owner->own(primary, SelectionOffer({borrowed, {}}, Pasteboard::Stay::lasting));
    else
        m_owner->release(primary);
}

void SelectionDesk::step()
{
    if (!m_connection)
        return;
    while (const SelectionConnection::Event event = m_connection->nextEvent())
        handle(*event);
    if (m_connection->isBroken())
        return drop();
    m_owner->expire();
    if (m_reader) {
        m_reader->expire();
        if (m_reader->isDone())
            finishReading();
    }
    if (m_handOverDeadline && *m_handOverDeadline <= Clock::now())
        m_handOverDeadline.reset();
}

void SelectionDesk::handle(const xcb_generic_event_t& event)
{
    m_owner->handle(event);
    if (m_reader) {
        m_reader->handle(event);
        if (m_reader->isDone())
            finishReading();
    }
    if ((event.response_type & 0x7F) == XCB_SELECTION_NOTIFY
        && reinterpret_cast<const xcb_selection_notify_event_t&>(event).selection
            == m_connection->atom(SelectionConnection::clipboardManager))
        m_handOverDeadline.reset();
}

bool SelectionDesk::isReadyToWait()
{
    if (!m_connection)
        return true;
    xcb_flush(m_connection->xcb());
    if (m_connection->hasEventInHand())
        return false;
    // The allocator keeps what a thread other than the first frees.
    if (!m_reader && !m_owner->isTransferring() && m_owner->takeFreedMuch())
        malloc_trim(0);
    return true;
}

std::optional<SelectionDesk::Clock::time_point> SelectionDesk::deadline() const
{
    std::optional<Clock::time_point> earliest = m_handOverDeadline;
    const auto consider = [&earliest](std::optional<Clock::time_point> other) {
        if (other && (!earliest || *other < *earliest))
            earliest = other;
    };
    if (m_owner)
        consider(m_owner->deadline());
    if (m_reader)
        consider(m_reader->deadline());
    return earliest;
}

void SelectionDesk::endReading()
{
    m_isEnding = true;
    finishReading();
}

void SelectionDesk::handOver()
{
    if (!m_connection || m_connection->isBroken())
        return;
    const xcb_atom_t manager = m_connection->atom(SelectionConnection::clipboardManager);
    const SelectionOffer* offer = m_owner->offer(m_connection->atom(SelectionConnection::clipboard));
    if (!offer || !offer->isLasting() || m_connection->owner(manager) == XCB_WINDOW_NONE)
        return;
    const auto targets = m_connection->atoms(offer->targets());
    const xcb_atom_t property = m_connection->atom(SelectionConnection::handOver);
    xcb_change_property(m_connection->xcb(), XCB_PROP_MODE_REPLACE, m_connection->window(), property,
        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(m_connection->xcb(), m_connection->window(), manager,
        m_connection->atom(SelectionConnection::saveTargets), property, m_connection->serverTime());
    m_handOverDeadline = Clock::now() + handOverLimit;
}

} // namespace Tavrin
