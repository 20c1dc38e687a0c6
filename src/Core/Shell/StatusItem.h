#pragma once

#include <QChar>
#include <QString>
#include <functional>
#include <vector>

namespace Tavrin {

/// One entry of the status menu, as a value.
struct MenuItem {
    enum class Kind { command, separator };
    enum class CheckState { none, off, on };

    Kind kind = Kind::command;
    /// Unique in one menu and the same at every rebuild, so that a host's open menu keeps the entries
    /// that stay.
    QString identity;
    QString title;
    /// Lower-case letter that, with the desktop's command modifier, chooses the entry while the menu
    /// is open; null for none.
    QChar keyEquivalent;
    bool isEnabled = true;
    CheckState checkState = CheckState::none;
    /// Runs on the main thread when the user chooses the entry; empty for none.
    std::function<void()> action;
};

using StatusMenuContent = std::vector<MenuItem>;

/// The program's icon in the desktop's tray, with its menu. Main thread only.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// `content` is asked for the present entries each time the menu is about to open, and whenever
    /// refresh() is called.
    virtual void setMenu(std::function<StatusMenuContent()> content) = 0;

    /// `activated` runs on a primary click on the icon.
    virtual void setActivated(std::function<void()> activated) = 0;

    /// Shows the icon as soon as the desktop has a tray, and again whenever the tray comes back.
    virtual void show() = 0;

    /// What the menu shows has changed: hosts that keep a copy of the menu are told.
    virtual void refresh() = 0;
};

} // namespace Tavrin
