#include "Platform/Linux/Applications/WindowMatch.h"

#include "Platform/Linux/Applications/ApplicationIndex.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

namespace Tavrin {
namespace {

/// From worst to best.
enum class ClassMatch { none, program, desktopId, declared };

ClassMatch matchText(const ApplicationIdentity& identity, const QString& text)
{
    const auto same = [&text](QStringView expected) {
        return !expected.isEmpty() && text.compare(expected, Qt::CaseInsensitive) == 0;
    };
    if (same(identity.declaredClass))
        return ClassMatch::declared;
    if (same(identity.desktopId) || same(lastPart(identity.desktopId)))
        return ClassMatch::desktopId;
    return same(identity.program) ? ClassMatch::program : ClassMatch::none;
}

/// The command of an entry without what is only packed around it.
struct PlainCommand {
    QStringList words;
    /// The program is a file of its package's own, and its processes have numbers of their own.
    bool isSandboxed = false;
};

/// "env" and its assignments stand before the command of every Snap, and of many others.
QStringList withoutEnvironment(QStringList command)
{
    if (command.isEmpty() || QFileInfo(command.front()).fileName() != u"env")
        return command;
    command.removeFirst();
    while (!command.isEmpty() && command.front().contains(u'='))
        command.removeFirst();
    return command;
}

/// "flatpak run --branch=… --command=PROGRAM --file-forwarding APPLICATION @@u %u @@" starts PROGRAM, or
/// what the package names. The signs "@@" are for flatpak itself.
QStringList insideFlatpak(const QStringList& command)
{
    constexpr QStringView programOption = u"--command=";
    QString program;
    qsizetype index = 2;
    for (; index < command.size() && command[index].startsWith(u"--"); ++index) {
        if (command[index].startsWith(programOption))
            program = command[index].sliced(programOption.size());
    }
    if (index >= command.size())
        return {};
    QStringList words{program.isEmpty() ? command[index] : program};
    std::copy_if(command.begin() + index + 1, command.end(), std::back_inserter(words),
        [](const QString& word) { return !word.startsWith(u"@@"); });
    return words;
}

PlainCommand plainCommand(const QStringList& commandLine)
{
    QStringList command = withoutEnvironment(commandLine);
    if (command.size() > 2 && QFileInfo(command[0]).fileName() == u"flatpak" && command[1] == u"run")
        return {insideFlatpak(command), true};
    return {std::move(command), false};
}

QString canonicalProgram(const QString& program)
{
    const QString path = program.startsWith(u'/') ? program : QStandardPaths::findExecutable(program);
    return QFileInfo(path).canonicalFilePath();
}

/// Whether a command runs a script: an interpreter with the script's path behind it.
bool runsScript(const QStringList& commandLine, const QString& script)
{
    return commandLine.size() > 1 && canonicalProgram(commandLine[1]) == script;
}

/// Whether the process was started with the words of `expected`, perhaps with more behind them.
bool beginsWith(const QStringList& commandLine, const QStringList& expected)
{
    const auto fileName
        = [](const QString& path) { return QStringView(path).sliced(path.lastIndexOf(u'/') + 1); };
    return commandLine.size() >= expected.size()
        && fileName(commandLine.front()) == fileName(expected.front())
        && std::equal(expected.begin() + 1, expected.end(), commandLine.begin() + 1);
}

QByteArray readProcessFile(pid_t pid, const char* name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1StringView(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString appImageOf(pid_t pid)
{
    constexpr QByteArrayView variable = "APPIMAGE=";
    for (const QByteArray& entry : readProcessFile(pid, "environ").split('\0')) {
        if (entry.startsWith(variable))
            return QFile::decodeName(entry.sliced(variable.size()));
    }
    return {};
}

/// The process name in stat stands in brackets and may hold anything: the fields are counted behind it.
pid_t sessionOf(pid_t pid)
{
    const QByteArray status = readProcessFile(pid, "stat");
    const QByteArrayList fields = status.sliced(status.lastIndexOf(')') + 1).simplified().split(' ');
    constexpr qsizetype sessionField = 3;
    return fields.size() > sessionField ? fields[sessionField].toInt() : 0;
}

} // namespace

ApplicationIdentity identityOf(const ApplicationTarget& target, const Launch& launch)
{
    ApplicationIdentity identity;
    identity.startupId = launch.startupId;
    if (!target.entry) {
        identity.executable = QFileInfo(target.executable).canonicalFilePath();
        identity.program = QFileInfo(target.executable).fileName();
        identity.session = launch.process;
        return identity;
    }
    const DesktopEntry& entry = *target.entry;
    identity.declaredClass = entry.windowClass;
    identity.desktopId = entry.id;
    // A terminal's window belongs to the terminal; ours is the one that we started for the program.
    if (entry.terminal) {
        identity.session = launch.process;
        return identity;
    }
    const auto [command, isSandboxed] = plainCommand(entry.commandLine);
    if (command.size() == 1)
        identity.program = QFileInfo(command.front()).fileName();
    if (isSandboxed)
        return identity;
    if (command.size() > 1)
        identity.commandLine = command;
    if (command.size() == 1)
        identity.executable = canonicalProgram(command.front());
    return identity;
}

bool isProcessOf(const ApplicationIdentity& identity, const ProcessDescription& process)
{
    if (identity.session > 0 && process.session == identity.session)
        return true;
    if (!identity.commandLine.isEmpty())
        return beginsWith(process.commandLine, identity.commandLine);
    return !identity.executable.isEmpty()
        && (process.executable == identity.executable || process.appImage == identity.executable
            || runsScript(process.commandLine, identity.executable));
}

std::uint32_t findWindow(const ApplicationIdentity& identity, const QList<WindowDescription>& fromTop,
    const std::function<ProcessDescription(pid_t)>& describe)
{
    std::uint32_t best = 0;
    ClassMatch bestMatch = ClassMatch::none;
    for (const WindowDescription& window : fromTop) {
        const ClassMatch match
            = std::max(matchText(identity, window.instance), matchText(identity, window.className));
        if (match > bestMatch) {
            bestMatch = match;
            best = window.id;
        }
    }
    if (best)
        return best;
    // A terminal that serves all its windows from one process shows whose they are only by this.
    for (const WindowDescription& window : fromTop) {
        if (!window.startupId.isEmpty() && window.startupId == identity.startupId)
            return window.id;
    }
    // Where the entry declares a class, a window of another class is another application, even in the
    // same process: a browser's web applications.
    if (!identity.declaredClass.isEmpty())
        return 0;
    for (const WindowDescription& window : fromTop) {
        if (window.pid > 0 && isProcessOf(identity, describe(window.pid)))
            return window.id;
    }
    return 0;
}

ProcessDescription describeProcess(pid_t pid)
{
    ProcessDescription process;
    process.executable = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid));
    // An update has replaced the file under the running program.
    constexpr QStringView replaced = u" (deleted)";
    if (process.executable.endsWith(replaced))
        process.executable.chop(replaced.size());
    process.appImage = appImageOf(pid);
    process.session = sessionOf(pid);
    QByteArray commandLine = readProcessFile(pid, "cmdline");
    if (commandLine.endsWith('\0'))
        commandLine.chop(1);
    for (const QByteArray& word : commandLine.split('\0'))
        process.commandLine.append(QString::fromLocal8Bit(word));
    return process;
}

} // namespace Tavrin
