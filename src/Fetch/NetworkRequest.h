#pragma once

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QString>

namespace Tavrin {

/// A GET that asks no cache, takes and leaves no cookies, and follows redirects, from https to nothing less.
QNetworkRequest plainRequest(const QUrl& address);

/// True for the errors that only say that the server answered with another status than success.
bool isStatusError(QNetworkReply::NetworkError error);

/// Why there is no complete answer, in words for the user.
QString failureText(const QNetworkReply& reply);

} // namespace Tavrin
