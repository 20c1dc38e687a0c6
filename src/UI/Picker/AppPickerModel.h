#pragma once

#include "Core/Applications/InstalledApp.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Tavrin {

class AppScanner;
class OpenPanel;
class OpenPanelRequest;

/// The sheet in which the user chooses an application: the rows are the scanner's applications that match
/// the search. Main thread.
class AppPickerModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built from the scanner")

    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString totals READ totals NOTIFY appsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(bool isFinished READ isFinished NOTIFY finished)

public:
    using OnSelect = std::function<void(const InstalledApp&)>;

    enum Role {
        nameRole = Qt::UserRole + 1,
        /// The identifier, or the path where there is none.
        detailRole,
        /// The picture's address for an image.
        iconRole
    };

    /// Both outlive the model. `onSelect` is called once with what the user has chosen, before finished();
    /// it does not destroy the model.
    AppPickerModel(AppScanner& scanner, OpenPanel& openPanel, OnSelect onSelect);
    /// Closes the panel for browsing if it is open.
    ~AppPickerModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return static_cast<int>(m_rows.size()); }
    QString searchText() const { return m_searchText; }
    /// Not trimmed: a blank is searched for like any other letter.
    void setSearchText(const QString& text);
    /// How many applications there are, in words, whatever is searched for.
    QString totals() const;
    bool isLoading() const;
    /// An application was chosen: the sheet's work is done.
    bool isFinished() const { return m_isFinished; }

    /// Chooses the application in a row; one that is not there does nothing.
    Q_INVOKABLE void choose(int row);
    /// Lets the user choose a file on disk. A second call while the panel is open does nothing.
    Q_INVOKABLE void browse();

Q_SIGNALS:
    void searchTextChanged();
    void countChanged();
    void appsChanged();
    void loadingChanged();
    void finished();

private:
    /// The texts of an application that a search looks at, ready to be compared.
    struct SearchedApp {
        QString name;
        QString bundleId;
    };

    void readApps();
    void showMatching();
    void replaceRows(std::vector<InstalledApp> rows);
    void takeBrowsed(const std::optional<QString>& path);
    void select(const InstalledApp& app);

    AppScanner& m_scanner;
    OpenPanel& m_openPanel;
    OnSelect m_onSelect;
    QString m_searchText;
    bool m_isFinished = false;
    std::vector<SearchedApp> m_searched;
    std::vector<InstalledApp> m_rows;
    std::unique_ptr<OpenPanelRequest> m_browsing;
};

} // namespace Tavrin
