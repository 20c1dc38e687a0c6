#include "Platform/Linux/Tray/TrayMenu.h"

#include "Platform/Linux/Tray/MenuEdits.h"
#include "Platform/Linux/Tray/TrayMenuText.h"

#include <QKeyEvent>
#include <QPointer>

#include <chrono>

namespace Tavrin {
namespace {

using CheckState = MenuItem::CheckState;

/// GTK's hosts report that the menu closed before they report what was chosen in it, both within
/// one turn of theirs; an entry dropped in between would take the choice with it.
constexpr std::chrono::milliseconds closingPause{300};

} // namespace

TrayMenu::TrayMenu(Painter painter, std::function<StatusMenuContent()> content)
    : m_painter(painter)
    , m_content(std::move(content))
{
    setAccessibleName(QStringLiteral("Tavrin"));
    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &TrayMenu::bringInLine);
    // Emitted for a host's AboutToShow and "closed" just as for a menu of our own.
    connect(this, &QMenu::aboutToShow, this, &TrayMenu::opening);
    connect(this, &QMenu::aboutToHide, this, &TrayMenu::closing);
    bringInLine();
}

void TrayMenu::refresh()
{
    m_isStale = true;
    if (!m_isOpen && !m_update.isActive())
        m_update.start(0);
}

void TrayMenu::opening()
{
    bringInLine();
    m_isOpen = true;
}

void TrayMenu::closing()
{
    m_isOpen = false;
    if (m_isStale)
        m_update.start(closingPause);
}

void TrayMenu::choose(const QString& identity)
{
    // Not every host reports that the menu closed, but a choice closes it.
    m_isOpen = false;
    const QPointer<TrayMenu> self(this);
    if (const std::function<void()> run = m_entries.value(identity).run)
        run();
    if (!self)
        return;
    // A checkable action has turned its own mark over, whatever the model says. Left to the next turn,
    // because this entry itself may have to go.
    m_isStale = true;
    m_update.start(0);
}

void TrayMenu::bringInLine()
{
    m_update.stop();
    m_isStale = false;
    const StatusMenuContent content = m_content();
    QStringList wanted;
    for (const MenuItem& item : content)
        wanted.append(item.identity);
    applyOrder(wanted);
    for (const MenuItem& item : content)
        showItem(item);
}

void TrayMenu::applyOrder(const QStringList& wanted)
{
    for (const MenuEdit& edit : menuEdits(m_order, wanted)) {
        if (edit.kind == MenuEdit::Kind::remove) {
            QAction* const action = m_entries.take(edit.identity).action;
            removeAction(action);
            // It may be the one whose signal we are in.
            action->deleteLater();
            continue;
        }
        if (edit.kind == MenuEdit::Kind::insert)
            m_entries[edit.identity].action = newAction(edit.identity);
        // Inserting an action that is already there moves it.
        insertAction(m_entries.value(edit.before).action, m_entries.value(edit.identity).action);
    }
    m_order = wanted;
}

QAction* TrayMenu::newAction(const QString& identity)
{
    auto* const action = new QAction(this);
    // Quit, preferences and the like must not be guessed from titles and moved elsewhere.
    action->setMenuRole(QAction::NoRole);
    action->setShortcutVisibleInContextMenu(true);
    connect(action, &QAction::triggered, this, [this, identity] { choose(identity); });
    return action;
}

void TrayMenu::showItem(const MenuItem& item)
{
    Entry& entry = m_entries[item.identity];
    entry.run = item.action;
    QAction* const action = entry.action;
    // Each setter tells hosts only of what differs.
    action->setSeparator(item.kind == MenuItem::Kind::separator);
    const QString title = TrayMenuText::singleLine(item.title);
    action->setText(
        m_painter == Painter::widget ? TrayMenuText::forWidget(title) : TrayMenuText::forDBusMenu(title));
    action->setEnabled(item.isEnabled);
    action->setCheckable(item.checkState != CheckState::none);
    action->setChecked(item.checkState == CheckState::on);
    // Only shown: an action that is in no other widget than a menu on its own takes no keys.
    action->setShortcut(item.keyEquivalent.isNull()
            ? QKeySequence()
            : QKeySequence(Qt::CTRL | Qt::Key(item.keyEquivalent.toUpper().unicode())));
}

QAction* TrayMenu::actionOf(const QKeyEvent& event) const
{
    const QKeySequence keys(event.keyCombination());
    for (QAction* const action : actions()) {
        if (!action->shortcut().isEmpty() && action->shortcut() == keys && action->isEnabled())
            return action;
    }
    return nullptr;
}

bool TrayMenu::event(QEvent* event)
{
    // While the menu is open its keys come before any shortcut of a window.
    if (event->type() == QEvent::ShortcutOverride && actionOf(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QMenu::event(event);
}

void TrayMenu::keyPressEvent(QKeyEvent* event)
{
    QAction* const action = actionOf(*event);
    if (!action) {
        QMenu::keyPressEvent(event);
        return;
    }
    event->accept();
    close();
    action->trigger();
}

} // namespace Tavrin
