#include "Platform/Linux/X11/X11Connection.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

/// Hears of events, and may make another listener deaf at the first one.
class Listener : public X11EventListener {
public:
    void handleEvent(const xcb_generic_event_t& event) override
    {
        if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
            return;
        ++heard;
        if (removeFrom)
            removeFrom->removeListener(other);
    }

    int heard = 0;
    X11Connection* removeFrom = nullptr;
    X11EventListener* other = nullptr;
};

TEST(Listeners, HearNothingOnceTheyAreRemoved)
{
    const auto connection = X11Connection::open();
    ASSERT_TRUE(connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection->xcb(), connection->root(), XCB_CW_EVENT_MASK, &events);
    Listener first;
    Listener second;
    Listener third;
    first.removeFrom = connection.get();
    first.other = &second;
    for (Listener* listener : {&first, &second, &third})
        connection->addListener(listener);
    connection->watch();
    for (int change = 1; change <= 2; ++change) {
        xcb_change_property(connection->xcb(), XCB_PROP_MODE_REPLACE, connection->root(), XCB_ATOM_WM_COMMAND,
            XCB_ATOM_STRING, 8, 1, "x");
        connection->flush();
        EXPECT_TRUE(waitFor([&] { return third.heard == change; }));
    }
    drainEvents();
    EXPECT_EQ(first.heard, 2);
    EXPECT_EQ(second.heard, 0);
}

} // namespace
} // namespace Tavrin
