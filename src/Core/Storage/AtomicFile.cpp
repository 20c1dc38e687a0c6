#include "Core/Storage/AtomicFile.h"

#include "Core/Support/FileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Tavrin::AtomicFile {
namespace {

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/// Follows symbolic links by hand: the last one may dangle, and its target is still where to write.
QString linkTarget(QString path)
{
    constexpr int mostLinks = 40; // the kernel's own limit
    for (int followed = 0; followed < mostLinks; ++followed) {
        const QFileInfo info(path);
        if (!info.isSymLink())
            break;
        path = info.symLinkTarget();
    }
    return path;
}

QString temporaryPattern(const QFileInfo& target)
{
    return u'.' + target.fileName() + u".saving-";
}

/// Makes the rename itself survive a power cut. Some file systems refuse; the data is safe without.
void syncDirectory(const QString& directory)
{
    const FileDescriptor descriptor(
        open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen())
        fsync(descriptor.number());
}

} // namespace

std::optional<QString> write(const QString& path, const QByteArray& contents)
{
    const QFileInfo target(linkTarget(path));
    const QByteArray targetName = QFile::encodeName(target.filePath());
    QByteArray temporaryName = QFile::encodeName(target.dir().filePath(temporaryPattern(target))) + "XXXXXX";

    FileDescriptor descriptor(mkostemp(temporaryName.data(), O_CLOEXEC));
    if (!descriptor.isOpen())
        return errorText(errno);

    const auto failed = [&]() -> std::optional<QString> {
        const int error = errno;
        unlink(temporaryName.constData());
        return errorText(error);
    };
    // A file of someone else's stays theirs where we may give it to them; the write goes on if not.
    if (struct stat existing{}; stat(targetName.constData(), &existing) == 0) {
        fchmod(descriptor.number(), existing.st_mode & 07777);
        if (existing.st_uid != geteuid()
            && fchown(descriptor.number(), existing.st_uid, existing.st_gid) != 0)
            errno = 0;
    }
    if (!descriptor.write(contents) || fsync(descriptor.number()) != 0 || !descriptor.closeNow())
        return failed();
    if (rename(temporaryName.constData(), targetName.constData()) != 0)
        return failed();
    syncDirectory(target.path());
    return std::nullopt;
}

std::optional<QString> read(const QString& path, QByteArray& contents)
{
    // Opening must not wait: a named pipe in the file's place has no writer.
    const FileDescriptor descriptor(
        open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isOpen())
        return errorText(errno);
    struct stat info { };
    if (fstat(descriptor.number(), &info) != 0)
        return errorText(errno);
    if (S_ISDIR(info.st_mode))
        return errorText(EISDIR);
    if (!S_ISREG(info.st_mode))
        return QStringLiteral("not a regular file");

    QFile file;
    if (!file.open(descriptor.number(), QIODevice::ReadOnly | QIODevice::Unbuffered))
        return file.errorString();
    contents = file.readAll();
    if (file.error() != QFile::NoError)
        return file.errorString();
    return std::nullopt;
}

void removeLeftovers(const QString& path)
{
    const QFileInfo target(linkTarget(path));
    QDir directory = target.dir();
    const auto leftovers
        = directory.entryList({temporaryPattern(target) + u"??????"}, QDir::Files | QDir::Hidden);
    for (const QString& name : leftovers)
        directory.remove(name);
}

} // namespace Tavrin::AtomicFile
