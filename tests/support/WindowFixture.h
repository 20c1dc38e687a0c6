#pragma once

#include "Core/HotKey/HotKeyManager.h"
#include "Core/Shell/NotificationCenter.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"
#include "UI/QmlMainWindow.h"
#include "support/ActionDesk.h"
#include "support/TemporaryFolder.h"

#include <QQuickItem>
#include <gtest/gtest.h>

namespace Tavrin::Testing {

/// The real window over the program's real services, on a system in memory.
class Window : public testing::Test {
protected:
    QmlMainWindow& window()
    {
        if (!m_window)
            m_window = std::make_unique<QmlMainWindow>(MainWindowServices{
                store,
                hotKeys,
                executor,
                settings,
                updates,
                notifications,
                platform.applicationShell,
                [this] {
                    ++closeRequests;
                    return false;
                },
            });
        return *m_window;
    }
    /// Texts that are to be read in the window, top to bottom as the scene has them.
    QStringList texts()
    {
        QStringList result;
        collect(window().rootObject(), result);
        return result;
    }

    TemporaryFolder folder;
    FakePlatform platform{folder.path()};
    ConfigStore store{folder.path()};
    AppSettings settings{platform.settingsFile(), platform.fakeLoginItem, platform.applicationShell};
    ActionDesk desk;
    ActionExecutor executor{desk.services()};
    HotKeyManager hotKeys{platform.hotKeyBackend, store, executor, platform.accessibilityService};
    UpdateService updates{platform.manifestSource};
    NotificationCenter notifications;
    int closeRequests = 0;

private:
    static void collect(const QQuickItem* item, QStringList& result)
    {
        if (!item->isVisible())
            return;
        if (item->inherits("QQuickText"))
            result.append(item->property("text").toString());
        for (const QQuickItem* child : item->childItems())
            collect(child, result);
    }

    std::unique_ptr<QmlMainWindow> m_window;
};

} // namespace Tavrin::Testing
