#include "Platform/Linux/Applications/ApplicationIndex.h"

#include "Platform/Linux/XdgPaths.h"

#include <QDir>
#include <QSet>
#include <algorithm>

namespace Tavrin {
namespace {

bool sameText(QStringView left, QStringView right)
{
    return !left.isEmpty() && left.compare(right, Qt::CaseInsensitive) == 0;
}

QStringList userFolders()
{
    const QString dataHome = XdgPaths::dataHome();
    return {
        dataHome + u"/applications",
        dataHome + u"/flatpak/exports/share/applications",
    };
}

QStringList systemFolders()
{
    return {
        QStringLiteral("/usr/local/share/applications"),
        QStringLiteral("/usr/share/applications"),
        QStringLiteral("/var/lib/flatpak/exports/share/applications"),
        QStringLiteral("/var/lib/snapd/desktop/applications"),
    };
}

} // namespace

QStringList applicationFolders()
{
    return userFolders() + systemFolders();
}

QStringList listedApplicationFolders()
{
    return systemFolders() + userFolders();
}

QStringView lastPart(QStringView dotted)
{
    return dotted.sliced(dotted.lastIndexOf(u'.') + 1);
}

ApplicationIndex::ApplicationIndex(const QList<DesktopEntry>& entries)
{
    QSet<QString> seen;
    for (const DesktopEntry& entry : entries) {
        if (seen.contains(entry.id))
            continue;
        seen.insert(entry.id);
        if (!entry.hidden)
            m_entries.append(entry);
    }
}

ApplicationIndex ApplicationIndex::read(const QStringList& folders)
{
    QList<DesktopEntry> entries;
    for (const QString& folder : folders) {
        const QDir directory(folder);
        const QStringList files = directory.entryList({QStringLiteral("*.desktop")}, QDir::Files, QDir::Name);
        for (const QString& file : files) {
            if (const auto entry = readDesktopEntry(directory.filePath(file)))
                entries.append(*entry);
        }
    }
    return ApplicationIndex(entries);
}

template <typename Condition>
const DesktopEntry* ApplicationIndex::firstShown(Condition condition) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
        [&](const DesktopEntry& entry) { return !entry.noDisplay && condition(entry); });
    return found == m_entries.end() ? nullptr : &*found;
}

const DesktopEntry* ApplicationIndex::findExact(QStringView id) const
{
    const auto found = std::find_if(
        m_entries.begin(), m_entries.end(), [id](const DesktopEntry& entry) { return entry.id == id; });
    return found == m_entries.end() ? nullptr : &*found;
}

const DesktopEntry* ApplicationIndex::find(QStringView identifier) const
{
    if (const DesktopEntry* entry = findExact(identifier))
        return entry;
    if (const DesktopEntry* entry
        = firstShown([identifier](const auto& each) { return sameText(each.id, identifier); }))
        return entry;
    if (const DesktopEntry* entry
        = firstShown([identifier](const auto& each) { return sameText(each.windowClass, identifier); }))
        return entry;
    if (identifier.contains(u'.'))
        return firstShown([identifier](const auto& each) { return sameText(each.id, lastPart(identifier)); });
    return firstShown([identifier](const auto& each) { return sameText(lastPart(each.id), identifier); });
}

const DesktopEntry* ApplicationIndex::findByName(QStringView name) const
{
    return firstShown(
        [name](const auto& each) { return sameText(each.name, name) || sameText(each.localName, name); });
}

const DesktopEntry* ApplicationIndex::findByProgram(QStringView fileName) const
{
    return firstShown([fileName](const auto& each) {
        return each.commandLine.size() == 1
            && QFileInfo(each.commandLine.constFirst()).fileName() == fileName;
    });
}

const DesktopEntry* ApplicationIndex::findByCategory(const QString& category) const
{
    return firstShown([&category](const auto& each) { return each.categories.contains(category); });
}

} // namespace Tavrin
