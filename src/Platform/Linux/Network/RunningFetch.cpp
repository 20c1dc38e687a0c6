#include "Platform/Linux/Network/RunningFetch.h"

#include "Fetch/FetchFailures.h"
#include "Fetch/FetchFrame.h"

#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cerrno>

namespace Tavrin {

RunningFetch::RunningFetch(const ManifestSource::Limits& limits, ManifestSource::Completion completion)
    : m_largestBody(limits.size)
    , m_completion(std::move(completion))
{
    m_limit.setSingleShot(true);
    m_limit.setTimerType(Qt::PreciseTimer);
    connect(&m_limit, &QTimer::timeout, this, [this] { finish(ManifestFailure{serverSilent()}); });
    m_limit.start(limits.time);
}

RunningFetch::~RunningFetch() = default;

void RunningFetch::fail(const QString& reason)
{
    finish(ManifestFailure{reason});
}

void RunningFetch::listen(HelperProcess helper)
{
    if (!m_completion)
        return;
    m_helper = std::move(helper);
    m_notifier = std::make_unique<QSocketNotifier>(m_helper.channel(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &RunningFetch::read);
}

void RunningFetch::read()
{
    std::array<char, 16 * 1024> piece{};
    const ssize_t count = ::read(m_helper.channel(), piece.data(), piece.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    m_frame.append(piece.data(), std::max<ssize_t>(count, 0));
    const bool isTooMuch = m_frame.size() > longestFetchHead + m_largestBody;
    if (count <= 0 || isTooMuch)
        finish(decodeFetchFrame(m_frame, m_largestBody));
}

void RunningFetch::finish(const ManifestAnswer& answer)
{
    const ManifestSource::Completion completion = std::exchange(m_completion, nullptr);
    if (!completion)
        return;
    m_limit.stop();
    m_notifier.reset();
    m_helper = {};
    m_frame.clear();
    completion(answer);
}

} // namespace Tavrin
