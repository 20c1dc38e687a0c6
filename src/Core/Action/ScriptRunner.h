#pragma once

#include <QString>
#include <functional>

namespace Tavrin {

/// Runs scripts in the background. Functions are called on the main thread and return at once; the
/// failure callback arrives on the main thread, with a reason in words, and only on failure.
class ScriptRunner {
public:
    using Failure = std::function<void(const QString& reason)>;

    virtual ~ScriptRunner() = default;

    /// Runs `/bin/zsh -c script` with its output discarded. Fails only if the shell cannot start.
    virtual void runShellScript(const QString& script, Failure failure) = 0;

    /// Runs AppleScript source, on a system that has it.
    virtual void runAppleScript(const QString& source, Failure failure) = 0;
};

} // namespace Tavrin
