#include "Platform/Linux/SystemActions/DesktopSurroundings.h"

#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/SessionBus.h"
#include "Platform/Linux/XdgPaths.h"

#include <QFile>
#include <QStandardPaths>
#include <QStringList>
#include <algorithm>
#include <gio/gio.h>

namespace Tavrin {
namespace {

using SchemaSource = std::unique_ptr<GSettingsSchemaSource, GLibRelease<g_settings_schema_source_unref>>;
using Schema = std::unique_ptr<GSettingsSchema, GLibRelease<g_settings_schema_unref>>;

/// Where the desktop's bus of the whole system listens (D-Bus Specification, well-known bus instances).
QByteArray systemBusAddress()
{
    const QByteArray address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address.isEmpty() ? QByteArray("unix:path=/var/run/dbus/system_bus_socket") : address;
}

/// Folders with schemas, in GIO's own order.
QStringList schemaFolders()
{
    QStringList folders = qEnvironmentVariable("GSETTINGS_SCHEMA_DIR").split(u':', Qt::SkipEmptyParts);
    QString data = qEnvironmentVariable("XDG_DATA_DIRS");
    if (data.isEmpty())
        data = QStringLiteral("/usr/local/share:/usr/share");
    data.prepend(XdgPaths::dataHome() + u':');
    const QStringList dataFolders = data.split(u':', Qt::SkipEmptyParts);
    for (const QString& folder : dataFolders)
        folders.append(folder + u"/glib-2.0/schemas");
    return folders;
}

bool hasKey(const QString& folder, const QByteArray& schemaId, const QByteArray& key)
{
    // A source for the moment: GIO's default one would never see a schema that is installed later.
    const SchemaSource source(g_settings_schema_source_new_from_directory(
        QFile::encodeName(folder).constData(), nullptr, TRUE, nullptr));
    if (!source)
        return false;
    const Schema schema(g_settings_schema_source_lookup(source.get(), schemaId.constData(), FALSE));
    return schema && g_settings_schema_has_key(schema.get(), key.constData());
}

} // namespace

DesktopSurroundings::DesktopSurroundings(bool hasDisplayPower)
    : m_session(SessionBus::address())
    , m_system(systemBusAddress())
    , m_hasDisplayPower(hasDisplayPower)
{
}

bool DesktopSurroundings::hasProgram(const char* name)
{
    return !QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty();
}

bool DesktopSurroundings::isOnSessionBus(const char* busName)
{
    return m_session.isOwned(QString::fromLatin1(busName));
}

bool DesktopSurroundings::canStartOnSessionBus(const char* busName)
{
    return m_session.isStartable(QString::fromLatin1(busName));
}

bool DesktopSurroundings::isOnSystemBus(const char* busName)
{
    return m_system.isOwned(QString::fromLatin1(busName));
}

bool DesktopSurroundings::hasSetting(const QByteArray& schema, const QByteArray& key)
{
    const QStringList folders = schemaFolders();
    return std::any_of(
        folders.begin(), folders.end(), [&](const QString& folder) { return hasKey(folder, schema, key); });
}

} // namespace Tavrin
