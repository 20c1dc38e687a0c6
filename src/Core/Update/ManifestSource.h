#pragma once

#include "Core/Update/ManifestAnswer.h"

#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>

namespace Tavrin {

/// A fetch that may be under way. Destroying it, also from within its completion, ends it in silence.
class ManifestFetch {
public:
    ManifestFetch() = default;
    virtual ~ManifestFetch() = default;
    Q_DISABLE_COPY_MOVE(ManifestFetch)
};

/// Where an update service gets the manifest from. Main thread only; never blocks it.
class ManifestSource {
public:
    struct Limits {
        /// From the start to the last byte, whatever the system and the server do.
        std::chrono::milliseconds time;
        /// Of the body, in bytes.
        qint64 size;
    };
    /// Called exactly once, on the main thread, never from within fetch().
    using Completion = std::function<void(const ManifestAnswer&)>;

    virtual ~ManifestSource() = default;

    /// Starts one GET of `address`, past every cache. Several may be under way; the source outlives them.
    [[nodiscard]] virtual std::unique_ptr<ManifestFetch> fetch(
        const QUrl& address, const Limits& limits, Completion completion)
        = 0;
};

} // namespace Tavrin
