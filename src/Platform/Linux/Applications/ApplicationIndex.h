#pragma once

#include "Platform/Linux/Applications/DesktopEntry.h"

#include <QList>

namespace Tavrin {

/// The folders with the desktop entries of applications, the user's own first: an entry there replaces
/// one of the same id in the folders behind.
QStringList applicationFolders();

/// The same folders in the order in which a list of applications names them: what everyone has first.
QStringList listedApplicationFolders();

/// Finds applications among desktop entries. Copied freely; holds no resources.
class ApplicationIndex {
public:
    /// Of entries with the same id the first counts; if that one is hidden, none does.
    explicit ApplicationIndex(const QList<DesktopEntry>& entries);

    /// Reads every "*.desktop" that lies directly in one of the folders.
    static ApplicationIndex read(const QStringList& folders);

    /// The entry with exactly this id, also when menus do not show it.
    const DesktopEntry* findExact(QStringView id) const;

    /// The entry an identifier means: its id; its id ignoring case; its window class; the last part of
    /// a dotted identifier as an id, or a plain identifier as the last part of a dotted id. Entries
    /// that menus do not show are found by their exact id only. Null if there is none.
    const DesktopEntry* find(QStringView identifier) const;

    /// The entry with this name in the user's language or untranslated, ignoring case. Null if none.
    const DesktopEntry* findByName(QStringView name) const;

    /// The entry that starts the program of this file name without further arguments, or null.
    const DesktopEntry* findByProgram(QStringView fileName) const;

    /// The first entry of a category, as the Desktop Menu Specification names them, or null.
    const DesktopEntry* findByCategory(const QString& category) const;

private:
    template <typename Condition>
    const DesktopEntry* firstShown(Condition condition) const;

    QList<DesktopEntry> m_entries;
};

/// What stands behind the last dot; the whole text where there is none.
QStringView lastPart(QStringView dotted);

} // namespace Tavrin
