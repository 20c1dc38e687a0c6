#pragma once

#include <QString>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

namespace Tavrin {

/// The archive is complete and lies at this path under its name for good.
struct DownloadedArchive {
    QString path;
};

/// The archive did not arrive; the reason is in words for the user.
struct DownloadFailure {
    QString reason;
};

/// There is no place for the archive; the reason is in words for the user.
struct SaveFailure {
    QString reason;
};

using DownloadResult = std::variant<DownloadedArchive, DownloadFailure, SaveFailure>;

/// A download that may be under way. Destroying it, also from within its completion, ends it in silence and
/// removes what has arrived of an incomplete archive.
class ArchiveDownload {
public:
    ArchiveDownload() = default;
    virtual ~ArchiveDownload() = default;
    Q_DISABLE_COPY_MOVE(ArchiveDownload)
};

/// How an update service gets a new build and puts it in the place of this one. Main thread only; never
/// blocks it.
class UpdateInstaller {
public:
    struct DownloadHandlers {
        /// Bytes of the body so far and altogether; the latter is negative while nobody has said it.
        std::function<void(qint64 written, qint64 expected)> progress;
        /// Called exactly once, on the main thread, never from within download().
        std::function<void(const DownloadResult&)> ended;
    };
    /// Told once, never from within install(): no value when the updater runs, or in words why it does not.
    using InstallCompletion = std::function<void(const std::optional<QString>& error)>;

    virtual ~UpdateInstaller() = default;

    /// Saves what a plain GET of `address` answers, whatever the status, as the archive in the user's
    /// temporary folder; an older one goes. Fails when nothing has arrived for as long as `silence`.
    [[nodiscard]] virtual std::unique_ptr<ArchiveDownload> download(
        const QUrl& address, std::chrono::milliseconds silence, DownloadHandlers handlers)
        = 0;

    /// Starts the updater, which waits for the end of this program, puts the archive's bundle in its place
    /// and starts that. It survives this program.
    virtual void install(const QString& archive, InstallCompletion completion) = 0;
};

} // namespace Tavrin
