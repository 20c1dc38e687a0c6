#pragma once

#include <QByteArrayList>
#include <QList>
#include <QString>
#include <optional>
#include <sys/types.h>

namespace Tavrin {

/// What to start, and with what around it.
struct ChildRequest {
    /// One variable of the child's environment that differs from ours; no value takes it away.
    struct Variable {
        QByteArray name;
        std::optional<QByteArray> value;
    };

    /// The program and its arguments. A program without a slash is searched for in $PATH.
    QByteArrayList arguments;
    QList<Variable> environmentChanges;
    /// Open descriptors for the child; they stay the caller's. -1 means /dev/null.
    int standardInput = -1;
    int standardOutput = -1;
    int standardError = -1;
};

/// A started child, or why there is none.
struct SpawnResult {
    pid_t pid = -1;
    /// The system's words for the failure; empty if the child was started.
    QString error;

    explicit operator bool() const { return pid > 0; }
};

/// Starts a program in a session of its own with nothing of ours but the environment and the working
/// directory: no signal blocked or ignored, no descriptor open beyond the standard three.
/// A program that cannot be executed is an error here, not an exit status of the child. The caller
/// hands the child to ChildWatcher::watch or waits for it. May be called on any thread.
SpawnResult spawn(const ChildRequest& request);

} // namespace Tavrin
