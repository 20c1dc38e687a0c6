// The panel comes after us, as it often does at log-in.
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/SampleMenu.h"
#include "support/StatusNotifierHost.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

TEST(TrayWithALateWatcher, AppearsWhenTheHostDoes)
{
    Testing::SampleMenu menu;
    TrayStatusItem item;
    item.setMenu(menu.content());
    item.show();
    Testing::drainEvents();
    EXPECT_EQ(menu.requests, 0) << "nothing is made before there is a tray";

    // A watcher alone draws nothing; an icon made now would never be seen.
    Testing::StatusNotifierHost host({QStringLiteral("--without-host")});
    Testing::drainEvents();
    EXPECT_EQ(host.registrations(), 0);
    EXPECT_EQ(menu.requests, 0);

    host.registerHost();
    host.item();
    EXPECT_EQ(host.layout().size(), menu.items.size());
}

} // namespace
} // namespace Tavrin
