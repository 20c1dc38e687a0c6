#pragma once

#include "Core/Update/UpdateInstaller.h"
#include "Fetch/DownloadReport.h"
#include "Platform/Linux/Process/HelperProcess.h"

#include <QByteArray>
#include <QTimer>

class QSocketNotifier;

namespace Tavrin {

/// One download, from before there is a place for it: reads what the helper reports, sees to the limit, and
/// gives the complete file its name. Main thread.
class RunningDownload : public QObject, public ArchiveDownload {
public:
    /// `silence` counts from now, and anew whenever something arrives.
    RunningDownload(std::chrono::milliseconds silence, UpdateInstaller::DownloadHandlers handlers);
    ~RunningDownload() override;

    /// Ends it with anything but an archive. May destroy this object.
    void fail(const DownloadResult& failure) { finish(failure); }

    /// Takes over the incomplete file, which lies in the folder that is to hold the archive.
    void setIncompleteFile(const QString& path) { m_incompleteFile = path; }

    /// Takes over a helper whose output does not block. One that comes too late is ended.
    void listen(HelperProcess helper);

private:
    void read();
    /// False once the download has ended; this object may be gone then.
    bool readLine(const QByteArray& line);
    DownloadResult keep();
    void finish(const DownloadResult& result);

    UpdateInstaller::DownloadHandlers m_handlers;
    QTimer m_silence;
    HelperProcess m_helper;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_received;
    QString m_incompleteFile;
};

} // namespace Tavrin
