#include "Platform/Linux/Applications/TerminalEntry.h"

#include "Platform/Linux/Applications/Terminals.h"

namespace Tavrin {
namespace {

/// As one word of an Exec value, with no field code in it.
QByteArray quoted(const QByteArray& word)
{
    const GAllocated<gchar> text(g_shell_quote(word.constData()));
    return QByteArray(text.get()).replace('%', "%%");
}

} // namespace

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

bool runsInTerminal(GDesktopAppInfo* application)
{
    return g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_TERMINAL) != FALSE;
}

GObjectPointer<GDesktopAppInfo> openedByTerminal(GDesktopAppInfo* application)
{
    constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
    const QStringList terminal = userTerminalWords();
    const char* path = g_desktop_app_info_get_filename(application);
    const char* exec = g_app_info_get_commandline(G_APP_INFO(application));
    const GKeyFilePointer file(g_key_file_new());
    if (terminal.isEmpty() || !path || !exec
        || !g_key_file_load_from_file(file.get(), path, G_KEY_FILE_KEEP_TRANSLATIONS, nullptr))
        return nullptr;
    const QByteArray command = execInTerminal(terminal, exec, path);
    g_key_file_set_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC, command.constData());
    g_key_file_set_boolean(file.get(), group, G_KEY_FILE_DESKTOP_KEY_TERMINAL, FALSE);
    return GObjectPointer<GDesktopAppInfo>(g_desktop_app_info_new_from_keyfile(file.get()));
}

} // namespace Tavrin
