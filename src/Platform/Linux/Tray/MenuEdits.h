#pragma once

#include <QStringList>
#include <vector>

namespace Tavrin {

/// One step in bringing a menu's entries in line with a new list.
struct MenuEdit {
    enum class Kind { remove, insert, move };

    Kind kind = Kind::remove;
    QString identity;
    /// For insert and move: the entry it stands before; empty for the end.
    QString before;

    bool operator==(const MenuEdit&) const = default;
};

/// The fewest steps, to be taken in this order, that turn the list `present` into `wanted`. Identities are
/// unique within each list and never empty. Pure.
std::vector<MenuEdit> menuEdits(const QStringList& present, const QStringList& wanted);

} // namespace Tavrin
