#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace Tavrin {

/// What the update server says of the newest build. A value.
struct AppUpdateInfo {
    QString version;
    QString releaseNotes;
    std::optional<QString> downloadUrl;
    /// Preferred to `downloadUrl`, even when it is an empty text.
    std::optional<QString> zipUrl;
    /// Free text, never parsed.
    std::optional<QString> pubDate;

    bool operator==(const AppUpdateInfo&) const = default;

    /// Address of the archive: `zipUrl`, else `downloadUrl`, else empty.
    QString archiveUrl() const { return zipUrl ? *zipUrl : downloadUrl.value_or(QString()); }
};

} // namespace Tavrin
