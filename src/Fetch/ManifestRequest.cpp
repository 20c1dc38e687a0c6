#include "Fetch/ManifestRequest.h"

#include "Fetch/NetworkRequest.h"

#include <QNetworkAccessManager>

namespace Tavrin {
namespace {

constexpr int statusOk = 200;

/// True for the answers after which the network access manager asks elsewhere by itself.
bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 305 || status == 307 || status == 308;
}

ManifestFailure tooLarge()
{
    return {QStringLiteral("Thông tin cập nhật lớn hơn mức cho phép.")};
}

} // namespace

ManifestRequest::ManifestRequest(QUrl address, qint64 largestBody)
    : m_address(std::move(address))
    , m_largestBody(largestBody)
{
}

ManifestRequest::~ManifestRequest() = default;

void ManifestRequest::start()
{
    m_network = std::make_unique<QNetworkAccessManager>();
    m_reply = m_network->get(plainRequest(m_address));
    // Holds a server back that sends faster than we read. A body we accept never fills it.
    m_reply->setReadBufferSize(m_largestBody + 1);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &ManifestRequest::readHeader);
    connect(m_reply, &QNetworkReply::readyRead, this, &ManifestRequest::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &ManifestRequest::end);
}

int ManifestRequest::status() const
{
    // Absent, and therefore 0, when the answer did not come over HTTP.
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void ManifestRequest::readHeader()
{
    if (isRedirect(status()))
        return;
    if (status() != statusOk)
        answer(ManifestRefused{});
    else if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_largestBody)
        answer(tooLarge());
}

void ManifestRequest::readBody()
{
    m_body += m_reply->readAll();
    if (m_body.size() > m_largestBody)
        answer(tooLarge());
}

void ManifestRequest::end()
{
    const auto error = m_reply->error();
    if (error != QNetworkReply::NoError && !isStatusError(error))
        answer(ManifestFailure{failureText(*m_reply)});
    else if (status() != statusOk)
        answer(ManifestRefused{});
    else
        answer(m_body);
}

void ManifestRequest::answer(const ManifestAnswer& answer)
{
    m_reply->disconnect(this);
    Q_EMIT answered(answer);
}

} // namespace Tavrin
