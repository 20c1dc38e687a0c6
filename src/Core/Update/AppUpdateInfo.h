#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>

namespace Tavrin {

/// What the update server says of the newest build. A value.
struct AppUpdateInfo {
    /// As the manifest has it; white space around it is not yet trimmed.
    QString version;
    /// What the update brings, for the user to read.
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

/// Why a manifest could not be decoded, in words for the user.
struct ManifestDecodingError {
    QString description;
};

using DecodedUpdateInfo = std::variant<AppUpdateInfo, ManifestDecodingError>;

/// Decodes a manifest: one JSON object in UTF-8. A missing "version" or "releaseNotes" and a value of
/// the wrong type fail; an optional key that is missing or null is absent. Unknown keys are ignored; of
/// a key that stands twice the last one counts. Nesting of any depth costs no stack.
DecodedUpdateInfo decodeUpdateInfo(const QByteArray& json);

/// Compact JSON object, the keys in declaration order, absent ones left out.
QByteArray encodeUpdateInfo(const AppUpdateInfo& info);

} // namespace Tavrin
