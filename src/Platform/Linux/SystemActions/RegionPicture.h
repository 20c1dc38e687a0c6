#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace Tavrin {

/// Where a tool puts the picture of a region: a file in a folder of its own that nobody else can enter, and
/// that goes with this object, whatever has become of the picture. Used on one thread at a time.
class RegionPicture {
public:
    /// Bytes: more than eight million pixels without any compression.
    static constexpr qint64 largestSize = 64 * 1024 * 1024;

    /// Makes the folder in the user's runtime folder, or in the one for temporary files.
    RegionPicture();
    ~RegionPicture();
    Q_DISABLE_COPY_MOVE(RegionPicture)

    /// The file; empty if no folder could be made.
    QString file() const;

    /// What the tool has put there, if that is a whole picture in PNG. Nothing if the user chose no region.
    std::optional<QByteArray> read() const;

private:
    QString m_folder;
};

} // namespace Tavrin
