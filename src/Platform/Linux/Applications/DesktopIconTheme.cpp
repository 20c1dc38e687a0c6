#include "Platform/Linux/Applications/DesktopIconTheme.h"

#include "Platform/Linux/Appearance/XSettings.h"
#include "Platform/Linux/Appearance/XSettingsValues.h"
#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/Applications/RegularFile.h"
#include "Platform/Linux/XdgPaths.h"

namespace Tavrin {
namespace {

struct SettingsFile {
    QString path;
    const char* group;
    const char* key;
};

QString value(const SettingsFile& settings)
{
    constexpr qint64 longestFile = 1 << 20;
    const auto contents = readRegularFile(settings.path, longestFile);
    if (!contents)
        return {};
    const GKeyFilePointer file(g_key_file_new());
    g_key_file_load_from_data(
        file.get(), contents->constData(), static_cast<gsize>(contents->size()), G_KEY_FILE_NONE, nullptr);
    return QString::fromUtf8(
        GAllocated<gchar>(g_key_file_get_string(file.get(), settings.group, settings.key, nullptr)).get());
}

} // namespace

QString desktopIconTheme()
{
    // What every program of the session is told, live; the files are there without a settings daemon, too.
    if (QString name = iconThemeName(readXSettings()); !name.isEmpty())
        return name;
    const QString configHome = XdgPaths::configHome();
    const SettingsFile plasma{configHome + u"/kdeglobals", "Icons", "Theme"};
    const SettingsFile gtk{configHome + u"/gtk-3.0/settings.ini", "Settings", "gtk-icon-theme-name"};
    const SettingsFile systemGtk{
        QStringLiteral("/etc/gtk-3.0/settings.ini"), "Settings", "gtk-icon-theme-name"};
    for (const SettingsFile& settings : {plasma, gtk, systemGtk}) {
        if (QString name = value(settings); !name.isEmpty())
            return name;
    }
    return {};
}

} // namespace Tavrin
