// A session without a bus, as a bare window manager has it: XEmbed serves, and nothing complains.
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/Pointer.h"
#include "support/SampleMenu.h"
#include "support/XEmbedTray.h"

#include <QDBusConnection>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

/// Qt connects to the bus when the application is made, so it has to be gone before main().
[[maybe_unused]] const bool busIsGone = qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");

TEST(TrayWithoutABus, DocksAtOnceAndOpensItsMenu)
{
    ASSERT_FALSE(QDBusConnection::sessionBus().isConnected());
    const Testing::IconFinder finder;
    const Testing::XEmbedTray tray;
    ASSERT_TRUE(Testing::waitFor([&] { return finder.tray() != 0; }));
    Testing::SampleMenu menu;
    TrayStatusItem item;
    item.setMenu(menu.content());
    item.show();
    EXPECT_GT(menu.requests, 0) << "there is nothing to wait for";

    Testing::clickAt(finder.waitForIcon().center(), 3);
    ASSERT_TRUE(Testing::waitForMenu());
    Testing::pressKeys(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(Testing::waitFor([&] { return menu.chosen == QStringList(QStringLiteral("quit")); }));
}

} // namespace
} // namespace Tavrin
