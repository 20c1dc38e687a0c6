#pragma once

#include "Core/Update/ManifestAnswer.h"

#include <QByteArray>

namespace Tavrin {

/// What `tavrin-fetch` writes to its standard output: one line of at most `longestFetchHead` bytes ("ok" and
/// the body's length, "refused", or "failed" and the reason), then the body, then nothing.
inline constexpr qsizetype longestFetchHead = 4096;

/// The answer in that form. A reason that is too long is cut.
QByteArray encodeFetchFrame(const ManifestAnswer& answer);

/// The answer in a complete frame. Anything else, such as what a helper that was ended halfway leaves, or a
/// body of more than `largestBody` bytes, is a failure that says so.
ManifestAnswer decodeFetchFrame(const QByteArray& frame, qint64 largestBody);

} // namespace Tavrin
