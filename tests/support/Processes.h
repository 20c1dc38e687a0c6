#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <sys/types.h>
#include <unistd.h>

namespace Tavrin::Testing {

/// What stands behind the name in /proc/PID/stat: state, parent and so on; empty if the process is gone.
inline QByteArrayList processState(pid_t pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.readAll();
    return text.sliced(text.lastIndexOf(')') + 2).split(' ');
}

/// Our children, also those that have ended and have not been collected.
inline QList<pid_t> ownChildren()
{
    QList<pid_t> result;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const pid_t pid = name.toInt();
        if (pid > 0 && processState(pid).value(1).toInt() == getpid())
            result.append(pid);
    }
    return result;
}

/// True unless the process has ended, collected or not.
inline bool isRunning(pid_t pid)
{
    const QByteArray state = processState(pid).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

/// Threads of this process.
inline qsizetype threadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

} // namespace Tavrin::Testing
