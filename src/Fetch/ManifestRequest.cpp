#include "Fetch/ManifestRequest.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace Tavrin {
namespace {

QNetworkRequest requestFor(const QUrl& address)
{
    QNetworkRequest request(address);
    // Also tells the caches along the way not to answer from what they keep.
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // From https no redirect may lead to http.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Tavrin"));
    // Few bytes that unpack to many would get around the limit on the body.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

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

/// True for the errors that only say that the server answered with another status than success.
bool isStatusError(QNetworkReply::NetworkError error)
{
    return (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError)
        || (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

ManifestFailure failureOf(const QNetworkReply& reply)
{
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
        return {QStringLiteral("Máy chủ từ chối kết nối.")};
    case QNetworkReply::RemoteHostClosedError:
        return {QStringLiteral("Máy chủ đã đóng kết nối.")};
    case QNetworkReply::HostNotFoundError:
        return {QStringLiteral("Không tìm thấy máy chủ.")};
    case QNetworkReply::SslHandshakeFailedError:
        return {QStringLiteral("Không thể thiết lập kết nối an toàn (%1).").arg(reply.errorString())};
    case QNetworkReply::InsecureRedirectError:
        return {QStringLiteral("Máy chủ chuyển hướng sang một địa chỉ không an toàn.")};
    case QNetworkReply::TooManyRedirectsError:
        return {QStringLiteral("Máy chủ chuyển hướng quá nhiều lần.")};
    default:
        return {QStringLiteral("Lỗi mạng (%1).").arg(reply.errorString())};
    }
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
    m_reply = m_network->get(requestFor(m_address));
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
        answer(failureOf(*m_reply));
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
