#include "UI/QmlMainWindow.h"

#include "Core/HotKey/HotKeyManager.h"
#include "Core/Shell/NotificationCenter.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"
#include "support/ActionDesk.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

class Window : public testing::Test {
protected:
    QmlMainWindow& window()
    {
        if (!m_window)
            m_window = std::make_unique<QmlMainWindow>(MainWindowServices{store, hotKeys, executor, settings,
                updates, notifications, platform.applicationShell, [this] {
                    ++closeRequests;
                    return false;
                }});
        return *m_window;
    }
    /// Texts that are to be read in the window, top to bottom as the scene has them.
    QStringList texts()
    {
        QStringList result;
        collect(window().rootObject(), result);
        return result;
    }

    Testing::TemporaryFolder folder;
    FakePlatform platform{folder.path()};
    ConfigStore store{folder.path()};
    AppSettings settings{platform.settingsFile(), platform.fakeLoginItem, platform.applicationShell};
    Testing::ActionDesk desk;
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

TEST_F(Window, LoadsAndListsTheShortcuts)
{
    EXPECT_EQ(window().status(), QQuickView::Ready);
    EXPECT_EQ(window().title(), QStringLiteral("Tavrin - Trình Quản Lý Phím Tắt Toàn Cục"));
    EXPECT_EQ(window().size(), QSize(720, 540));
    window().show(ActivationContext{});
    ASSERT_TRUE(waitFor([this] { return texts().contains(QStringLiteral("Terminal")); }));
    for (const char* text : {"Tavrin", "v1.0.7", "Google Chrome", "⌘ F1", "⌘ M"})
        EXPECT_TRUE(texts().contains(QString::fromUtf8(text))) << text;
    EXPECT_FALSE(texts().contains(QStringLiteral("Chưa có phím tắt nào được tạo")));
    EXPECT_EQ(platform.applicationShell.activations, 1);
}

TEST_F(Window, FollowsTheStore)
{
    window().show(ActivationContext{});
    while (!store.shortcuts().empty())
        store.remove(store.shortcuts()[0].id);
    EXPECT_TRUE(
        waitFor([this] { return texts().contains(QStringLiteral("Chưa có phím tắt nào được tạo")); }));
    EXPECT_FALSE(texts().contains(QStringLiteral("Terminal")));
}

TEST_F(Window, ShowsAnyNameAsPlainText)
{
    ShortcutItem item = store.shortcuts()[0];
    item.name = QStringLiteral("<b>đậm</b> & \u202Eمرحبا\nxuống dòng");
    store.update(item);
    item.id = QUuid::createUuid();
    item.name = QString(10000, u'W');
    item.actionValue = QString(100000, u'\u0301');
    store.add(item);
    window().show(ActivationContext{});
    EXPECT_TRUE(
        waitFor([this] { return texts().contains(QStringLiteral("<b>đậm</b> & \u202Eمرحبا xuống dòng")); }));
}

TEST_F(Window, AsksBeforeItCloses)
{
    window().show(ActivationContext{});
    window().close();
    drainEvents();
    EXPECT_EQ(closeRequests, 1);
    EXPECT_TRUE(window().isVisible());
    window().hide();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(Window, ClosesByItsKey)
{
    window().show(ActivationContext{});
    ASSERT_TRUE(waitFor([this] { return window().isActive(); }));
    QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([this] { return closeRequests == 1; }));
    QTest::keyClick(&window(), Qt::Key_W);
    drainEvents();
    EXPECT_EQ(closeRequests, 1);
}

TEST_F(Window, KeepsItsPlace)
{
    window().show(ActivationContext{});
    window().setGeometry(30, 40, 700, 500);
    EXPECT_TRUE(waitFor([this] { return settings.windowFrame() == QStringLiteral("30 40 700 500"); }));
    window().resize(710, 510);
    window().hide();
    EXPECT_EQ(settings.windowFrame(), QStringLiteral("30 40 710 510")) << "at once when hidden";
}

} // namespace
} // namespace Tavrin
