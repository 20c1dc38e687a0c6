#pragma once

#include "Core/Update/ManifestSource.h"
#include "Platform/Linux/Process/HelperProcess.h"

#include <QByteArray>
#include <QTimer>

class QSocketNotifier;

namespace Tavrin {

/// One fetch, from before its helper runs: reads what the helper writes and sees to the limits. Main thread.
class RunningFetch : public QObject, public ManifestFetch {
public:
    /// The time counts from now.
    RunningFetch(const ManifestSource::Limits& limits, ManifestSource::Completion completion);
    ~RunningFetch() override;

    /// There is no helper; the reason is in words for the user. May destroy this object.
    void fail(const QString& reason);

    /// Takes over a helper whose output does not block. One that comes too late is ended.
    void listen(HelperProcess helper);

private:
    void read();
    void finish(const ManifestAnswer& answer);

    qint64 m_largestBody;
    ManifestSource::Completion m_completion;
    QTimer m_limit;
    HelperProcess m_helper;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_frame;
};

} // namespace Tavrin
