#pragma once

#include "Core/Update/ManifestAnswer.h"

#include <QByteArray>
#include <QObject>
#include <QUrl>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace Tavrin {

/// One GET of the manifest. It may block its thread for as long as it looks for a proxy (a proxy script has
/// to be downloaded first), and what the network's libraries take outlives it: hence a process of its own.
class ManifestRequest : public QObject {
    Q_OBJECT

public:
    /// `largestBody` in bytes; a body that exceeds it fails as soon as that is known.
    ManifestRequest(QUrl address, qint64 largestBody);
    ~ManifestRequest() override;

    /// Sends the request. Call once, on the thread the object lives in.
    void start();

Q_SIGNALS:
    /// Once, unless the object is destroyed before the request has ended.
    void answered(const Tavrin::ManifestAnswer& answer);

private:
    int status() const;
    void readHeader();
    void readBody();
    void end();
    void answer(const ManifestAnswer& answer);

    QUrl m_address;
    qint64 m_largestBody;
    QByteArray m_body;
    std::unique_ptr<QNetworkAccessManager> m_network;
    QNetworkReply* m_reply = nullptr;
};

} // namespace Tavrin
