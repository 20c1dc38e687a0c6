// An XEmbed tray that comes after us, and a StatusNotifierWatcher that comes later still.
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/Pointer.h"
#include "support/SampleMenu.h"
#include "support/StatusNotifierHost.h"
#include "support/XEmbedTray.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

TEST(TrayWithALateXEmbedTray, DocksThenAndStaysWhenAWatcherComes)
{
    const Testing::IconFinder finder;
    Testing::SampleMenu menu;
    TrayStatusItem item;
    item.setMenu(menu.content());
    item.show();
    Testing::drainEvents();
    EXPECT_EQ(menu.requests, 0) << "nothing is made before there is a tray";

    auto tray = std::make_unique<Testing::XEmbedTray>();
    finder.waitForIcon();

    // Qt has settled for XEmbed; the icon must not be lost by trying.
    Testing::StatusNotifierHost host;
    Testing::drainEvents();
    EXPECT_FALSE(finder.icon().isEmpty());
    EXPECT_EQ(host.registrations(), 0);

    tray.reset();
    tray = std::make_unique<Testing::XEmbedTray>();
    finder.waitForIcon();
    EXPECT_EQ(host.registrations(), 0);

    // The menu is still one that Qt paints: its texts are not those meant for a host.
    Testing::clickAt(finder.waitForIcon().center(), 3);
    QMenu* const shown = Testing::waitForMenu();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->actions().at(4)->text(), QStringLiteral("A && B_c (⌘ M)"));
    Testing::pressKeys(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(Testing::waitFor([&] { return menu.chosen == QStringList(QStringLiteral("quit")); }));
}

} // namespace
} // namespace Tavrin
