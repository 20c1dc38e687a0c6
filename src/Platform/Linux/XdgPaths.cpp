#include "Platform/Linux/XdgPaths.h"

#include <QDir>

namespace Tavrin::XdgPaths {
namespace {

QString folder(const char* variable, QStringView fallback)
{
    // The specification has relative paths ignored.
    const QString value = qEnvironmentVariable(variable);
    return value.startsWith(u'/') ? value : QDir::homePath() + fallback;
}

} // namespace

QString dataHome()
{
    return folder("XDG_DATA_HOME", u"/.local/share");
}

QString configHome()
{
    return folder("XDG_CONFIG_HOME", u"/.config");
}

QString cacheHome()
{
    return folder("XDG_CACHE_HOME", u"/.cache");
}

QString runtimeDirectory()
{
    const QString value = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return value.startsWith(u'/') ? value : QString();
}

} // namespace Tavrin::XdgPaths
