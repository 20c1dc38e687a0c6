#pragma once

#include "Core/Action/ScriptRunner.h"
#include "Core/Support/Mailbox.h"
#include "Core/Support/WorkerPool.h"

#include <QByteArray>

namespace Tavrin {

class ChildWatcher;

/// Runs scripts with zsh, each as a child of its own. Starting happens on background threads, because
/// executing a program can wait for a disk; waiting for the end costs no thread at all.
class LinuxScriptRunner : public ScriptRunner {
public:
    /// The watcher outlives the runner. `shell` is the path of the shell.
    explicit LinuxScriptRunner(ChildWatcher& watcher, QByteArray shell = "/bin/zsh");

    void runShellScript(const QString& script, Failure failure) override;
    /// There is no AppleScript here: always fails, with that reason.
    void runAppleScript(const QString& source, Failure failure) override;

private:
    ChildWatcher& m_watcher;
    QByteArray m_shell;
    Mailbox m_mailbox;
    WorkerPool m_workers;
};

} // namespace Tavrin
