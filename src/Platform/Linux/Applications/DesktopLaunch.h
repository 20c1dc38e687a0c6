#pragma once

#include <QByteArrayList>
#include <QString>
#include <cstdint>
#include <sys/types.h>

namespace Tavrin {

/// How a launch went.
struct LaunchResult {
    bool launched = false;
    /// The child, to be collected by the caller; 0 where the session bus has started the application.
    pid_t pid = 0;
    /// In the system's words, if it was not launched.
    QString error;
    /// It was not launched for want of a terminal.
    bool lacksTerminal = false;
};

/// What launches look like to the desktop. All functions may take long: they are for worker threads.
namespace DesktopLaunch {

/// A startup id, unique for this process, that ends in the time of the user's press (Startup
/// Notification Protocol): with it the window manager puts the new window in front.
QByteArray startupId(std::uint32_t serverTime);

/// Launches the application of a desktop file with the addresses, in a session of its own with clean
/// signals and its standard descriptors on /dev/null. An application that the session bus starts is
/// waited for a few seconds at most; what has not failed by then counts as launched.
LaunchResult launchEntry(const QString& path, const QByteArrayList& addresses, const QByteArray& startupId);

/// Launches the default handler of the address's scheme with it.
LaunchResult launchDefaultHandler(const QByteArray& address, const QByteArray& startupId);

/// Launches an executable with arguments, in the same surroundings. A name without a slash is
/// searched for in $PATH.
LaunchResult launchProgram(const QByteArrayList& arguments, const QByteArray& startupId);

} // namespace DesktopLaunch
} // namespace Tavrin
