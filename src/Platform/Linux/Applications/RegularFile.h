#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace Tavrin {

/// What a regular file holds; nothing if there is none at the path or it is longer than `limit` bytes. Never
/// waits for a pipe's writer or a device.
std::optional<QByteArray> readRegularFile(const QString& path, qint64 limit);

} // namespace Tavrin
