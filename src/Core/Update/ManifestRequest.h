#pragma once

#include "Core/Update/ManifestAnswer.h"

#include <QByteArray>
#include <QObject>
#include <QUrl>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace Tavrin {

/// One GET of the manifest. It may block its thread while it looks for a proxy, so it does not belong on
/// the main thread. Everything the network needs exists from start() until destruction only.
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
