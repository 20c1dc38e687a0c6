#include "Fetch/DownloadRequest.h"

#include "Fetch/NetworkRequest.h"

#include <QNetworkAccessManager>

#include <cerrno>
#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// More often nobody can see it.
constexpr auto reportInterval = 100ms;

} // namespace

DownloadRequest::DownloadRequest(QUrl address, FileDescriptor file)
    : m_address(std::move(address))
    , m_file(std::move(file))
{
    m_reportTimer.setSingleShot(true);
    m_reportTimer.setInterval(reportInterval);
    connect(&m_reportTimer, &QTimer::timeout, this, &DownloadRequest::reportProgress);
}

DownloadRequest::~DownloadRequest() = default;

void DownloadRequest::start()
{
    m_network = std::make_unique<QNetworkAccessManager>();
    m_reply = m_network->get(plainRequest(m_address));
    // Its buffer has no limit: with one, Qt 6.4 now and then forgets the last bytes of an encrypted stream.
    // What a slow disk leaves in it is bounded by this process's memory.
    connect(m_reply, &QNetworkReply::readyRead, this, &DownloadRequest::save);
    connect(m_reply, &QNetworkReply::finished, this, &DownloadRequest::end);
}

void DownloadRequest::save()
{
    if (!write(m_reply->readAll()))
        return finish(fileNotWritten(errno));
    if (!m_reportTimer.isActive())
        m_reportTimer.start();
}

void DownloadRequest::end()
{
    const auto error = m_reply->error();
    if (error != QNetworkReply::NoError && !isStatusError(error))
        return finish(DownloadBroken{failureText(*m_reply)});
    // A quota on a network file system may speak up only now.
    if (!write(m_reply->readAll()) || !m_file.closeNow())
        return finish(fileNotWritten(errno));
    reportProgress();
    finish(DownloadComplete{});
}

void DownloadRequest::finish(const DownloadReport& report)
{
    m_reply->disconnect(this);
    m_reportTimer.stop();
    Q_EMIT reported(report);
}

bool DownloadRequest::write(const QByteArray& bytes)
{
    m_written += bytes.size();
    return m_file.write(bytes);
}

void DownloadRequest::reportProgress()
{
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    Q_EMIT reported(DownloadProgress{m_written, length.isValid() ? length.toLongLong() : -1});
}

} // namespace Tavrin
