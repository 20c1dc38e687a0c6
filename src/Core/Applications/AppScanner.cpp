#include "Core/Applications/AppScanner.h"

#include "Core/Support/SearchKey.h"

#include <QCollator>
#include <QSet>
#include <algorithm>

namespace Tavrin {
namespace {

QString fileName(const QString& path, const QString& suffix)
{
    const QString name = path.sliced(path.lastIndexOf(u'/') + 1);
    return name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}

InstalledApp installedApp(
    const QString& path, const ApplicationInformation& information, const QString& suffix)
{
    QString name = information.displayName;
    if (name.isEmpty())
        name = information.bundleName;
    if (name.isEmpty())
        name = fileName(path, suffix);
    return {name, information.identifier, path, information.icon};
}

void sortByName(std::vector<InstalledApp>& apps)
{
    QCollator collator(QLocale(QLocale::Vietnamese, QLocale::Vietnam));
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::ranges::stable_sort(
        apps, [&](const QString& left, const QString& right) { return collator.compare(left, right) < 0; },
        &InstalledApp::name);
}

} // namespace

std::vector<InstalledApp> scanApplications(const ApplicationCatalog& catalog)
{
    const QString suffix = catalog.suffix();
    std::vector<InstalledApp> apps;
    QSet<QString> seen;
    for (const QString& folder : catalog.folders()) {
        for (const QString& entry : catalog.contents(folder)) {
            if (!entry.endsWith(suffix))
                continue;
            const QString path = folder + u'/' + entry;
            const ApplicationInformation information = catalog.information(path);
            if (!information.isListed || seen.contains(information.identifier))
                continue;
            if (!information.identifier.isEmpty())
                seen.insert(information.identifier);
            apps.push_back(installedApp(path, information, suffix));
        }
    }
    sortByName(apps);
    return apps;
}

AppScanner::AppScanner(std::shared_ptr<const ApplicationCatalog> catalog)
    : m_catalog(std::move(catalog))
{
    scanApps();
}

AppScanner::~AppScanner() = default;

void AppScanner::scanApps()
{
    setLoading(true);
    m_workers.run([this, catalog = m_catalog, address = m_mailbox.address()] {
        auto apps = std::make_shared<std::vector<InstalledApp>>(scanApplications(*catalog));
        // `this` is touched on its own thread only, and only while the mailbox lives.
        address.post([this, apps = std::move(apps)] { publish(std::move(*apps)); });
    });
}

void AppScanner::publish(std::vector<InstalledApp> apps)
{
    m_apps = std::move(apps);
    Q_EMIT appsChanged();
    setLoading(false);
}

void AppScanner::setLoading(bool isLoading)
{
    if (std::exchange(m_isLoading, isLoading) != isLoading)
        Q_EMIT loadingChanged();
}

std::optional<InstalledApp> AppScanner::findApp(const QString& query) const
{
    const QString key = searchKey(query);
    const auto found = std::ranges::find_if(m_apps, [&](const InstalledApp& app) {
        return searchKey(app.bundleId) == key || searchKey(app.path) == key || searchKey(app.name) == key;
    });
    return found == m_apps.end() ? std::nullopt : std::optional(*found);
}

void AppScanner::readApp(const QString& path, std::function<void(std::optional<InstalledApp>)> completion)
{
    m_workers.run([path, completion = std::move(completion), catalog = m_catalog,
                      address = m_mailbox.address()]() mutable {
        const ApplicationInformation information = catalog->information(path);
        std::optional<InstalledApp> app;
        if (information.isStartable)
            app = installedApp(path, information, catalog->suffix());
        // Moved on, so that what the completion holds is released on the main thread.
        address.post([completion = std::move(completion), app = std::move(app)] { completion(app); });
    });
}

} // namespace Tavrin
