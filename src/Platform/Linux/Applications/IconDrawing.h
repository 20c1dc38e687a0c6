#pragma once

#include <QImage>
#include <QString>

namespace Tavrin {

/// The picture in a file (PNG, SVG or XPM) in the middle of a square of so many pixels. Null if it is broken,
/// or larger than any picture of an application is: time and memory stay bounded. Any thread.
QImage drawIconFile(const QString& path, int pixels);

/// What stands for an application without a picture.
QImage drawGeneralIcon(int pixels);

} // namespace Tavrin
