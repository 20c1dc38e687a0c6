#pragma once

#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/Pointer.h"
#include "support/SampleMenu.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QScreen>

#include <cstdlib>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace Tavrin::Testing {

/// A real panel with a tray on the private desktop, seen and clicked as a user does.
class PanelTest : public testing::Test {
protected:
    PanelTest()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        item.setMenu(menu.content());
        item.setActivated([this] { ++activations; });
    }
    ~PanelTest() override { xcb_disconnect(m_connection); }

    /// Writes a file below the private $XDG_CONFIG_HOME.
    static void writeConfiguration(const QString& name, const char* text)
    {
        const QString path = qEnvironmentVariable("XDG_CONFIG_HOME") + u'/' + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// Where the icon's blue tile is on the screen; empty if it is not.
    static QRect icon()
    {
        const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        QRect found;
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                const QRgb color = screen.pixel(x, y);
                if (qBlue(color) >= 0xf0 && qRed(color) <= 0x30 && qGreen(color) > 0x70
                    && qGreen(color) < 0xa0)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    QRect waitForIcon() const
    {
        const QRect found = waitUntilSettled<QRect>(
            icon, [](const QRect& place) { return place.width() >= 14; }, 30000);
        EXPECT_GE(found.width(), 14) << "the panel shows no icon";
        return found;
    }

    /// The panel's open menu: a window that the window manager has no say in; empty if there is none.
    QRect popup() const
    {
        auto* const tree = xcb_query_tree_reply(m_connection,
            xcb_query_tree(m_connection, xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root),
            nullptr);
        QRect found;
        for (int index = 0; index < xcb_query_tree_children_length(tree); ++index)
            found |= popupGeometry(xcb_query_tree_children(tree)[index]);
        std::free(tree);
        return found;
    }

    QRect openMenu() const
    {
        const QRect shownIcon = waitForIcon();
        clickAt(shownIcon.center(), 3);
        const QRect found = waitUntilSettled<QRect>(
            [this] { return popup(); }, [](const QRect& place) { return !place.isEmpty(); });
        EXPECT_FALSE(found.isEmpty()) << "the panel opens no menu";
        return found;
    }

    bool closesWith(const char* identity)
    {
        return waitFor([&] { return menu.chosen.endsWith(QString::fromLatin1(identity)); })
            && waitFor([&] { return popup().isEmpty(); });
    }

    static QPoint lastEntry(const QRect& shown) { return {shown.center().x(), shown.bottom() - 14}; }

    void expectIconAndActivation()
    {
        item.show();
        clickAt(waitForIcon().center(), 1);
        EXPECT_TRUE(waitFor([&] { return activations == 1; }));
        EXPECT_TRUE(menu.chosen.isEmpty());
    }

    /// The content is another one than at the last opening, and changes once more while the menu is open.
    void expectMenuThatStaysOpen(const QString& picture)
    {
        menu.at(QStringLiteral("open")).title = QStringLiteral("Changed before it opened");
        menu.add(QStringLiteral("last"), QStringLiteral("The last entry"));
        const QRect first = openMenu();
        menu.remove(QStringLiteral("shortcut"));
        menu.remove(QStringLiteral("last"));
        menu.at(QStringLiteral("open")).title = QStringLiteral("Changed while it was open");
        item.refresh();
        drainEvents();
        takePicture(picture + u"-menu");
        EXPECT_EQ(popup(), first) << "the open menu is left alone";
        clickAt(lastEntry(first), 1);
        EXPECT_TRUE(closesWith("last")) << "although the model has lost it";

        const QRect second = openMenu();
        EXPECT_LT(second.height(), first.height()) << "two entries less";
        takePicture(picture + u"-menu-again");
        clickAt(lastEntry(second), 1);
        EXPECT_TRUE(closesWith("quit"));
    }

    void expectReturn(std::unique_ptr<Program>& panel, const std::function<std::unique_ptr<Program>()>& start)
    {
        waitForIcon();
        panel.reset();
        ASSERT_TRUE(waitFor([] { return icon().isEmpty(); }));
        panel = start();
        clickAt(waitForIcon().center(), 1);
        EXPECT_TRUE(waitFor([&] { return activations == 1; }));
    }

    SampleMenu menu;
    TrayStatusItem item;
    int activations = 0;

private:
    QRect popupGeometry(xcb_window_t window) const
    {
        auto* const attributes = xcb_get_window_attributes_reply(
            m_connection, xcb_get_window_attributes(m_connection, window), nullptr);
        auto* const geometry
            = xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr);
        // Window managers and toolkits keep small and off-screen windows of this sort for themselves.
        const bool isPopup = attributes && geometry && attributes->override_redirect
            && attributes->map_state == XCB_MAP_STATE_VIEWABLE && geometry->height > 60 && geometry->x >= 0
            && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
        const QRect result
            = isPopup ? QRect(geometry->x, geometry->y, geometry->width, geometry->height) : QRect();
        std::free(attributes);
        std::free(geometry);
        return result;
    }

    xcb_connection_t* m_connection;
};

} // namespace Tavrin::Testing
