#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <optional>

namespace Tavrin {

/// A window's place as text, "x y width height" in points, and back; nothing if it is not that.
QString frameText(const QRect& frame);
std::optional<QRect> frameFromText(const QString& text);

/// Where the window opens: the kept frame if enough of it is on a screen to be seen and moved, shrunk to
/// that screen; else `size` centred on the first screen. `screens` are the usable areas.
QRect windowFrame(const std::optional<QRect>& kept, QSize size, const QList<QRect>& screens);

} // namespace Tavrin
