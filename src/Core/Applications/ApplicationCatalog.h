#pragma once

#include <QStringList>

class QImage;

namespace Tavrin {

/// What an application's own description says.
struct ApplicationInformation {
    /// Empty if it has none or cannot be read.
    QString identifier;
    /// The name in the user's language; empty if there is none.
    QString displayName;
    /// The name for everyone; empty if there is none.
    QString bundleName;
    /// Names the picture for ApplicationCatalog::icon(); empty if none is named.
    QString icon;
    /// A list of applications shows it.
    bool isListed = true;
    /// It can be started, as far as its file tells.
    bool isStartable = true;
};

/// Where the system keeps its applications. All functions read the disk, may take their time, and are
/// called on worker threads, on several at once.
class ApplicationCatalog {
public:
    virtual ~ApplicationCatalog() = default;

    /// The folders with applications, absolute, the ones that count first at the front.
    virtual QStringList folders() const = 0;
    /// What the name of every application's file in them ends with.
    virtual QString suffix() const = 0;
    /// Names of all that lies directly in a folder; none if it cannot be listed.
    virtual QStringList contents(const QString& folder) const = 0;
    /// What lies at an absolute path. All texts are empty if it is unreadable.
    virtual ApplicationInformation information(const QString& path) const = 0;
    /// The picture of this name, a square of so many pixels; a general one of an application where there is
    /// none or it cannot be drawn.
    virtual QImage icon(const QString& name, int pixels) const = 0;
};

} // namespace Tavrin
