#include "Platform/Linux/Applications/DesktopEntryCatalog.h"

#include "Platform/Linux/Applications/ApplicationIndex.h"
#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/IconDrawing.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

namespace Tavrin {
namespace {

constexpr QStringView appImageSuffix = u".AppImage";

/// The program that an entry says must be there for the application to count as installed.
bool isProgramThere(const QString& program)
{
    if (program.isEmpty())
        return true;
    return program.startsWith(u'/') ? QFileInfo(program).isExecutable()
                                    : !QStandardPaths::findExecutable(program).isEmpty();
}

bool haveCommon(const QStringList& left, const QStringList& right)
{
    return std::ranges::any_of(left, [&](const QString& each) { return right.contains(each); });
}

ApplicationInformation programInformation(const QFileInfo& file)
{
    ApplicationInformation information;
    information.bundleName = file.fileName();
    if (information.bundleName.endsWith(appImageSuffix, Qt::CaseInsensitive))
        information.bundleName.chop(appImageSuffix.size());
    information.isStartable = file.isFile() && file.isExecutable();
    return information;
}

} // namespace

DesktopEntryCatalog::DesktopEntryCatalog()
    : DesktopEntryCatalog(listedApplicationFolders(),
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts),
        IconThemeSource::ofDesktop())
{
}

DesktopEntryCatalog::DesktopEntryCatalog(QStringList folders, QStringList desktopNames, IconThemeSource icons)
    : m_folders(std::move(folders))
    , m_desktopNames(std::move(desktopNames))
    , m_icons(std::move(icons))
{
}

QStringList DesktopEntryCatalog::folders() const
{
    return m_folders;
}

QString DesktopEntryCatalog::suffix() const
{
    return desktopEntrySuffix.toString();
}

QStringList DesktopEntryCatalog::contents(const QString& folder) const
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

ApplicationInformation DesktopEntryCatalog::information(const QString& path) const
{
    const QFileInfo file(path);
    if (!path.endsWith(desktopEntrySuffix))
        return programInformation(file);
    const auto entry = readDesktopEntry(path);
    ApplicationInformation information;
    if (!entry) {
        // A folder may be read while its applications are being removed.
        information.isListed = file.exists();
        information.isStartable = false;
        return information;
    }
    information.identifier = entry->id;
    information.displayName = entry->vietnameseName.isEmpty() ? entry->localName : entry->vietnameseName;
    information.bundleName = entry->name;
    information.icon = entry->icon;
    information.isListed = isListed(*entry);
    information.isStartable = !entry->hidden;
    return information;
}

bool DesktopEntryCatalog::isListed(const DesktopEntry& entry) const
{
    return !entry.hidden && !entry.noDisplay && isProgramThere(entry.tryExec)
        && (entry.onlyShowIn.isEmpty() || haveCommon(entry.onlyShowIn, m_desktopNames))
        && !haveCommon(entry.notShowIn, m_desktopNames);
}

QImage DesktopEntryCatalog::icon(const QString& name, int pixels) const
{
    const QStringList files = name.startsWith(u'/') ? QStringList(name) : m_icons.files(name, pixels);
    for (const QString& file : files) {
        if (QImage image = drawIconFile(file, pixels); !image.isNull())
            return image;
    }
    return drawGeneralIcon(pixels);
}

} // namespace Tavrin
