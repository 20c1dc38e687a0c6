#pragma once

#include <QHashFunctions>
#include <QMetaType>
#include <QString>

namespace Tavrin {

/// One application that is installed. A value; copied freely.
struct InstalledApp {
    /// As the user reads it.
    QString name;
    /// Empty if the application has none.
    QString bundleId;
    /// Absolute.
    QString path;
    /// Names the picture for ApplicationCatalog::icon(), which draws it when it is wanted.
    QString icon;

    const QString& id() const { return bundleId.isEmpty() ? path : bundleId; }

    /// The same application, whatever else is known of it.
    bool operator==(const InstalledApp& other) const { return id() == other.id(); }
};

inline std::size_t qHash(const InstalledApp& app, std::size_t seed = 0)
{
    return qHash(app.id(), seed);
}

} // namespace Tavrin

Q_DECLARE_METATYPE(Tavrin::InstalledApp)
