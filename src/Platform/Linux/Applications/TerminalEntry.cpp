#include "Platform/Linux/Applications/TerminalEntry.h"

#include "Platform/Linux/Applications/Terminals.h"

namespace Tavrin {
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
