#pragma once

#include <QByteArray>
#include <QString>
#include <variant>

namespace Tavrin {

/// The server answered, but not with HTTP status 200.
struct ManifestRefused { };

/// No complete answer arrived; the reason is in words for the user.
struct ManifestFailure {
    QString reason;
};

/// How the fetch of a manifest ended; the body when all is well.
using ManifestAnswer = std::variant<QByteArray, ManifestRefused, ManifestFailure>;

} // namespace Tavrin
