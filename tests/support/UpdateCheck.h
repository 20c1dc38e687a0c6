#pragma once

#include "Core/Update/UpdateService.h"
#include "support/HttpServer.h"
#include "support/Wait.h"

namespace Tavrin::Testing {

/// Options for a check against this server by version 1.0.7. Long limits: what only a slow machine would
/// reach must not decide a test.
inline UpdateServiceOptions optionsFor(const QUrl& address)
{
    UpdateServiceOptions options;
    options.checkURL = address;
    options.currentVersion = QStringLiteral("1.0.7");
    options.timeout = std::chrono::seconds(20);
    return options;
}

/// A manifest with this version, as JSON.
inline QByteArray manifest(const QString& version)
{
    return encodeUpdateInfo(
        {version, QStringLiteral("Ghi chú"), {}, QStringLiteral("https://example.org/t.zip"), {}});
}

/// Runs a check to its end; false if it did not start or did not end in ten seconds.
inline bool runCheck(UpdateService& service, bool manual)
{
    service.checkForUpdates(manual);
    return service.isChecking() && waitFor([&] { return !service.isChecking(); });
}

} // namespace Tavrin::Testing
