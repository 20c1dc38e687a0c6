#include "Platform/Linux/Network/FetchProcess.h"

#include "Fetch/FetchFailures.h"
#include "Fetch/FetchOrder.h"
#include "Platform/Linux/Network/RunningFetch.h"
#include "Platform/Linux/Process/HelperProcess.h"

#include <QFile>
#include <QPointer>

namespace Tavrin {

FetchProcess::FetchProcess(ChildWatcher& children, const QString& helper)
    : m_children(children)
    , m_helper(QFile::encodeName(helper))
{
}

std::unique_ptr<ManifestFetch> FetchProcess::fetch(
    const QUrl& address, const Limits& limits, Completion completion)
{
    auto fetch = std::make_unique<RunningFetch>(limits, std::move(completion));
    const QByteArrayList arguments = QByteArrayList{m_helper} + fetchArguments({address, limits.size});
    // The start may end after the fetch; the helper then ends, too.
    startHelper(arguments, HelperChannel::answers, m_children, m_mailbox.address(),
        [waiting = QPointer<RunningFetch>(fetch.get())](HelperStart start) {
            if (waiting && start.process.isRunning())
                waiting->listen(std::move(start.process));
            else if (waiting)
                waiting->fail(helperMissing(start.error));
        });
    return fetch;
}

} // namespace Tavrin
