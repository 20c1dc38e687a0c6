#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace Tavrin::AtomicFile {

/// Replaces the file at `path` by `contents`: a temporary file beside it is written, synced to disk and
/// renamed over it, so that a reader sees the old or the new whole. A symbolic link stays a link; what
/// it points at is replaced. A new file is readable by its owner only, an existing one keeps its mode.
/// The error in words on failure; then the old file is untouched and no temporary file is left.
std::optional<QString> write(const QString& path, const QByteArray& contents);

/// The whole file, or the error in words.
std::optional<QString> read(const QString& path, QByteArray& contents);

/// Removes temporary files that a write cut off by a crash left beside `path`.
void removeLeftovers(const QString& path);

} // namespace Tavrin::AtomicFile
