#pragma once

#include <QByteArray>
#include <QImage>

namespace Tavrin {

/// The program's mark, a white ⌘ on a blue rounded square, as an SVG document laid out for a picture of
/// `size` by `size` pixels. `glyph` is the ⌘ as an SVG document on a grid of 16 units. Any thread.
QByteArray programMark(const QByteArray& glyph, int size);

/// The same as a picture. Needs no application object; any thread.
QImage paintProgramMark(const QByteArray& glyph, int size);

} // namespace Tavrin
