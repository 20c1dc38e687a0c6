#pragma once

#include "support/Program.h"

#include <QApplication>
#include <QMenu>
#include <QRect>
#include <QWidget>
#include <QWindow>

#include <cstdlib>
#include <xcb/xcb.h>

namespace Tavrin::Testing {

/// The real XEmbed tray "trayer", in the screen's lower right corner.
class XEmbedTray : public Program {
public:
    XEmbedTray()
        : Program(QStringLiteral("trayer"),
            QString::fromLatin1("--edge bottom --align right --widthtype pixel --width 200 --height 32")
                .split(u' '))
    {
    }
};

/// The X server's view of where our icon is.
class IconFinder {
public:
    IconFinder()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const QByteArray name = "_NET_SYSTEM_TRAY_S0";
        auto* const atom = xcb_intern_atom_reply(m_connection,
            xcb_intern_atom(m_connection, 0, std::uint16_t(name.size()), name.constData()), nullptr);
        m_selection = atom ? atom->atom : 0;
        std::free(atom);
    }
    ~IconFinder() { xcb_disconnect(m_connection); }
    IconFinder(const IconFinder&) = delete;
    IconFinder& operator=(const IconFinder&) = delete;

    /// Window of the tray, 0 if there is none.
    xcb_window_t tray() const
    {
        auto* const owner = xcb_get_selection_owner_reply(
            m_connection, xcb_get_selection_owner(m_connection, m_selection), nullptr);
        const xcb_window_t window = owner ? owner->owner : 0;
        std::free(owner);
        return window;
    }

    /// Where on the screen our icon is shown inside the tray's window; empty while it is not.
    QRect icon() const
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("QSystemTrayIconSys") && widget->windowHandle()
                && widget->windowHandle()->isExposed() && isShown(xcb_window_t(widget->winId())))
                return geometry(xcb_window_t(widget->winId()));
        }
        return {};
    }

    /// Waits until the icon is shown in the tray.
    QRect waitForIcon() const
    {
        const QRect found = waitUntilSettled<QRect>(
            [this] { return icon(); }, [](const QRect& place) { return place.width() > 8; });
        EXPECT_GT(found.width(), 8) << "the icon is not docked";
        return found;
    }

private:
    bool isShown(xcb_window_t window) const
    {
        auto* const attributes = xcb_get_window_attributes_reply(
            m_connection, xcb_get_window_attributes(m_connection, window), nullptr);
        const bool isViewable = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        std::free(attributes);
        return isViewable && isWithinTray(window);
    }

    bool isWithinTray(xcb_window_t window) const
    {
        // The tray's selection need not be owned by the window that is its panel, so what counts is
        // that the icon lies in a window of that client.
        constexpr std::uint32_t clientBits = 0xffe00000;
        const xcb_window_t owner = tray();
        auto* const tree = xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr);
        const bool isWithin = owner && tree && tree->parent != tree->root
            && (tree->parent & clientBits) == (owner & clientBits);
        std::free(tree);
        return isWithin;
    }

    QRect geometry(xcb_window_t window) const
    {
        auto* const size
            = xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr);
        auto* const place = size ? xcb_translate_coordinates_reply(m_connection,
                                xcb_translate_coordinates(m_connection, window, size->root, 0, 0), nullptr)
                                 : nullptr;
        const QRect result = place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
        std::free(size);
        std::free(place);
        return result;
    }

    xcb_connection_t* m_connection;
    xcb_atom_t m_selection = 0;
};

/// Waits until one of our menus is open on the screen.
inline QMenu* waitForMenu()
{
    EXPECT_TRUE(waitFor([] {
        QWidget* const popup = QApplication::activePopupWidget();
        return popup && popup->windowHandle() && popup->windowHandle()->isExposed();
    })) << "the menu does not open";
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

} // namespace Tavrin::Testing
