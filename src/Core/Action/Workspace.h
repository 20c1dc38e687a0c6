#pragma once

#include <QString>
#include <QUrl>
#include <cstdint>
#include <functional>
#include <optional>

namespace Tavrin {

/// What the desktop needs to take a change of focus as the user's own wish.
struct ActivationContext {
    /// Time of the press or click in the display server's clock (milliseconds); 0 if unknown.
    std::uint32_t serverTime = 0;
    /// Activation token or startup id that came with the request; empty if none came.
    QString token;
};

/// How a fallback process is asked to open an application.
enum class FallbackTarget { path, bundleIdentifier, applicationName };

/// The desktop's services for applications and addresses. All functions are called on the main
/// thread and return at once; completions arrive on the main thread, exactly once each.
class Workspace {
public:
    using LocateCompletion = std::function<void(std::optional<QString> location)>;
    using OpenCompletion = std::function<void(bool opened)>;

    virtual ~Workspace() = default;

    /// Finds where the application with this identifier lies; nothing if the desktop knows none.
    virtual void locateApplication(const QString& bundleIdentifier, LocateCompletion completion) = 0;

    /// Brings the application at `location` to the front if it runs, else starts it.
    virtual void openApplication(
        const QString& location, const ActivationContext& context, OpenCompletion completion)
        = 0;

    /// Hands the address to the user's default browser.
    virtual void openURL(const QUrl& url, const ActivationContext& context) = 0;

    /// Starts the desktop's generic opener for `target`; not waited for, failures are silent.
    virtual void openWithFallback(FallbackTarget kind, const QString& target) = 0;
};

} // namespace Tavrin
