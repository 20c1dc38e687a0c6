#pragma once

#include "Core/Update/UpdateService.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/Network/FetchProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "support/HttpServer.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace Tavrin::Testing {

/// The program's own way to the network, with the helper of the build tree. No helper may outlive it.
class RealManifestSource {
public:
    ~RealManifestSource()
    {
        EXPECT_TRUE(waitFor([this] { return m_children.runningCount() == 0; })) << "a helper is left";
    }

protected:
    ManifestSource& source() { return m_source; }
    FakeUpdateInstaller& installer() { return m_installer; }

private:
    ChildWatcher m_children;
    FakeUpdateInstaller m_installer;
    FetchProcess m_source{m_children, QStringLiteral(TAVRIN_FETCH)};
};

/// An update service that asks the server as in the program, and installs nothing.
class RealUpdateService : private RealManifestSource, public UpdateService {
public:
    explicit RealUpdateService(UpdateServiceOptions options)
        : UpdateService(source(), installer(), std::move(options))
    {
    }
    using RealManifestSource::installer;
};

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

/// Runs `check` with longer and longer time limits until it returns true: until this machine, whatever else
/// it does, has started a helper and reached the server within the limit. False if it never has.
inline bool withEnoughTime(const std::function<bool(std::chrono::milliseconds limit)>& check)
{
    constexpr std::array limits{200, 1000, 5000};
    return std::ranges::any_of(limits, [&](int limit) { return check(std::chrono::milliseconds(limit)); });
}

/// Runs a check to its end; false if it did not start or did not end in ten seconds.
inline bool runCheck(UpdateService& service, bool manual)
{
    service.checkForUpdates(manual);
    return service.isChecking() && waitFor([&] { return !service.isChecking(); });
}

} // namespace Tavrin::Testing
