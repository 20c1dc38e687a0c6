#include "Platform/Linux/Update/UserTemporaryFolder.h"

#include "Core/Support/FileDescriptor.h"
#include "Core/Update/UpdaterScript.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace Tavrin {
namespace {

constexpr mode_t ownerOnly = 0700;

/// Bytes. An archive is a few megabytes; the runtime directory is memory, and others live in it, too.
constexpr quint64 enoughRoom = 256 * 1024 * 1024;

TemporaryFolderResult refused(const QString& path, const QString& reason)
{
    return {{}, QStringLiteral("Không dùng được thư mục tạm %1 (%2).").arg(path, reason)};
}

TemporaryFolderResult make(const QString& path)
{
    if (!isSafeInUpdaterScript(path))
        return refused(path, QStringLiteral("đường dẫn có ký tự đặc biệt"));
    const QByteArray name = QFile::encodeName(path);
    if (mkdir(name.constData(), ownerOnly) != 0 && errno != EEXIST)
        return refused(path, qt_error_string(errno));
    // Looked at through a descriptor, so that nobody exchanges it in between.
    const FileDescriptor folder(open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat info { };
    if (!folder.isOpen() || fstat(folder.number(), &info) != 0)
        return refused(path, qt_error_string(errno));
    if (info.st_uid != geteuid())
        return refused(path, QStringLiteral("thuộc về người dùng khác"));
    if ((info.st_mode & ALLPERMS) != ownerOnly && fchmod(folder.number(), ownerOnly) != 0)
        return refused(path, qt_error_string(errno));
    return {path, {}};
}

} // namespace

quint64 availableSpace(const QString& folder)
{
    struct statvfs info { };
    if (folder.isEmpty() || statvfs(QFile::encodeName(folder).constData(), &info) != 0)
        return 0;
    return static_cast<quint64>(info.f_bavail) * info.f_frsize;
}

TemporaryFolderResult UserTemporaryFolder::prepare() const
{
    if (availableSpace(m_runtimeDirectory) >= enoughRoom)
        return make(m_runtimeDirectory + u"/Tavrin");
    const QString parent = m_cacheHome + u"/Tavrin";
    QDir().mkpath(parent);
    return make(parent + u"/tmp");
}

} // namespace Tavrin
