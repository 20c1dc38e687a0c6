#pragma once

#include "Core/Update/ManifestRequest.h"

#include <chrono>

class QThread;

namespace Tavrin {

/// Fetches the manifest on a thread of its own, because looking for a proxy may block for seconds (a
/// proxy script has to be downloaded first), and sees to it that the whole ends in time. The thread,
/// its network objects and this object are gone soon after the end. Main thread only.
class ManifestFetch : public QObject {
    Q_OBJECT

public:
    struct Limits {
        /// From construction to the last byte.
        std::chrono::milliseconds time;
        /// Of the body, in bytes.
        qint64 size;
    };

    /// Starts the fetch.
    ManifestFetch(const QUrl& address, Limits limits, QObject* parent);
    /// Ends a fetch that is under way, in silence.
    ~ManifestFetch() override;

Q_SIGNALS:
    /// Exactly once, never from within the constructor.
    void finished(const Tavrin::ManifestAnswer& answer);

private:
    void finish(const ManifestAnswer& answer);

    QThread* m_thread;
    bool m_isFinished = false;
};

} // namespace Tavrin
