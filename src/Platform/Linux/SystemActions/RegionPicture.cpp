#include "Platform/Linux/SystemActions/RegionPicture.h"

#include <QDir>
#include <QFile>
#include <cstdlib>

namespace Tavrin {
namespace {

/// First eight bytes of a file in PNG, and its last chunk (Portable Network Graphics, 5.2 and 11.2.5).
constexpr QByteArrayView signature("\x89PNG\r\n\x1a\n");
constexpr QByteArrayView lastChunk("\0\0\0\0IEND\xae\x42\x60\x82", 12);

QString privateFolder()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    QByteArray name
        = QFile::encodeName((runtime.startsWith(u'/') ? runtime : QDir::tempPath()) + u"/Tavrin-XXXXXX");
    return mkdtemp(name.data()) ? QFile::decodeName(name) : QString();
}

} // namespace

RegionPicture::RegionPicture()
    : m_folder(privateFolder())
{
}

RegionPicture::~RegionPicture()
{
    if (!m_folder.isEmpty())
        QDir(m_folder).removeRecursively();
}

QString RegionPicture::file() const
{
    return m_folder.isEmpty() ? QString() : m_folder + u"/region.png";
}

std::optional<QByteArray> RegionPicture::read() const
{
    QFile picture(file());
    if (!picture.open(QIODevice::ReadOnly) || picture.size() > largestSize)
        return std::nullopt;
    QByteArray bytes = picture.read(largestSize);
    if (!bytes.startsWith(signature) || !bytes.endsWith(lastChunk))
        return std::nullopt;
    return bytes;
}

} // namespace Tavrin
