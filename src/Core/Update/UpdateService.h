#pragma once

#include "Core/Update/AppUpdateInfo.h"

#include <QDateTime>
#include <QObject>
#include <optional>

namespace Tavrin {

/// Knows whether a newer build exists. Main thread only; all work is asynchronous.
class UpdateService : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isUpdateAvailable READ isUpdateAvailable NOTIFY changed)

public:
    UpdateService();
    ~UpdateService() override;

    bool isUpdateAvailable() const { return m_isUpdateAvailable; }
    const std::optional<AppUpdateInfo>& updateInfo() const { return m_updateInfo; }

    /// Version of the running build.
    QString currentVersion() const;

    /// Starts a check and returns. `manual` is true when the user asked for it.
    void checkForUpdates(bool manual);

Q_SIGNALS:
    void changed();

private:
    bool m_isUpdateAvailable = false;
    std::optional<AppUpdateInfo> m_updateInfo;
};

} // namespace Tavrin
