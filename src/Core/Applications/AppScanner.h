#pragma once

#include "Core/Applications/ApplicationCatalog.h"
#include "Core/Applications/InstalledApp.h"
#include "Core/Support/Mailbox.h"
#include "Core/Support/WorkerPool.h"

#include <QObject>
#include <memory>
#include <optional>
#include <vector>

namespace Tavrin {

/// Keeps the list of the installed applications. Main thread; scanning happens on threads of its own.
class AppScanner : public QObject {
    Q_OBJECT

public:
    /// Starts a scan.
    explicit AppScanner(std::shared_ptr<const ApplicationCatalog> catalog);
    /// Does not wait for a scan that hangs.
    ~AppScanner() override;

    /// What the scan that finished last has found, by name; the one before until then.
    const std::vector<InstalledApp>& apps() const { return m_apps; }
    /// A scan was started, and none has finished since.
    bool isLoading() const { return m_isLoading; }

    /// Starts a scan, also while another one runs; returns at once.
    void scanApps();

    /// The first application whose identifier, path or name is `query`, ignoring case.
    std::optional<InstalledApp> findApp(const QString& query) const;

    /// Reads what lies at a path that the user chose, and hands it to `completion` on the main thread; it is
    /// not added to the list. Nothing if it cannot be started.
    void readApp(const QString& path, std::function<void(std::optional<InstalledApp>)> completion);

Q_SIGNALS:
    void appsChanged();
    void loadingChanged();

private:
    void setLoading(bool isLoading);
    void publish(std::vector<InstalledApp> apps);

    std::shared_ptr<const ApplicationCatalog> m_catalog;
    std::vector<InstalledApp> m_apps;
    bool m_isLoading = false;
    Mailbox m_mailbox;
    WorkerPool m_workers;
};

/// All applications of the catalog's folders, by name in Vietnamese order; of those with the same identifier
/// the first. Reads the disk: for worker threads.
std::vector<InstalledApp> scanApplications(const ApplicationCatalog& catalog);

} // namespace Tavrin
