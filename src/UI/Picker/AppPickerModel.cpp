#include "UI/Picker/AppPickerModel.h"

#include "Core/Applications/AppScanner.h"
#include "Core/Shell/OpenPanel.h"
#include "Core/Support/Diagnostics.h"
#include "Core/Support/SearchKey.h"
#include "UI/Picker/ApplicationIconProvider.h"

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>
#include <algorithm>

namespace Tavrin {
namespace {

/// The native number of the window in use, for a panel to stand in front of.
std::uintptr_t windowInUse()
{
    const QWindow* window = QGuiApplication::focusWindow();
    return window ? window->winId() : 0;
}

} // namespace

AppPickerModel::AppPickerModel(AppScanner& scanner, OpenPanel& openPanel, OnSelect onSelect)
    : m_scanner(scanner)
    , m_openPanel(openPanel)
    , m_onSelect(std::move(onSelect))
{
    readApps();
    connect(&scanner, &AppScanner::appsChanged, this, &AppPickerModel::readApps);
    connect(&scanner, &AppScanner::loadingChanged, this, &AppPickerModel::loadingChanged);
}

AppPickerModel::~AppPickerModel() = default;

int AppPickerModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant AppPickerModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const InstalledApp& app = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case nameRole:
        return Diagnostics::singleLine(app.name);
    case detailRole:
        return Diagnostics::singleLine(app.id());
    case iconRole:
        return applicationIconSource(app);
    default:
        return {};
    }
}

QHash<int, QByteArray> AppPickerModel::roleNames() const
{
    return {{nameRole, "name"}, {detailRole, "detail"}, {iconRole, "icon"}};
}

void AppPickerModel::setSearchText(const QString& text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    showMatching();
}

QString AppPickerModel::totals() const
{
    return QStringLiteral("%1 ứng dụng đã cài đặt").arg(m_scanner.apps().size());
}

bool AppPickerModel::isLoading() const
{
    return m_scanner.isLoading();
}

void AppPickerModel::choose(int row)
{
    if (row >= 0 && row < count())
        select(m_rows[static_cast<std::size_t>(row)]);
}

void AppPickerModel::browse()
{
    if (m_browsing)
        return;
    m_browsing
        = m_openPanel.chooseApplication(windowInUse(), [this](const auto& path) { takeBrowsed(path); });
}

void AppPickerModel::takeBrowsed(const std::optional<QString>& path)
{
    m_browsing.reset();
    if (!path)
        return;
    m_scanner.readApp(*path, [model = QPointer(this), path = *path](const auto& app) {
        if (!app)
            return Diagnostics::printLine(u"Không phải ứng dụng: " + path);
        if (model)
            model->select(*app);
    });
}

void AppPickerModel::select(const InstalledApp& app)
{
    // A copy: what the callback does may change the rows.
    m_onSelect(InstalledApp(app));
    m_isFinished = true;
    Q_EMIT finished();
}

void AppPickerModel::readApps()
{
    m_searched.clear();
    m_searched.reserve(m_scanner.apps().size());
    for (const InstalledApp& app : m_scanner.apps())
        m_searched.push_back({searchKey(app.name), searchKey(app.bundleId)});
    showMatching();
    Q_EMIT appsChanged();
}

void AppPickerModel::showMatching()
{
    const QString key = searchKey(m_searchText);
    const auto& apps = m_scanner.apps();
    std::vector<InstalledApp> rows;
    for (std::size_t index = 0; index < apps.size(); ++index) {
        const SearchedApp& searched = m_searched[index];
        if (searched.name.contains(key) || searched.bundleId.contains(key))
            rows.push_back(apps[index]);
    }
    replaceRows(std::move(rows));
}

void AppPickerModel::replaceRows(std::vector<InstalledApp> rows)
{
    // Rows keep their place and get new contents, so that the view need not build one anew for each letter.
    const int oldCount = count();
    const int newCount = static_cast<int>(rows.size());
    if (newCount < oldCount) {
        beginRemoveRows({}, newCount, oldCount - 1);
        m_rows.resize(rows.size());
        endRemoveRows();
    } else if (newCount > oldCount) {
        beginInsertRows({}, oldCount, newCount - 1);
        m_rows.insert(m_rows.end(), rows.begin() + oldCount, rows.end());
        endInsertRows();
    }
    m_rows = std::move(rows);
    if (const int kept = std::min(oldCount, newCount); kept > 0)
        Q_EMIT dataChanged(index(0), index(kept - 1));
    if (newCount != oldCount)
        Q_EMIT countChanged();
}

} // namespace Tavrin
