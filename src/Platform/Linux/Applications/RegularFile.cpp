#include "Platform/Linux/Applications/RegularFile.h"

#include "Core/Support/FileDescriptor.h"

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>

namespace Tavrin {

std::optional<QByteArray> readRegularFile(const QString& path, qint64 limit)
{
    const FileDescriptor descriptor(
        open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status { };
    if (!descriptor.isOpen() || fstat(descriptor.number(), &status) != 0 || !S_ISREG(status.st_mode)
        || status.st_size > limit)
        return std::nullopt;
    QFile file;
    if (!file.open(descriptor.number(), QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    return file.read(status.st_size);
}

} // namespace Tavrin
