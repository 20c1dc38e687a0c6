#pragma once

#include "Core/Update/AppUpdateInfo.h"
#include "Core/Update/ManifestSource.h"
#include "Core/Update/UpdateInstaller.h"
#include "MakerData.h"

#include <QDateTime>
#include <QObject>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace Tavrin {

/// What an update service works with. The defaults are those of the program; tests bring their own.
struct UpdateServiceOptions {
    /// Absolute address of the manifest.
    QUrl checkURL{QString::fromUtf8(MakerData::updateCheckURL), QUrl::StrictMode};
    /// Version of the running build; an empty one counts as unknown.
    QString currentVersion = QString::fromUtf8(MakerData::version);
    /// For a whole check, from its start to the manifest's last byte.
    std::chrono::milliseconds timeout{10'000};
    /// Bytes. A manifest is a few hundred; what exceeds this is not read to its end.
    qint64 largestManifest = 1024 * 1024;
    /// How long a download may stand still: what URL sessions allow a request by default.
    std::chrono::milliseconds downloadSilence{60'000};
    std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
};

/// Knows whether a newer build exists, and installs it. Main thread only; all work is asynchronous. What
/// belongs to one step changes together: observers never see half of an outcome.
class UpdateService : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY changed)
    Q_PROPERTY(bool isUpdating READ isUpdating NOTIFY changed)
    Q_PROPERTY(double downloadProgress READ downloadProgress NOTIFY changed)
    Q_PROPERTY(bool isUpdateAvailable READ isUpdateAvailable WRITE setUpdateAvailable NOTIFY changed)
    Q_PROPERTY(QDateTime lastCheckTime READ lastCheckTime NOTIFY changed)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY changed)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)

public:
    /// Source and installer outlive the service. An address that is not valid and absolute is a mistake of
    /// the build and ends the program.
    UpdateService(ManifestSource& source, UpdateInstaller& installer, UpdateServiceOptions options = {});
    ~UpdateService() override;

    /// The service of the running program; set by the composition root.
    static UpdateService& shared();

    /// A manifest request is in flight.
    bool isChecking() const { return m_isChecking; }
    /// A download or an install is in progress; no check starts meanwhile.
    bool isUpdating() const { return m_isUpdating; }
    /// Fraction of the archive that has arrived, 0.0 to 1.0; stays where it is when a download fails, and
    /// when the server does not say how much there is.
    double downloadProgress() const { return m_downloadProgress; }
    /// The same in whole per cent, for the user: "42%".
    QString downloadPercentage() const;
    /// The last successful check found a newer build, and the user has not put the news away.
    bool isUpdateAvailable() const { return m_isUpdateAvailable; }
    /// The manifest of a newer build; outlives setUpdateAvailable(false).
    const std::optional<AppUpdateInfo>& updateInfo() const { return m_updateInfo; }
    /// When a check last decoded a manifest; invalid until then.
    QDateTime lastCheckTime() const { return m_lastCheckTime; }
    /// Last line for the user; null until there is one, never cleared afterwards.
    QString statusMessage() const { return m_statusMessage; }
    /// Version of the running build; "1.0.7" when the build does not know it.
    QString currentVersion() const;

    /// Starts a check and returns. `manual` is true when the user asked for it; otherwise only a find is
    /// told. Does nothing while a check, a download or an install is in progress.
    Q_INVOKABLE void checkForUpdates(bool manual);

    /// Downloads and installs the build of updateInfo() and returns. Does nothing when there is none, when
    /// its archive has no address, and while a download or an install is in progress.
    Q_INVOKABLE void startAutoUpdate();

    /// With false: puts a find away until the next check finds it again.
    void setUpdateAvailable(bool isUpdateAvailable);

Q_SIGNALS:
    /// Something published has changed.
    void changed();
    /// The updater runs and waits for the end of the program.
    void terminationRequested();

private:
    QUrl requestAddress() const;
    void endCheck(const ManifestAnswer& answer, bool manual);
    void endFailedCheck(const QString& message, bool manual);
    void endCheckWithManifest(const AppUpdateInfo& manifest, bool manual);
    void publishProgress(qint64 written, qint64 expected);
    void endDownload(const DownloadResult& result);
    void applyUpdate(const QString& archive);
    void endFailedUpdate(const QString& message);

    ManifestSource& m_source;
    UpdateInstaller& m_installer;
    UpdateServiceOptions m_options;
    std::unique_ptr<ManifestFetch> m_fetch;
    std::unique_ptr<ArchiveDownload> m_download;
    bool m_isChecking = false;
    bool m_isUpdating = false;
    bool m_isUpdateAvailable = false;
    double m_downloadProgress = 0.0;
    std::optional<AppUpdateInfo> m_updateInfo;
    QDateTime m_lastCheckTime;
    QString m_statusMessage;
};

} // namespace Tavrin
