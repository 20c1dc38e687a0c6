#include "Core/Update/ManifestFetch.h"

#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>

namespace Tavrin {

ManifestFetch::ManifestFetch(const QUrl& address, Limits limits, QObject* parent)
    : QObject(parent)
    , m_thread(new QThread)
{
    auto* request = new ManifestRequest(address, limits.size);
    request->moveToThread(m_thread);
    connect(m_thread, &QThread::started, request, &ManifestRequest::start);
    connect(request, &ManifestRequest::answered, this, &ManifestFetch::finish);
    // From the request's own thread, so that the connection closes even while the main thread is busy.
    connect(request, &ManifestRequest::answered, m_thread, &QThread::quit, Qt::DirectConnection);
    connect(m_thread, &QThread::finished, request, &QObject::deleteLater);
    connect(m_thread, &QThread::finished, this, &QObject::deleteLater);

    // Counts here and not beside the request, which cannot look at the time while it is blocked.
    QTimer::singleShot(limits.time, Qt::PreciseTimer, this,
        [this] { finish(ManifestFailure{QStringLiteral("Hết thời gian chờ máy chủ trả lời.")}); });
    m_thread->setObjectName(QStringLiteral("ManifestFetch"));
    m_thread->start();
}

ManifestFetch::~ManifestFetch()
{
    // The thread has ended before, unless the program is quitting. Then a moment of patience keeps it from
    // running on while the process takes itself apart; one that is blocked has to be left behind.
    constexpr std::chrono::milliseconds patience{500};
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_thread->quit();
    if (m_thread->wait(QDeadlineTimer(patience)))
        delete m_thread;
}

void ManifestFetch::finish(const ManifestAnswer& answer)
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    m_thread->quit();
    Q_EMIT finished(answer);
}

} // namespace Tavrin
