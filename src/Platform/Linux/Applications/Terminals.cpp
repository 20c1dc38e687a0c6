#include "Platform/Linux/Applications/Terminals.h"

#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/XdgPaths.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <string_view>

namespace Tavrin {
namespace {

struct KnownTerminal {
    std::string_view program;
    /// What stands between the terminal and the words of the command that it runs (their manuals).
    std::string_view option;
};

/// The preferred first: what the system's administrator chose, what a desktop brings, what users add.
constexpr std::array knownTerminals{
    KnownTerminal{"x-terminal-emulator", "-e"},
    KnownTerminal{"gnome-terminal", "--"},
    KnownTerminal{"ptyxis", "--"},
    KnownTerminal{"kgx", "-e"},
    KnownTerminal{"konsole", "-e"},
    KnownTerminal{"xfce4-terminal", "-x"},
    KnownTerminal{"mate-terminal", "-x"},
    KnownTerminal{"lxterminal", "-e"},
    KnownTerminal{"qterminal", "-e"},
    KnownTerminal{"deepin-terminal", "-e"},
    KnownTerminal{"tilix", "-e"},
    KnownTerminal{"terminator", "-x"},
    KnownTerminal{"kitty", ""},
    KnownTerminal{"alacritty", "-e"},
    KnownTerminal{"ghostty", "-e"},
    KnownTerminal{"foot", ""},
    KnownTerminal{"wezterm", "start --"},
    KnownTerminal{"urxvt", "-e"},
    KnownTerminal{"st", "-e"},
    KnownTerminal{"xterm", "-e"},
};

/// Known, but not looked for: it chooses among the others by the lists that are read here, too.
constexpr KnownTerminal chooser{"xdg-terminal-exec", ""};

QString text(std::string_view value)
{
    return QString::fromLatin1(value.data(), static_cast<qsizetype>(value.size()));
}

/// The name behind an alternative, a link or a wrapper: x-terminal-emulator is a link to the program,
/// on Debian often to a wrapper beside it.
QString ownName(const QString& executable)
{
    QString fileName = QFileInfo(QFileInfo(executable).canonicalFilePath()).fileName();
    if (fileName.endsWith(u".wrapper"))
        fileName.truncate(fileName.lastIndexOf(u'.'));
    return fileName;
}

/// As one word of an Exec value, with no field code in it.
QByteArray quoted(const QByteArray& word)
{
    const GAllocated<gchar> text(g_shell_quote(word.constData()));
    return QByteArray(text.get()).replace('%', "%%");
}

/// Whether an entry is more than what an application left behind.
bool isInstalled(const DesktopEntry& entry)
{
    return !entry.commandLine.isEmpty()
        && !QStandardPaths::findExecutable(entry.commandLine.constFirst()).isEmpty();
}

/// The entry that starts a program of $PATH, else the program.
std::optional<QString> locationOfProgram(const QString& program, const ApplicationIndex& index)
{
    const QString executable = QStandardPaths::findExecutable(program);
    if (executable.isEmpty())
        return std::nullopt;
    if (const DesktopEntry* entry = index.findByProgram(ownName(executable)))
        return entry->path;
    const DesktopEntry* entry = index.findByProgram(QFileInfo(executable).fileName());
    return entry ? entry->path : executable;
}

std::optional<QString> preferredTerminal(const ApplicationIndex& index)
{
    const QString desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower();
    QStringList files;
    for (const QString& desktop : desktops.split(u':', Qt::SkipEmptyParts))
        files.append(XdgPaths::configHome() + u'/' + desktop + u"-xdg-terminals.list");
    files.append(XdgPaths::configHome() + u"/xdg-terminals.list");
    for (const QString& path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QString& id : preferredTerminalIds(file.readAll())) {
            if (const DesktopEntry* entry = index.findExact(id); entry && isInstalled(*entry))
                return entry->path;
        }
    }
    return std::nullopt;
}

} // namespace

QStringList preferredTerminalIds(const QByteArray& list)
{
    QStringList result;
    for (const QString& line : QString::fromUtf8(list).split(u'\n')) {
        const QString file = line.section(u':', 0, 0).trimmed();
        if (file.endsWith(desktopEntrySuffix))
            result.append(file.chopped(desktopEntrySuffix.size()));
    }
    return result;
}

std::optional<QString> userTerminal(const ApplicationIndex& index)
{
    if (const QString chosen = qEnvironmentVariable("TERMINAL"); !chosen.isEmpty()) {
        if (auto location = locationOfProgram(chosen, index))
            return location;
    }
    if (auto location = preferredTerminal(index))
        return location;
    for (const KnownTerminal& terminal : knownTerminals) {
        if (auto location = locationOfProgram(text(terminal.program), index))
            return location;
    }
    if (const DesktopEntry* entry = index.findByCategory(QStringLiteral("TerminalEmulator"));
        entry && isInstalled(*entry))
        return entry->path;
    return locationOfProgram(text(chooser.program), index);
}

QStringList knownTerminalPrograms()
{
    QStringList result;
    for (const KnownTerminal& terminal : knownTerminals)
        result.append(text(terminal.program));
    result.append(text(chooser.program));
    return result;
}

QStringList terminalWords(const QStringList& command)
{
    const QString name = QFileInfo(command.constFirst()).fileName();
    const auto is = [&name](const KnownTerminal& terminal) { return name == text(terminal.program); };
    const auto* known
        = is(chooser) ? &chooser : std::find_if(knownTerminals.begin(), knownTerminals.end(), is);
    // Debian asks "-e" of every x-terminal-emulator, and most of the others have it.
    if (known == knownTerminals.end())
        return command + QStringList{QStringLiteral("-e")};
    return QStringList{command.constFirst()} + text(known->option).split(u' ', Qt::SkipEmptyParts);
}

QByteArray execInTerminal(const QStringList& terminal, const QByteArray& exec, const QByteArray& path)
{
    QByteArray result;
    for (const QString& word : terminal)
        result += quoted(word.toLocal8Bit()) + ' ';
    for (qsizetype index = 0; index < exec.size(); ++index) {
        const QByteArray code = exec.sliced(index, std::min<qsizetype>(2, exec.size() - index));
        const bool isCode = exec[index] == '%' && code.size() == 2;
        // The changed entry lies in no file that GIO could name.
        result += code == "%k" ? quoted(path) : isCode ? code : code.left(1);
        index += isCode ? 1 : 0;
    }
    return result;
}

QStringList userTerminalWords()
{
    const auto location = userTerminal(ApplicationIndex::read(applicationFolders()));
    if (!location)
        return {};
    const auto entry = location->endsWith(desktopEntrySuffix) ? readDesktopEntry(*location) : std::nullopt;
    const QStringList command = entry ? entry->commandLine : QStringList{*location};
    return command.isEmpty() ? QStringList() : terminalWords(command);
}

} // namespace Tavrin
