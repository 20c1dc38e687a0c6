#include "Platform/Linux/SettingsPages.h"

#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"

#include <algorithm>

namespace Tavrin {
namespace {

struct Page {
    const char* desktop;
    QByteArrayList program;
};

QList<Page> accessibilityPages()
{
    return {
        {"GNOME", {"gnome-control-center", "universal-access"}},
        {"KDE", {"systemsettings", "kcm_access"}},
        {"XFCE", {"xfce4-accessibility-settings"}},
        {"MATE", {"mate-at-properties"}},
        {"X-Cinnamon", {"cinnamon-settings", "universal-access"}},
    };
}

SpawnResult startFirst(const QList<QByteArrayList>& programs)
{
    SpawnResult result;
    for (const QByteArrayList& program : programs) {
        ChildRequest request;
        request.arguments = program;
        result = spawn(request);
        if (result)
            break;
    }
    return result;
}

} // namespace

SettingsPages::SettingsPages(ChildWatcher& watcher, std::function<void()> unavailable)
    : m_watcher(watcher)
    , m_unavailable(std::move(unavailable))
{
}

void SettingsPages::openAccessibility()
{
    const auto programs = accessibilitySettingsPrograms(qgetenv("XDG_CURRENT_DESKTOP"));
    m_workers.run([this, programs, address = m_mailbox.address()] {
        address.post([this, child = startFirst(programs)] {
            if (child)
                m_watcher.watch(child.pid);
            else
                m_unavailable();
        });
    });
}

QList<QByteArrayList> accessibilitySettingsPrograms(const QByteArray& currentDesktop)
{
    QList<Page> pages = accessibilityPages();
    const QByteArrayList names = currentDesktop.split(':');
    std::stable_partition(
        pages.begin(), pages.end(), [&](const Page& page) { return names.contains(page.desktop); });
    QList<QByteArrayList> programs;
    for (const Page& page : pages)
        programs.append(page.program);
    return programs;
}

} // namespace Tavrin
