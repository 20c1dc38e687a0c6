#pragma once

#include "UI/QmlMainWindow.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"
#include "support/WindowDesk.h"

#include <QInputMethodEvent>
#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

/// How texts stand in a failure's message.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << qPrintable(text) << '"';
}

namespace Tavrin::Testing {

/// Appends the texts that are on screen below the item, in its order.
inline void collectTexts(const QQuickItem* item, QStringList& result)
{
    if (!item->isVisible())
        return;
    if (item->inherits("QQuickText"))
        result.append(item->property("text").toString());
    for (const QQuickItem* child : item->childItems())
        collectTexts(child, result);
}

/// The real window over the program's real services, on a system in memory.
class Window : public testing::Test, protected HasFolder, protected WindowDesk {
protected:
    Window()
        : WindowDesk(folder.path())
    {
        settings.setHasCompletedOnboarding(true);
    }

    QmlMainWindow& window()
    {
        if (!m_window)
            m_window = std::make_unique<QmlMainWindow>(services([this] {
                ++closeRequests;
                return false;
            }));
        return *m_window;
    }
    /// Texts that are to be read in the window, top to bottom as the scene has them.
    QStringList texts()
    {
        QStringList result;
        collectTexts(window().contentItem(), result);
        return result;
    }

    /// The names of the symbols that are to be seen, in the same order.
    QStringList symbols()
    {
        QStringList result;
        collectSymbols(window().contentItem(), result);
        return result;
    }

    static QString text(const char* utf8) { return QString::fromUtf8(utf8); }
    bool shows(const char* utf8) { return texts().contains(text(utf8)); }

    /// Shows the window and waits until keys go to it.
    void open()
    {
        window().show(ActivationContext{});
        ASSERT_TRUE(waitFor([this] { return window().isActive(); }));
        drainEvents();
    }
    /// The visible item with this value in its property `label` or `text`, or null.
    QQuickItem* control(const QString& label) { return find(window().contentItem(), label); }
    /// Presses a control with the pointer, in its middle.
    void click(const QString& label)
    {
        QQuickItem* item = control(label);
        ASSERT_TRUE(item) << qPrintable(label);
        clickAt(item->mapToScene({item->width() / 2, item->height() / 2}));
    }
    void clickAt(QPointF place)
    {
        QTest::mouseClick(&window(), Qt::LeftButton, {}, place.toPoint());
        drainEvents();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window(), key, modifiers);
        drainEvents();
    }
    /// Types into what has the keyboard, as an input method commits text.
    void type(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(window().activeFocusItem(), &event);
        drainEvents();
    }
    /// Whether the keyboard is in the control, or in a part of it.
    bool hasFocus(const QString& label)
    {
        const QQuickItem* item = control(label);
        return item && item->hasActiveFocus();
    }

    int closeRequests = 0;

private:
    static QQuickItem* find(QQuickItem* item, const QString& label)
    {
        if (!item->isVisible())
            return nullptr;
        if (item->property("label").toString() == label || item->property("text").toString() == label)
            return item;
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* found = find(child, label))
                return found;
        }
        return nullptr;
    }
    static void collectSymbols(const QQuickItem* item, QStringList& result)
    {
        if (!item->isVisible())
            return;
        if (item->inherits("QQuickImage"))
            result.append(item->property("name").toString());
        for (const QQuickItem* child : item->childItems())
            collectSymbols(child, result);
    }

    std::unique_ptr<QmlMainWindow> m_window;
};

} // namespace Tavrin::Testing
