#pragma once

#include <QString>

namespace Tavrin {

/// A folder that is there, or why there is none.
struct TemporaryFolderResult {
    QString path;
    /// In words for the user; empty if the folder is there.
    QString error;
};

/// The program's own folder for what lives for a moment, closed to everybody else.
class UserTemporaryFolder {
public:
    /// `runtimeDirectory` and `cacheHome` as the XDG Base Directory Specification has them; the former may
    /// be empty.
    UserTemporaryFolder(QString runtimeDirectory, QString cacheHome)
        : m_runtimeDirectory(std::move(runtimeDirectory))
        , m_cacheHome(std::move(cacheHome))
    {
    }

    /// Makes it with mode 0700 if it is not there: Tavrin in the runtime directory if that has room, else
    /// Tavrin/tmp in the cache. One that belongs to somebody else or is a link is refused, and so is one
    /// that a shell script could not name. Any thread; looks at disks.
    TemporaryFolderResult prepare() const;

private:
    QString m_runtimeDirectory;
    QString m_cacheHome;
};

/// Bytes that the user may still write where this folder is; 0 if it cannot be asked.
quint64 availableSpace(const QString& folder);

} // namespace Tavrin
