#pragma once

#include "Platform/Linux/X11/Selections/SelectionOwner.h"
#include "Platform/Linux/X11/Selections/SelectionReader.h"

#include <functional>

namespace Tavrin {

/// The clipboard and the primary selection as one program has them: reads, owns, lends, and hands over at
/// the end. Everything on one thread, which calls step() whenever something happened. Where there is no X
/// server, there is nothing to read and nothing can be owned; the next call tries to connect again.
class SelectionDesk {
public:
    using Clock = std::chrono::steady_clock;

    /// What the clipboard holds now. The completion comes at once or from step(). While isReading(), no
    /// other call may be made.
    void read(Pasteboard::Detail detail, SelectionReader::Completion completion);
    void write(const PasteboardContents& contents, Pasteboard::Stay stay);
    /// Remembers the text of the primary selection and puts `text` there; says whether it is there. As
    /// with read().
    void lend(const QString& text, std::function<void(bool)> completion);
    /// Puts the remembered text back, unless another program has taken the primary selection.
    void giveBack();

    bool isReading() const { return m_reader != nullptr; }

    /// Handles what has arrived, and what has become late.
    void step();
    /// Sends what is to be sent; false if there are events to handle before waiting for more.
    bool isReadyToWait();
    /// What to wait for; -1 if there is no connection.
    int descriptor() const { return m_connection ? m_connection->descriptor() : -1; }
    /// When to call step() at the latest.
    std::optional<Clock::time_point> deadline() const;

    /// Ends a reading, and answers the following ones with nothing.
    void endReading();
    /// Asks the clipboard manager, if there is one, to keep what is on the clipboard when we are gone. It is
    /// done when isHandingOver() is false, soon in any case.
    void handOver();
    bool isHandingOver() const { return m_handOverDeadline.has_value(); }

private:
    bool isConnected();
    void start(xcb_atom_t selection, Pasteboard::Detail detail, SelectionReader::Completion completion);
    void finishReading();
    void lendNow(const QString& text, const std::function<void(bool)>& completion);
    void handle(const xcb_generic_event_t& event);
    void drop();

    std::unique_ptr<SelectionConnection> m_connection;
    std::optional<SelectionOwner> m_owner;
    std::unique_ptr<SelectionReader> m_reader;
    SelectionReader::Completion m_completion;
    /// The text that was on the primary selection before ours.
    std::optional<QString> m_borrowed;
    bool m_isLent = false;
    bool m_isEnding = false;
    std::optional<Clock::time_point> m_handOverDeadline;
};

} // namespace Tavrin
