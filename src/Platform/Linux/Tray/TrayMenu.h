#pragma once

#include "Core/Shell/StatusItem.h"

#include <QHash>
#include <QMenu>
#include <QTimer>

namespace Tavrin {

/// The status menu as a QMenu that follows its content without giving up the entries that stay: hosts
/// show a copy keyed by Qt's number for each action, and some close an open copy whose numbers change.
///
/// While the menu is open, what it shows stays as it was built, and choosing an entry runs what is shown,
/// even if the model has since lost it. Needs a QApplication; main thread.
class TrayMenu : public QMenu {
    Q_OBJECT

public:
    /// Who paints the entries: Qt itself, or a tray's host that gets them over com.canonical.dbusmenu.
    enum class Painter { widget, host };

    /// `content` is asked at once, whenever the menu is about to open, and after refresh().
    TrayMenu(Painter painter, std::function<StatusMenuContent()> content);

    /// Brings the menu in line in the next turn of the event loop, once for all calls until then; an open
    /// menu is left alone until it has closed.
    void refresh();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Entry {
        QAction* action = nullptr;
        std::function<void()> run;
    };

    void opening();
    void closing();
    void choose(const QString& identity);
    void bringInLine();
    void applyOrder(const QStringList& wanted);
    QAction* newAction(const QString& identity);
    void showItem(const MenuItem& item);
    QAction* actionOf(const QKeyEvent& event) const;

    Painter m_painter;
    std::function<StatusMenuContent()> m_content;
    QStringList m_order;
    QHash<QString, Entry> m_entries;
    QTimer m_update;
    bool m_isOpen = false;
    bool m_isStale = false;
};

} // namespace Tavrin
