#pragma once

#include "Platform/Linux/Applications/ApplicationLocator.h"
#include "Platform/Linux/Applications/LaunchLedger.h"

#include <QByteArrayList>
#include <QList>
#include <cstdint>
#include <functional>
#include <sys/types.h>

namespace Tavrin {

/// A top-level window as the window manager lists it.
struct WindowDescription {
    std::uint32_t id = 0;
    /// The two halves of WM_CLASS.
    QString instance;
    QString className;
    /// _NET_WM_PID; 0 where the window names none of this machine.
    pid_t pid = 0;
    /// _NET_STARTUP_ID: what its program was launched with; empty where it does not say.
    QByteArray startupId{};
};

/// A process as /proc shows it; what cannot be read is empty.
struct ProcessDescription {
    /// The file it executes.
    QString executable;
    /// The AppImage it comes from.
    QString appImage;
    QStringList commandLine;
    /// Its session: the process that began it.
    pid_t session = 0;
};

/// What tells the windows of one application from those of others.
struct ApplicationIdentity {
    QString declaredClass;
    QString desktopId;
    /// File name of the program, where that alone names the application: with further arguments one
    /// program may be many applications (a browser and its web applications, an office suite).
    QString program;
    /// The program's file, links followed; empty like `program`.
    QString executable;
    /// The whole command; set only where it has further arguments.
    QStringList commandLine;
    /// The process we started it as, if it still runs and everything in its session is the
    /// application; else 0.
    pid_t session = 0;
    /// What we launched it with; empty if we did not.
    QByteArray startupId;
};

/// The identity of an application that we may have launched. Searches $PATH.
ApplicationIdentity identityOf(const ApplicationTarget& target, const Launch& launch);

/// Whether the process is the application.
bool isProcessOf(const ApplicationIdentity& identity, const ProcessDescription& process);

/// The application's window to bring to the front: the topmost of those that match best. The class
/// counts more than the launch and the process. `describe` is asked only where no class matches. 0 if there
/// is none.
std::uint32_t findWindow(const ApplicationIdentity& identity, const QList<WindowDescription>& fromTop,
    const std::function<ProcessDescription(pid_t)>& describe);

/// Reads /proc.
ProcessDescription describeProcess(pid_t pid);

} // namespace Tavrin
