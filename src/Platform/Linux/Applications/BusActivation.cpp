#include "Platform/Linux/Applications/BusActivation.h"

#include <QFile>
#include <QFileInfo>

namespace Tavrin {
namespace {

/// In milliseconds: an application that runs answers at once, one that starts may take a while.
constexpr int answerLimit = 5000;

/// The object that stands for the application, as the specification derives it from the name.
QByteArray objectPath(const QString& name)
{
    return '/' + name.toLatin1().replace('.', '/').replace('-', '_');
}

GVariant* parameters(const QByteArrayList& addresses, const QByteArray& startupId)
{
    GVariantBuilder platformData;
    g_variant_builder_init(&platformData, G_VARIANT_TYPE_VARDICT);
    for (const char* key : {"desktop-startup-id", "activation-token"})
        g_variant_builder_add(&platformData, "{sv}", key, g_variant_new_string(startupId.constData()));
    if (addresses.isEmpty())
        return g_variant_new("(a{sv})", &platformData);
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
    for (const QByteArray& address : addresses)
        g_variant_builder_add(&list, "s", address.constData());
    return g_variant_new("(asa{sv})", &list, &platformData);
}

} // namespace

QString busName(GDesktopAppInfo* application)
{
    if (!g_desktop_app_info_get_boolean(application, "DBusActivatable"))
        return {};
    const QString file = QFile::decodeName(g_desktop_app_info_get_filename(application));
    const QString name = QFileInfo(file).completeBaseName();
    return g_dbus_is_name(name.toLatin1().constData()) && !name.startsWith(u':') ? name : QString();
}

LaunchResult activateOnBus(
    GDBusConnection* bus, const QString& name, const QByteArrayList& addresses, const QByteArray& startupId)
{
    GError* error = nullptr;
    const std::unique_ptr<GVariant, GLibRelease<g_variant_unref>> answer(
        g_dbus_connection_call_sync(bus, name.toLatin1().constData(), objectPath(name).constData(),
            "org.freedesktop.Application", addresses.isEmpty() ? "Activate" : "Open",
            parameters(addresses, startupId), nullptr, G_DBUS_CALL_FLAGS_NONE, answerLimit, nullptr, &error));
    const GErrorPointer owner(error);
    if (!error || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
        return {true, 0, {}};
    return {false, 0, QString::fromUtf8(error->message)};
}

} // namespace Tavrin
