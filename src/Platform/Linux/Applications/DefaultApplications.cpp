#include "Platform/Linux/Applications/DefaultApplications.h"

#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/Applications/Terminals.h"

#include <QFile>
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

} // namespace

std::optional<QString> defaultApplication(DefaultRole role, const ApplicationIndex& index)
{
    if (role == DefaultRole::terminal)
        return userTerminal(index);
    const char* type = contentType(role);
    return type ? handlerOf(type) : std::nullopt;
}

} // namespace Tavrin
