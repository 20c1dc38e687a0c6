// A StatusNotifierWatcher that is there before the item, and its restarts.
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/SampleMenu.h"
#include "support/StatusNotifierHost.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::HostEntry;
using Testing::SampleMenu;
using Testing::StatusNotifierHost;
using Testing::waitFor;

class TrayStatusNotifier : public testing::Test {
protected:
    TrayStatusNotifier()
    {
        item.setMenu(menu.content());
        item.setActivated([this] { ++activations; });
    }

    void show(StatusNotifierHost& host)
    {
        item.show();
        host.item();
    }

    int idOf(StatusNotifierHost& host, const QString& label)
    {
        const std::optional<HostEntry> entry = host.entry(label);
        EXPECT_TRUE(entry) << qPrintable(label);
        return entry ? entry->id : -1;
    }

    SampleMenu menu;
    TrayStatusItem item;
    int activations = 0;
};

TEST_F(TrayStatusNotifier, ShowsItsNameAndItsIcon)
{
    StatusNotifierHost host;
    show(host);
    const auto toolTip = host.itemProperty(QStringLiteral("ToolTip")).value<QDBusArgument>();
    QString iconName;
    QString title;
    toolTip.beginStructure();
    toolTip >> iconName;
    toolTip.beginArray();
    EXPECT_TRUE(toolTip.atEnd());
    toolTip.endArray();
    QString text;
    toolTip >> title >> text;
    toolTip.endStructure();
    EXPECT_EQ(title.toStdString(), "Tavrin");
    EXPECT_EQ(
        host.itemProperty(QStringLiteral("Title")).toString(), QGuiApplication::applicationDisplayName());
    EXPECT_EQ(host.itemProperty(QStringLiteral("Status")).toString(), QStringLiteral("Active"));
    const auto pixmaps = host.itemProperty(QStringLiteral("IconPixmap")).value<QDBusArgument>();
    QList<int> widths;
    for (pixmaps.beginArray(); !pixmaps.atEnd();) {
        int width = 0;
        int height = 0;
        QByteArray data;
        pixmaps.beginStructure();
        pixmaps >> width >> height >> data;
        pixmaps.endStructure();
        EXPECT_EQ(data.size(), width * height * 4);
        widths.append(width);
    }
    pixmaps.endArray();
    EXPECT_TRUE(widths.contains(22)) << "the size most panels draw";
}

TEST_F(TrayStatusNotifier, SendsTitlesMarksAndSeparators)
{
    menu.add(QStringLiteral("long"), QString(10000, u'x') + QStringLiteral(" (⌘ L)"));
    menu.add(QStringLiteral("lines"), QStringLiteral("a\tb\nc"));
    menu.add(QStringLiteral("ampersands"), QStringLiteral("& a && b & c &"));
    StatusNotifierHost host;
    show(host);
    EXPECT_EQ(host.labels(),
        QStringList({QStringLiteral("Tavrin v1"), QStringLiteral("-"), QStringLiteral("Open..."),
            QStringLiteral("At login"), QStringLiteral("A & B_c (⌘ M)"), QStringLiteral("Quit"),
            QString(73, u'x') + QStringLiteral("… (⌘ L)"), QStringLiteral("a b c"),
            QStringLiteral("& a && b & c &")}));
    const std::vector<HostEntry> entries = host.layout();
    EXPECT_FALSE(entries[0].isEnabled());
    EXPECT_TRUE(entries[2].isEnabled());
    EXPECT_EQ(entries[2].check(), QString());
    EXPECT_EQ(entries[3].check(), QStringLiteral("checkmark:0"));
    EXPECT_EQ(entries[4].check(), QStringLiteral("checkmark:1"));
}

TEST_F(TrayStatusNotifier, OpensWithThePresentState)
{
    StatusNotifierHost host;
    show(host);
    menu.at(QStringLiteral("login")).checkState = MenuItem::CheckState::on;
    menu.at(QStringLiteral("open")).title = QStringLiteral("Changed");
    menu.at(QStringLiteral("version")).isEnabled = true;
    menu.remove(QStringLiteral("quit"));
    host.open();
    const std::vector<HostEntry> entries = host.layout();
    ASSERT_EQ(entries.size(), 5U);
    EXPECT_TRUE(entries[0].isEnabled());
    EXPECT_EQ(entries[2].label(), QStringLiteral("Changed"));
    EXPECT_EQ(entries[3].check(), QStringLiteral("checkmark:1"));
}

TEST_F(TrayStatusNotifier, KeepsTheIdsOfEntriesThatStay)
{
    StatusNotifierHost host;
    show(host);
    std::vector<HostEntry> before = host.layout();
    menu.remove(QStringLiteral("login"));
    menu.items.insert(menu.items.begin(), menu.items.back());
    menu.items.front().identity = QStringLiteral("new");
    menu.at(QStringLiteral("shortcut")).title = QStringLiteral("Renamed");
    host.open();
    const std::vector<HostEntry> after = host.layout();
    ASSERT_EQ(after.size(), 6U);
    EXPECT_EQ(after[1].id, before[0].id);
    EXPECT_EQ(after[2].id, before[1].id);
    EXPECT_EQ(after[3].id, before[2].id);
    EXPECT_EQ(after[4].id, before[4].id);
    EXPECT_EQ(after[4].label(), QStringLiteral("Renamed"));
    EXPECT_EQ(after[5].id, before[5].id);
}

TEST_F(TrayStatusNotifier, RunsTheClickedEntry)
{
    StatusNotifierHost host;
    show(host);
    host.click(idOf(host, QStringLiteral("Open...")));
    EXPECT_TRUE(waitFor([&] { return menu.chosen == QStringList(QStringLiteral("open")); }));
}

TEST_F(TrayStatusNotifier, ShowsTheModelsMarkAfterAClick)
{
    StatusNotifierHost host;
    show(host);
    const QString login = QStringLiteral("At login");
    const auto isMarked = [&](int state) {
        return waitFor(
            [&] { return host.entry(login)->check() == QStringLiteral("checkmark:%1").arg(state); });
    };
    // The model stays as it is, although Qt's action turns over by itself.
    host.click(idOf(host, login));
    EXPECT_EQ(menu.chosen, QStringList(QStringLiteral("login")));
    EXPECT_TRUE(isMarked(0));
    // The model follows.
    menu.at(QStringLiteral("login")).action
        = [&] { menu.at(QStringLiteral("login")).checkState = MenuItem::CheckState::on; };
    host.open();
    host.click(idOf(host, login));
    EXPECT_TRUE(isMarked(1));
}

TEST_F(TrayStatusNotifier, LeavesAnOpenMenuAsItIs)
{
    StatusNotifierHost host;
    show(host);
    host.open();
    const int shortcut = idOf(host, QStringLiteral("A & B_c (⌘ M)"));
    menu.remove(QStringLiteral("shortcut"));
    item.refresh();
    Testing::drainEvents();
    EXPECT_EQ(host.layout().size(), 6U);
    // GTK's hosts report the closing before the choice.
    host.close();
    host.click(shortcut);
    EXPECT_EQ(menu.chosen, QStringList(QStringLiteral("shortcut")));
    EXPECT_TRUE(waitFor([&] { return host.layout().size() == 5U; }));
}

TEST_F(TrayStatusNotifier, TakesUpChangesWhenTheMenuHasClosed)
{
    StatusNotifierHost host;
    show(host);
    host.open();
    menu.remove(QStringLiteral("shortcut"));
    item.refresh();
    host.close();
    EXPECT_TRUE(waitFor([&] { return host.layout().size() == 5U; }));
}

TEST_F(TrayStatusNotifier, AsksForItsContentOnceForManyChanges)
{
    StatusNotifierHost host;
    show(host);
    Testing::drainEvents();
    menu.requests = 0;
    for (int change = 0; change < 20; ++change)
        item.refresh();
    menu.add(QStringLiteral("late"), QStringLiteral("Late"));
    EXPECT_EQ(menu.requests, 0);
    EXPECT_TRUE(waitFor([&] { return host.entry(QStringLiteral("Late")).has_value(); }));
    EXPECT_EQ(menu.requests, 1);
}

TEST_F(TrayStatusNotifier, RunsTheActivatedCallbackOnAPrimaryClick)
{
    StatusNotifierHost host;
    show(host);
    host.activate();
    EXPECT_TRUE(waitFor([&] { return activations == 1; }));
    EXPECT_TRUE(menu.chosen.isEmpty());
}

TEST_F(TrayStatusNotifier, LeavesWithTheItem)
{
    StatusNotifierHost host;
    auto other = std::make_unique<TrayStatusItem>();
    other->show();
    const QString name = host.item();
    other.reset();
    EXPECT_TRUE(waitFor([&] { return host.hasSeen(u"GONE " + name); }));
}

TEST_F(TrayStatusNotifier, ComesBackWithEachNewWatcher)
{
    item.show();
    for (int start = 0; start < 3; ++start) {
        StatusNotifierHost host;
        host.item();
        EXPECT_EQ(host.layout().size(), 6U);
        Testing::drainEvents();
        EXPECT_EQ(host.registrations(), 1);
        host.click(idOf(host, QStringLiteral("Quit")));
        EXPECT_EQ(menu.chosen.size(), start + 1);
    }
}

TEST_F(TrayStatusNotifier, GoesToAWatcherThatTakesOver)
{
    auto first = std::make_unique<StatusNotifierHost>();
    show(*first);
    StatusNotifierHost second;
    second.item();
    EXPECT_TRUE(waitFor([&] { return first->hasSeen(QStringLiteral("REPLACED")); }));
    first.reset();
}

} // namespace
} // namespace Tavrin
