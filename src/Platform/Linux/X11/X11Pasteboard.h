#pragma once

#include "Core/Action/Pasteboard.h"
#include "Core/Support/Mailbox.h"
#include "Platform/Linux/X11/PrimarySelection.h"

#include <memory>
#include <unordered_map>

namespace Tavrin {

class SelectionThread;

/// The clipboard and the primary selection of an X server. A thread of its own owns and reads them; it is
/// started at the first use, and then rests until somebody asks.
///
/// Reads are limited: an owner that does not answer for 300 ms is given up, and everything together after
/// 1 s or 64 MiB. Formats are read only where there is a text. A write that follows a read whose
/// completion has not come yet takes its turn behind it.
class X11Pasteboard : public Pasteboard, public PrimarySelection {
public:
    X11Pasteboard();
    /// Completions that have not come yet do not come any more. What is to last on the clipboard goes to
    /// the clipboard manager, if there is one; that takes 300 ms at most.
    ~X11Pasteboard() override;
    Q_DISABLE_COPY_MOVE(X11Pasteboard)

    void read(Detail detail, ReadCompletion completion) override;
    /// Returns once the X server has us as the owner, unless a read is under way. Gives up waiting for a
    /// server that is silent for 1 s; the write comes about later then.
    void write(PasteboardContents contents, Stay stay) override;

    void lend(const QString& text, std::function<void()> ready) override;
    void giveBack() override;

private:
    using Number = unsigned;

    /// Null if the system gives no thread.
    SelectionThread* thread();
    template <typename Completion>
    static Completion take(std::unordered_map<Number, Completion>& waiting, Number number);

    Mailbox m_mailbox;
    /// Completions stay on this thread; the other one knows their numbers.
    std::unordered_map<Number, ReadCompletion> m_reads;
    std::unordered_map<Number, std::function<void()>> m_loans;
    Number m_lastNumber = 0;
    std::unique_ptr<SelectionThread> m_thread;
};

} // namespace Tavrin
