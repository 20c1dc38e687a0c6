#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Platform/Linux/X11/Selections/SelectionDesk.h"
#include "Platform/Linux/X11/Selections/SelectionThread.h"

#include <future>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// A write takes a few round trips to the server, well under a millisecond. This is for a server that
/// another program holds for itself, where the rest of ours stands still as well.
constexpr auto writeLimit = 1s;

} // namespace

X11Pasteboard::X11Pasteboard() = default;
X11Pasteboard::~X11Pasteboard() = default;

SelectionThread* X11Pasteboard::thread()
{
    if (!m_thread)
        m_thread = SelectionThread::start();
    return m_thread.get();
}

template <typename Completion>
Completion X11Pasteboard::take(std::unordered_map<Number, Completion>& waiting, Number number)
{
    const auto found = waiting.find(number);
    Completion completion = std::move(found->second);
    waiting.erase(found);
    return completion;
}

void X11Pasteboard::read(Detail detail, ReadCompletion completion)
{
    const Number number = ++m_lastNumber;
    m_reads.emplace(number, std::move(completion));
    const auto finish = [this, number, address = m_mailbox.address()](const PasteboardContents& contents) {
        address.post([this, number, contents] { take(m_reads, number)(contents); });
    };
    if (SelectionThread* selections = thread())
        selections->post([detail, finish](SelectionDesk& desk) { desk.read(detail, finish); });
    else
        finish({});
}

void X11Pasteboard::write(PasteboardContents contents, Stay stay)
{
    SelectionThread* selections = thread();
    if (!selections)
        return;
    const auto done = std::make_shared<std::promise<void>>();
    const auto isThere = done->get_future();
    selections->post([contents = std::move(contents), stay, done](SelectionDesk& desk) {
        desk.write(contents, stay);
        done->set_value();
    });
    // What a read waits for is another program, and perhaps a window of ours that needs this thread.
    if (m_reads.empty() && m_loans.empty())
        isThere.wait_for(writeLimit);
}

void X11Pasteboard::lend(const QString& text, std::function<void()> ready)
{
    SelectionThread* selections = thread();
    if (!selections)
        return;
    const Number number = ++m_lastNumber;
    m_loans.emplace(number, std::move(ready));
    const auto finish = [this, number, address = m_mailbox.address()](bool isLent) {
        address.post([this, number, isLent] {
            if (const auto completion = take(m_loans, number); isLent)
                completion();
        });
    };
    selections->post([text, finish](SelectionDesk& desk) { desk.lend(text, finish); });
}

void X11Pasteboard::giveBack()
{
    if (m_thread)
        m_thread->post([](SelectionDesk& desk) { desk.giveBack(); });
}

} // namespace Tavrin
