#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>

namespace Tavrin {

/// So much of the body is in the file.
struct DownloadProgress {
    qint64 written;
    /// Bytes altogether; -1 if the server does not say.
    qint64 expected;
};

/// The file is complete.
struct DownloadComplete { };

/// It never will be; the reason is in words for the user.
struct DownloadBroken {
    QString reason;
};

/// Broken because the file does not take what arrives, for the system's reason.
DownloadBroken fileNotWritten(int errorNumber);

/// What `tavrin-fetch` says of a download, a line each: how far it is, from time to time, and at last how it
/// ended.
using DownloadReport = std::variant<DownloadProgress, DownloadComplete, DownloadBroken>;

/// Bytes, with the line break.
inline constexpr qsizetype longestDownloadReport = 4096;

/// The report as one line with its break. A reason that is too long is cut.
QByteArray encodeDownloadReport(const DownloadReport& report);

/// The report of a line without its break; nothing if it is none.
std::optional<DownloadReport> decodeDownloadReport(const QByteArray& line);

} // namespace Tavrin
