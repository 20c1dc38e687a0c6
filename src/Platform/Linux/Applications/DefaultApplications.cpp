#include "Platform/Linux/Applications/DefaultApplications.h"

#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/XdgPaths.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <array>
#include <gio/gdesktopappinfo.h>

namespace Tavrin {
namespace {

/// The content type whose default handler fills the role (shared-mime-info).
const char* contentType(DefaultRole role)
{
    switch (role) {
    case DefaultRole::browser:
        return "x-scheme-handler/https";
    case DefaultRole::fileManager:
        return "inode/directory";
    case DefaultRole::textEditor:
        return "text/plain";
    case DefaultRole::mail:
        return "x-scheme-handler/mailto";
    case DefaultRole::calendar:
        return "text/calendar";
    case DefaultRole::documentViewer:
        return "application/pdf";
    case DefaultRole::imageViewer:
        return "image/jpeg";
    case DefaultRole::videoPlayer:
        return "video/mp4";
    case DefaultRole::musicPlayer:
        return "audio/mpeg";
    case DefaultRole::none:
    case DefaultRole::terminal:
        break;
    }
    return nullptr;
}

std::optional<QString> handlerOf(const char* type)
{
    const GObjectPointer<GAppInfo> handler(g_app_info_get_default_for_type(type, FALSE));
    if (!handler || !G_IS_DESKTOP_APP_INFO(handler.get()))
        return std::nullopt;
    const char* path = g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(handler.get()));
    return path ? std::optional(QFile::decodeName(path)) : std::nullopt;
}

/// The entry that starts a program of $PATH, else the program.
std::optional<QString> locationOfProgram(const QString& program, const ApplicationIndex& index)
{
    const QString executable = QStandardPaths::findExecutable(program);
    if (executable.isEmpty())
        return std::nullopt;
    // x-terminal-emulator is a link to the program, on Debian often to a wrapper beside it.
    QString fileName = QFileInfo(QFileInfo(executable).canonicalFilePath()).fileName();
    if (fileName.endsWith(u".wrapper"))
        fileName.truncate(fileName.lastIndexOf(u'.'));
    if (const DesktopEntry* entry = index.findByProgram(fileName))
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
            if (const DesktopEntry* entry = index.findExact(id))
                return entry->path;
        }
    }
    return std::nullopt;
}

} // namespace

QStringList preferredTerminalIds(const QByteArray& list)
{
    constexpr QStringView suffix = u".desktop";
    QStringList result;
    for (const QString& line : QString::fromUtf8(list).split(u'\n')) {
        const QString file = line.section(u':', 0, 0).trimmed();
        if (file.endsWith(suffix))
            result.append(file.chopped(suffix.size()));
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
    static constexpr std::array programs{"x-terminal-emulator", "gnome-terminal", "ptyxis", "kgx", "konsole",
        "xfce4-terminal", "mate-terminal", "lxterminal", "qterminal", "tilix", "terminator", "kitty",
        "alacritty", "foot", "wezterm", "urxvt", "xterm"};
    for (const char* program : programs) {
        if (auto location = locationOfProgram(QString::fromLatin1(program), index))
            return location;
    }
    if (const DesktopEntry* entry = index.findByCategory(QStringLiteral("TerminalEmulator")))
        return entry->path;
    return locationOfProgram(QStringLiteral("xdg-terminal-exec"), index);
}

std::optional<QString> defaultApplication(DefaultRole role, const ApplicationIndex& index)
{
    if (role == DefaultRole::terminal)
        return userTerminal(index);
    const char* type = contentType(role);
    return type ? handlerOf(type) : std::nullopt;
}

} // namespace Tavrin
