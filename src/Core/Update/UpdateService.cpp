#include "Core/Update/UpdateService.h"

#include "Core/Update/VersionComparison.h"

#include <QPointer>
#include <QUrlQuery>

namespace Tavrin {
namespace {

UpdateService* sharedService = nullptr;

QString checkFailed(const QString& reason)
{
    return u"Lỗi khi kiểm tra: " + reason;
}

} // namespace

UpdateService::UpdateService(ManifestSource& source, UpdateInstaller& installer, UpdateServiceOptions options)
    : m_source(source)
    , m_installer(installer)
    , m_options(std::move(options))
{
    if (!m_options.checkURL.isValid() || m_options.checkURL.isRelative())
        qFatal("The update address is not valid and absolute: \"%s\" %s",
            qUtf8Printable(m_options.checkURL.toString()), qUtf8Printable(m_options.checkURL.errorString()));
    if (!sharedService)
        sharedService = this;
}

UpdateService::~UpdateService()
{
    if (sharedService == this)
        sharedService = nullptr;
}

UpdateService& UpdateService::shared()
{
    Q_ASSERT_X(sharedService, "UpdateService::shared", "no service has been built yet");
    return *sharedService;
}

QString UpdateService::currentVersion() const
{
    // A concrete release, so that a build that does not know itself is not offered every release.
    return m_options.currentVersion.isEmpty() ? QStringLiteral("1.0.7") : m_options.currentVersion;
}

QString UpdateService::downloadPercentage() const
{
    constexpr int hundredPercent = 100;
    return QString::number(static_cast<int>(m_downloadProgress * hundredPercent)) + u'%';
}

void UpdateService::checkForUpdates(bool manual)
{
    if (m_isChecking || m_isUpdating)
        return;
    m_isChecking = true;
    if (manual)
        m_statusMessage = QStringLiteral("Đang kiểm tra bản cập nhật...");
    Q_EMIT changed();

    m_fetch = m_source.fetch(requestAddress(), {m_options.timeout, m_options.largestManifest},
        [this, manual](const ManifestAnswer& answer) { endCheck(answer, manual); });
}

QUrl UpdateService::requestAddress() const
{
    constexpr qint64 millisecondsPerSecond = 1000;
    const qint64 seconds = m_options.now().toMSecsSinceEpoch() / millisecondsPerSecond;
    QUrlQuery query(m_options.checkURL);
    // An address that has not been asked before defeats caches along the way. Digits leave it valid.
    query.addQueryItem(QStringLiteral("t"), QString::number(seconds));
    QUrl address = m_options.checkURL;
    address.setQuery(query);
    return address;
}

void UpdateService::endCheck(const ManifestAnswer& answer, bool manual)
{
    m_fetch.reset();
    if (std::holds_alternative<ManifestRefused>(answer))
        return endFailedCheck(QStringLiteral("Không thể kết nối đến máy chủ cập nhật."), manual);
    if (const auto* failure = std::get_if<ManifestFailure>(&answer))
        return endFailedCheck(checkFailed(failure->reason), manual);
    const auto decoded = decodeUpdateInfo(std::get<QByteArray>(answer));
    if (const auto* error = std::get_if<ManifestDecodingError>(&decoded))
        return endFailedCheck(checkFailed(error->description), manual);
    endCheckWithManifest(std::get<AppUpdateInfo>(decoded), manual);
}

void UpdateService::endFailedCheck(const QString& message, bool manual)
{
    m_isChecking = false;
    if (manual)
        m_statusMessage = message;
    Q_EMIT changed();
}

void UpdateService::endCheckWithManifest(const AppUpdateInfo& manifest, bool manual)
{
    m_isChecking = false;
    m_lastCheckTime = m_options.now();
    const QString latest = manifest.version.trimmed();
    const QString current = currentVersion().trimmed();
    m_isUpdateAvailable = std::is_gt(compareVersions(latest, current));
    if (m_isUpdateAvailable) {
        m_updateInfo = manifest;
        // Also when nobody asked: a view that shows the status line then tells of the find.
        m_statusMessage = u"Đã có bản cập nhật mới: v" + latest;
    } else {
        m_updateInfo.reset();
        if (manual)
            m_statusMessage = u"Bạn đang dùng phiên bản mới nhất (v" + current + u").";
    }
    Q_EMIT changed();
}

void UpdateService::setUpdateAvailable(bool isUpdateAvailable)
{
    if (std::exchange(m_isUpdateAvailable, isUpdateAvailable) != isUpdateAvailable)
        Q_EMIT changed();
}

void UpdateService::startAutoUpdate()
{
    if (!m_updateInfo || m_isUpdating)
        return;
    // An empty text is no valid address either.
    const QUrl address(m_updateInfo->archiveUrl(), QUrl::StrictMode);
    if (!address.isValid())
        return;
    m_isUpdating = true;
    m_downloadProgress = 0.0;
    m_statusMessage = u"Đang tải bản cập nhật v" + m_updateInfo->version + u"...";
    Q_EMIT changed();

    m_download = m_installer.download(address, m_options.downloadSilence,
        {
            [this](qint64 written, qint64 expected) { publishProgress(written, expected); },
            [this](const DownloadResult& result) { endDownload(result); },
        });
}

void UpdateService::publishProgress(qint64 written, qint64 expected)
{
    if (expected <= 0)
        return;
    const double progress = static_cast<double>(written) / static_cast<double>(expected);
    if (std::exchange(m_downloadProgress, progress) != progress)
        Q_EMIT changed();
}

void UpdateService::endDownload(const DownloadResult& result)
{
    m_download.reset();
    if (const auto* failure = std::get_if<DownloadFailure>(&result))
        return endFailedUpdate(u"Lỗi tải bản cập nhật: " + failure->reason);
    if (const auto* failure = std::get_if<SaveFailure>(&result))
        return endFailedUpdate(u"Lỗi khi lưu file cập nhật: " + failure->reason);
    m_statusMessage = QStringLiteral("Đang cài đặt và khởi động lại...");
    Q_EMIT changed();
    applyUpdate(std::get<DownloadedArchive>(result).path);
}

void UpdateService::applyUpdate(const QString& archive)
{
    m_installer.install(
        archive, [service = QPointer<UpdateService>(this)](const std::optional<QString>& error) {
            if (!service)
                return;
            if (error)
                service->endFailedUpdate(u"Không thể chạy tiến trình cập nhật: " + *error);
            else
                Q_EMIT service->terminationRequested();
        });
}

void UpdateService::endFailedUpdate(const QString& message)
{
    m_isUpdating = false;
    m_statusMessage = message;
    Q_EMIT changed();
}

} // namespace Tavrin
