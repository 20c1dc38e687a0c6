#include "Platform/Linux/Applications/ApplicationLocator.h"

#include "Platform/Linux/Applications/ApplicationIndex.h"
#include "Platform/Linux/Applications/DefaultApplications.h"

#include <QDir>
#include <QFileInfo>

namespace Tavrin {
namespace {

/// The file of an exact id without reading all others: the way of nearly every press.
std::optional<QString> fileOfId(const QString& id)
{
    for (const QString& folder : applicationFolders()) {
        const QString path = folder + u'/' + id + desktopEntrySuffix;
        if (const auto entry = readDesktopEntry(path))
            return entry->hidden ? std::nullopt : std::optional(path);
    }
    return std::nullopt;
}

std::optional<QString> locateAlias(const ApplicationAlias& alias, const ApplicationIndex& index)
{
    if (auto location = defaultApplication(alias.role, index))
        return location;
    for (const QString& id : alias.desktopIds) {
        if (const DesktopEntry* entry = index.findExact(id))
            return entry->path;
    }
    return defaultApplication(alias.lastResort, index);
}

std::optional<ApplicationTarget> targetAt(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        return std::nullopt;
    if (path.endsWith(desktopEntrySuffix)) {
        auto entry = readDesktopEntry(path);
        if (!entry || entry->hidden)
            return std::nullopt;
        return ApplicationTarget{std::move(entry), {}};
    }
    if (!file.isExecutable())
        return std::nullopt;
    return ApplicationTarget{std::nullopt, path};
}

} // namespace

QString ApplicationTarget::key() const
{
    if (entry)
        return QFileInfo(entry->path).canonicalFilePath();
    const QFileInfo file(executable);
    return QFileInfo(file.path()).canonicalFilePath() + u'/' + file.fileName();
}

namespace ApplicationLocator {

std::optional<QString> foreignApplicationName(const QString& path)
{
    constexpr QStringView suffix = u".app";
    const QString clean = QDir::cleanPath(path);
    if (!clean.endsWith(suffix))
        return std::nullopt;
    const QString name = clean.sliced(clean.lastIndexOf(u'/') + 1).chopped(suffix.size());
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

std::optional<QString> locateIdentifier(const QString& identifier)
{
    const QString id = identifier.endsWith(desktopEntrySuffix) ? identifier.chopped(desktopEntrySuffix.size())
                                                               : identifier;
    if (id.isEmpty())
        return std::nullopt;
    if (auto location = fileOfId(id))
        return location;
    const ApplicationIndex index = ApplicationIndex::read(applicationFolders());
    if (const DesktopEntry* entry = index.find(id))
        return entry->path;
    const auto alias = aliasOfIdentifier(id);
    return alias ? locateAlias(*alias, index) : std::nullopt;
}

std::optional<QString> locateName(const QString& name)
{
    const ApplicationIndex index = ApplicationIndex::read(applicationFolders());
    if (const auto alias = aliasOfName(name)) {
        if (auto location = locateAlias(*alias, index))
            return location;
    }
    const DesktopEntry* entry = index.findByName(name);
    return entry ? std::optional(entry->path) : std::nullopt;
}

std::optional<ApplicationTarget> resolve(const QString& location)
{
    if (auto target = targetAt(location))
        return target;
    const auto name = foreignApplicationName(location);
    if (!name || QFileInfo::exists(location))
        return std::nullopt;
    const auto found = locateName(*name);
    return found ? targetAt(*found) : std::nullopt;
}

DefaultRole missingRole(const QString& target)
{
    const auto foreignName = foreignApplicationName(target);
    const bool isIdentifier = !foreignName && target.contains(u'.');
    const QString name = foreignName.value_or(target);
    const auto alias = isIdentifier ? aliasOfIdentifier(name) : aliasOfName(name);
    if (!alias || QFileInfo::exists(target))
        return DefaultRole::none;
    if (isIdentifier ? locateIdentifier(name) : locateName(name))
        return DefaultRole::none;
    return alias->role == DefaultRole::none ? alias->lastResort : alias->role;
}

} // namespace ApplicationLocator
} // namespace Tavrin
