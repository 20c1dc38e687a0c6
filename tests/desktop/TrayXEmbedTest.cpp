// An XEmbed tray that is there before the item, its restarts, and the menu that Qt itself paints.
#include "Platform/Linux/Tray/TrayStatusItem.h"
#include "support/Pointer.h"
#include "support/SampleMenu.h"
#include "support/XEmbedTray.h"

#include <QPointer>
#include <QShortcut>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::clickAt;
using Testing::drainEvents;
using Testing::pressKeys;
using Testing::waitFor;

class TrayXEmbed : public testing::Test {
protected:
    TrayXEmbed()
    {
        item.setMenu(menu.content());
        item.setActivated([this] { ++activations; });
    }

    QMenu* openMenu()
    {
        clickAt(finder.waitForIcon().center(), 3);
        return Testing::waitForMenu();
    }

    bool hasChosen(const char* identity)
    {
        return waitFor([&] { return menu.chosen == QStringList(QString::fromLatin1(identity)); })
            && waitFor([] { return !QApplication::activePopupWidget(); });
    }

    static QAction* action(QMenu* shown, const QString& text)
    {
        for (QAction* const candidate : shown->actions()) {
            if (candidate->text() == text)
                return candidate;
        }
        ADD_FAILURE() << qPrintable(text) << " is not in the menu";
        return shown->actions().constFirst();
    }

    static void clickOn(QMenu* shown, const QString& text)
    {
        clickAt(shown->mapToGlobal(shown->actionGeometry(action(shown, text)).center()), 1);
    }

    Testing::IconFinder finder;
    Testing::SampleMenu menu;
    TrayStatusItem item;
    int activations = 0;
};

TEST_F(TrayXEmbed, ComesBackWithEachNewTray)
{
    item.show();
    for (int start = 0; start < 3; ++start) {
        Testing::XEmbedTray tray;
        finder.waitForIcon();
        tray.end();
        EXPECT_TRUE(waitFor([&] { return finder.tray() == 0 && finder.icon().isEmpty(); }));
    }
}

TEST_F(TrayXEmbed, RunsTheActivatedCallbackOnAPrimaryClick)
{
    const Testing::XEmbedTray tray;
    item.show();
    clickAt(finder.waitForIcon().center(), 1);
    EXPECT_TRUE(waitFor([&] { return activations == 1; }));
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(TrayXEmbed, OpensTheMenuOnTheOtherButton)
{
    const Testing::XEmbedTray tray;
    item.show();
    finder.waitForIcon();
    menu.at(QStringLiteral("login")).checkState = MenuItem::CheckState::on;
    QMenu* const shown = openMenu();
    ASSERT_TRUE(shown);
    Testing::takePicture(QStringLiteral("xembed-menu"));
    EXPECT_EQ(activations, 0);
    EXPECT_EQ(shown->actions().size(), 6);
    EXPECT_TRUE(action(shown, QStringLiteral("At login"))->isChecked());
    EXPECT_FALSE(action(shown, QStringLiteral("At login"))->actionGroup());
    EXPECT_FALSE(action(shown, QStringLiteral("Tavrin v1"))->isEnabled());
    EXPECT_TRUE(action(shown, QStringLiteral("A && B_c (⌘ M)"))->isChecked());
    pressKeys(QStringLiteral("Escape"));
    EXPECT_TRUE(waitFor([] { return !QApplication::activePopupWidget(); }));
}

TEST_F(TrayXEmbed, RunsTheEntryThatIsClicked)
{
    const Testing::XEmbedTray tray;
    item.show();
    QMenu* const shown = openMenu();
    ASSERT_TRUE(shown);
    clickOn(shown, QStringLiteral("A && B_c (⌘ M)"));
    EXPECT_TRUE(hasChosen("shortcut"));
    drainEvents();
    EXPECT_TRUE(action(shown, QStringLiteral("A && B_c (⌘ M)"))->isChecked()) << "the model's mark";
}

TEST_F(TrayXEmbed, RunsTheEntryWhoseKeysArePressed)
{
    const Testing::XEmbedTray tray;
    item.show();
    ASSERT_TRUE(openMenu());
    pressKeys(QStringLiteral("ctrl+o"));
    EXPECT_TRUE(hasChosen("open"));
}

TEST_F(TrayXEmbed, TakesNoOtherKeys)
{
    const Testing::XEmbedTray tray;
    item.show();
    menu.at(QStringLiteral("quit")).isEnabled = false;
    ASSERT_TRUE(openMenu());
    for (const char* keys : {"o", "ctrl+shift+o", "ctrl+x", "ctrl+q"})
        pressKeys(QString::fromLatin1(keys));
    // Keys arrive in order, so all of them have been seen once this one has worked.
    pressKeys(QStringLiteral("ctrl+o"));
    EXPECT_TRUE(hasChosen("open"));
}

TEST_F(TrayXEmbed, TakesItsKeysFromOthersOnlyWhileTheMenuIsOpen)
{
    const Testing::XEmbedTray tray;
    item.show();
    QWidget window;
    int shortcuts = 0;
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_O), &window, [&] { ++shortcuts; });
    shortcut.setContext(Qt::ApplicationShortcut);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    ASSERT_TRUE(openMenu());
    pressKeys(QStringLiteral("ctrl+o"));
    EXPECT_TRUE(hasChosen("open"));
    EXPECT_EQ(shortcuts, 0) << "the open menu comes first";

    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    pressKeys(QStringLiteral("ctrl+o"));
    EXPECT_TRUE(waitFor([&] { return shortcuts == 1; }));
    EXPECT_EQ(menu.chosen.size(), 1);
}

TEST_F(TrayXEmbed, RunsWhatTheOpenMenuShowsEvenIfTheModelHasLostIt)
{
    const Testing::XEmbedTray tray;
    item.show();
    QMenu* const shown = openMenu();
    ASSERT_TRUE(shown);
    const QPointer<QAction> entry = action(shown, QStringLiteral("A && B_c (⌘ M)"));
    menu.remove(QStringLiteral("shortcut"));
    item.refresh();
    drainEvents();
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(shown->actions().size(), 6);
    clickOn(shown, QStringLiteral("A && B_c (⌘ M)"));
    EXPECT_TRUE(hasChosen("shortcut"));
    EXPECT_TRUE(waitFor([&] { return entry.isNull(); }));
    EXPECT_EQ(shown->actions().size(), 5);
}

TEST_F(TrayXEmbed, SurvivesATrayThatGoesWhileTheMenuIsOpen)
{
    item.show();
    auto tray = std::make_unique<Testing::XEmbedTray>();
    ASSERT_TRUE(openMenu());
    tray.reset();
    EXPECT_TRUE(waitFor([] { return !QApplication::activePopupWidget(); }));
    tray = std::make_unique<Testing::XEmbedTray>();
    // Not where the first click was: two in a row are a double click, which opens nothing.
    clickAt(finder.waitForIcon().topLeft() + QPoint(4, 4), 3);
    ASSERT_TRUE(Testing::waitForMenu());
    pressKeys(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(hasChosen("quit"));
}

} // namespace
} // namespace Tavrin
