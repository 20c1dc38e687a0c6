#include "Fetch/NetworkRequest.h"

namespace Tavrin {

QNetworkRequest plainRequest(const QUrl& address)
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
    // Few bytes that unpack to many would get around any limit.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

bool isStatusError(QNetworkReply::NetworkError error)
{
    return (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError)
        || (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

QString failureText(const QNetworkReply& reply)
{
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("Máy chủ từ chối kết nối.");
    case QNetworkReply::RemoteHostClosedError:
        return QStringLiteral("Máy chủ đã đóng kết nối.");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("Không tìm thấy máy chủ.");
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("Không thể thiết lập kết nối an toàn (%1).").arg(reply.errorString());
    case QNetworkReply::InsecureRedirectError:
        return QStringLiteral("Máy chủ chuyển hướng sang một địa chỉ không an toàn.");
    case QNetworkReply::TooManyRedirectsError:
        return QStringLiteral("Máy chủ chuyển hướng quá nhiều lần.");
    default:
        return QStringLiteral("Lỗi mạng (%1).").arg(reply.errorString());
    }
}

} // namespace Tavrin
