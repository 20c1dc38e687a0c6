#include "Platform/Linux/Tray/ProgramMark.h"

#include <QPainter>
#include <QSvgRenderer>

namespace Tavrin {
namespace {

/// How the mark is laid out at one size, in pixels.
struct Layout {
    qreal glyphSize;
    qreal cornerRadius;
};

/// Units of the glyph's own grid, each way.
constexpr qreal glyphGrid = 16;

/// The glyph has strokes of one unit on whole units: the small sizes take the drawing as it is, which keeps
/// the strokes on the pixels; from 32 pixels on, a broken scale no longer blurs them to the eye.
Layout layoutFor(int size)
{
    if (size >= 32)
        return {size * 0.75, size * 7 / 32.0};
    if (size >= 24)
        return {glyphGrid, 5.5};
    return {glyphGrid, size >= 22 ? 5.0 : 3.0};
}

/// The mark, with words in capitals where the layout and the glyph go.
constexpr auto drawing
    = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="SIZE" height="SIZE" viewBox="0 0 SIZE SIZE">
  <defs>
    <linearGradient id="tile" x1="0" y1="0" x2="0" y2="1">
      <stop offset="0" stop-color="#2b96ff"/>
      <stop offset="1" stop-color="#0a78f0"/>
    </linearGradient>
  </defs>
  <rect width="SIZE" height="SIZE" rx="RADIUS" ry="RADIUS" fill="url(#tile)"/>
  <g fill="#ffffff" transform="translate(INSET INSET) scale(SCALE)">
    GLYPH
  </g>
</svg>
)svg";

/// What is inside of the document's outermost element.
QByteArray content(const QByteArray& document)
{
    const qsizetype begin = document.indexOf('>', document.indexOf("<svg")) + 1;
    return document.mid(begin, document.lastIndexOf("</svg>") - begin).trimmed();
}

} // namespace

QByteArray programMark(const QByteArray& glyph, int size)
{
    const Layout layout = layoutFor(size);
    QByteArray document = drawing;
    document.replace("SIZE", QByteArray::number(size));
    document.replace("RADIUS", QByteArray::number(layout.cornerRadius));
    document.replace("INSET", QByteArray::number((size - layout.glyphSize) / 2));
    document.replace("SCALE", QByteArray::number(layout.glyphSize / glyphGrid));
    document.replace("GLYPH", content(glyph));
    return document;
}

QImage paintProgramMark(const QByteArray& glyph, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(programMark(glyph, size));
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, size, size));
    painter.end();
    return image;
}

} // namespace Tavrin
