#include "support/Wait.h"
#include "support/WindowFixture.h"

#include <QTest>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

using Testing::Window;

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

TEST_F(Window, RestsAndComesBackAsItWas)
{
    for (int count = 0; count < 40; ++count) {
        ShortcutItem item = store.shortcuts()[0];
        item.id = QUuid::createUuid();
        item.name = QStringLiteral("Phím %1").arg(count);
        store.add(item);
    }
    open();
    for (int step = 0; step < 20; ++step)
        press(Qt::Key_Down);
    const QString current = QStringLiteral("Phím 18");
    const auto isInSight = [&] {
        const QQuickItem* row = control(current);
        return row && row->mapToScene({}).y() < window().height() - 60;
    };
    ASSERT_TRUE(waitFor(isInSight));
    const double place = control(current)->mapToScene({}).y();
    window().rest();
    drainEvents();
    EXPECT_TRUE(texts().contains(current)) << "a window on screen stays as it is";
    window().hide();
    window().rest();
    drainEvents();
    open();
    ASSERT_TRUE(waitFor(isInSight));
    EXPECT_DOUBLE_EQ(control(current)->mapToScene({}).y(), place);
    press(Qt::Key_Space);
    EXPECT_FALSE(store.shortcuts()[20].isEnabled) << "the keyboard is in the same row";
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
