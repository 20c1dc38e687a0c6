#include "Platform/Linux/X11/X11ApplicationShell.h"

#include "Platform/Linux/X11/XcbReply.h"
#include "Platform/Linux/X11/Xkb.h"
#include "support/Wait.h"
#include "support/XDesktop.h"

#include <QCloseEvent>
#include <QProcess>
#include <QWidget>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::waitFor;

/// Closes the way our main window does: by hiding.
class OwnWindow : public QWidget {
public:
    int closes = 0;

protected:
    void closeEvent(QCloseEvent* event) override
    {
        ++closes;
        event->ignore();
        hide();
    }
};

class Shell : public testing::Test {
protected:
    X11ApplicationShell shell;
    Testing::XDesktop desktop;
};

TEST_F(Shell, GivesTheFocusBackToWhereItWasWhenItHides)
{
    QProcess other;
    other.start(QStringLiteral("xterm"), {QStringLiteral("-class"), QStringLiteral("Other")});
    ASSERT_TRUE(waitFor([&] { return !desktop.windows(QStringLiteral("Other")).empty(); }));
    const xcb_window_t otherWindow = desktop.windows(QStringLiteral("Other")).front();
    ASSERT_TRUE(waitFor([&] { return desktop.activeWindow() == otherWindow; }));
    EXPECT_FALSE(shell.isActive());

    OwnWindow first;
    OwnWindow second;
    OwnWindow hidden;
    hidden.winId();
    for (QWidget* window : {&first, &second}) {
        window->show();
        window->activateWindow();
        ASSERT_TRUE(waitFor([&] { return window->isActiveWindow(); }));
    }
    EXPECT_TRUE(shell.isActive());

    shell.hide();
    EXPECT_FALSE(first.isVisible());
    EXPECT_FALSE(second.isVisible());
    EXPECT_EQ(hidden.closes, 0);
    EXPECT_TRUE(waitFor([&] { return desktop.activeWindow() == otherWindow; }));
    EXPECT_TRUE(waitFor([&] { return !shell.isActive(); }));
    other.kill();
    other.waitForFinished();
}

TEST_F(Shell, BeepsWithTheBellThatDesktopsListenFor)
{
    auto* listener = xcb_connect(nullptr, nullptr);
    const auto* xkb = xcb_get_extension_data(listener, &xcb_xkb_id);
    const XcbReply<xcb_xkb_use_extension_reply_t> used(
        xcb_xkb_use_extension_reply(listener, xcb_xkb_use_extension(listener, 1, 0), nullptr));
    constexpr std::uint16_t bell = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(listener,
        xcb_xkb_select_events_checked(listener, XCB_XKB_ID_USE_CORE_KBD, bell, 0, bell, 0, 0, nullptr)));
    ASSERT_FALSE(error);

    shell.beep();
    int bells = 0;
    EXPECT_TRUE(waitFor([&] {
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(listener)}) {
            if ((event->response_type & 0x7F) == xkb->first_event && event->pad0 == XCB_XKB_BELL_NOTIFY)
                ++bells;
        }
        return bells == 1;
    }));
    xcb_disconnect(listener);
}

} // namespace
} // namespace Tavrin
