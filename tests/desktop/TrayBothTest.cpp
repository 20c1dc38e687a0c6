// A desktop whose XEmbed tray comes first and whose StatusNotifierWatcher comes shortly after it.
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/SampleMenu.h"
#include "support/StatusNotifierHost.h"
#include "support/XEmbedTray.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

TEST(TrayWithBothKinds, GoesToTheStatusNotifierWatcher)
{
    const Testing::IconFinder finder;
    const Testing::XEmbedTray tray;
    ASSERT_TRUE(Testing::waitFor([&] { return finder.tray() != 0; }));
    Testing::SampleMenu menu;
    TrayStatusItem item;
    item.setMenu(menu.content());
    item.show();
    Testing::drainEvents();
    EXPECT_EQ(menu.requests, 0) << "XEmbed alone is not taken at once";

    auto host = std::make_unique<Testing::StatusNotifierHost>();
    host->item();
    EXPECT_EQ(host->layout().size(), menu.items.size());
    EXPECT_TRUE(finder.icon().isEmpty());

    // Qt has settled for the bus: the next watcher gets the item, and XEmbed is left alone.
    host.reset();
    host = std::make_unique<Testing::StatusNotifierHost>();
    host->item();
    EXPECT_TRUE(finder.icon().isEmpty());
}

} // namespace
} // namespace Tavrin
