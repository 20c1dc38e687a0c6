#pragma once

#include "Core/Support/FileDescriptor.h"
#include "Fetch/DownloadReport.h"

#include <QObject>
#include <QTimer>
#include <QUrl>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace Tavrin {

/// One GET whose body goes to a file as it arrives, whatever its status and size. Waits for ever: whoever
/// reads the reports sees to the limits.
class DownloadRequest : public QObject {
    Q_OBJECT

public:
    /// The file is open for writing and empty.
    DownloadRequest(QUrl address, FileDescriptor file);
    ~DownloadRequest() override;

    /// Sends the request. Call once, on the thread the object lives in.
    void start();

Q_SIGNALS:
    /// Progress, at most every tenth of a second but always the last; once, at the end, how it ended.
    void reported(const Tavrin::DownloadReport& report);

private:
    void save();
    void end();
    void finish(const DownloadReport& report);
    bool write(const QByteArray& bytes);
    void reportProgress();

    QUrl m_address;
    FileDescriptor m_file;
    qint64 m_written = 0;
    QTimer m_reportTimer;
    std::unique_ptr<QNetworkAccessManager> m_network;
    QNetworkReply* m_reply = nullptr;
};

} // namespace Tavrin
