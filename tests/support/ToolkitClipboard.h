#pragma once

#include "support/SelectionPeer.h"
#include "support/Wait.h"

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QWindow>
#include <gtest/gtest.h>

namespace Tavrin::Testing {

/// Copies in the toolkit of the test itself: what a window of ours does. The toolkit takes the clipboard
/// with the time of the last event it saw, as if the user had just pressed a key: here, it is shown one.
class ToolkitClipboard : private QAbstractNativeEventFilter {
public:
    ToolkitClipboard() { m_window.create(); }
    ~ToolkitClipboard() override
    {
        if (QGuiApplication::clipboard()->ownsClipboard())
            QGuiApplication::clipboard()->clear();
    }

    void copy(QMimeData* contents, SelectionPeer& peer)
    {
        m_hasSeenEvent = false;
        qApp->installNativeEventFilter(this);
        peer.change(static_cast<xcb_window_t>(m_window.winId()), XCB_ATOM_CUT_BUFFER0, "STRING", 8, "now");
        EXPECT_TRUE(waitFor([this] { return m_hasSeenEvent; }));
        qApp->removeNativeEventFilter(this);
        QGuiApplication::clipboard()->setMimeData(contents);
        EXPECT_TRUE(QGuiApplication::clipboard()->ownsClipboard());
    }

private:
    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override
    {
        const auto& event = *static_cast<const xcb_property_notify_event_t*>(message);
        m_hasSeenEvent |= (event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY
            && event.window == m_window.winId() && event.atom == XCB_ATOM_CUT_BUFFER0;
        return false;
    }

    QWindow m_window;
    bool m_hasSeenEvent = false;
};

} // namespace Tavrin::Testing
