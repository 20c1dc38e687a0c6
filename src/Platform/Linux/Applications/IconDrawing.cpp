#include "Platform/Linux/Applications/IconDrawing.h"

#include "Platform/Linux/Applications/RegularFile.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

namespace Tavrin {
namespace {

/// Bytes; the largest pictures of applications seen have one megabyte.
constexpr qint64 longestFile = 4 << 20;

/// Pixels of a side.
constexpr int largestSide = 2048;

QImage emptySquare(int pixels)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QRectF centred(QSizeF size, int pixels)
{
    QRectF place(QPointF(), size.scaled(pixels, pixels, Qt::KeepAspectRatio));
    place.moveCenter(QRectF(0, 0, pixels, pixels).center());
    return place;
}

/// A drawing that reads no other file, and that does not multiply by uses of uses of its parts.
bool isHarmlessDrawing(const QByteArray& contents)
{
    // Three levels of ten make a thousand; the pictures of common themes have 37 at most in all.
    constexpr int mostUses = 40;
    int uses = 0;
    QXmlStreamReader reader(contents);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == u"use" && ++uses > mostUses)
            return false;
        if (reader.name() != u"image")
            continue;
        for (const QXmlStreamAttribute& attribute : reader.attributes()) {
            if (attribute.name() == u"href" && !attribute.value().startsWith(u"data:"))
                return false;
        }
    }
    return !reader.hasError();
}

QImage drawVectors(const QByteArray& contents, int pixels)
{
    QSvgRenderer renderer;
    if (!isHarmlessDrawing(contents) || !renderer.load(contents) || renderer.defaultSize().isEmpty())
        return {};
    QImage image = emptySquare(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, centred(renderer.viewBoxF().size(), pixels));
    return image;
}

QImage drawPixels(QByteArray contents, const char* format, int pixels)
{
    QBuffer buffer(&contents);
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestSide || size.height() > largestSide)
        return {};
    const QImage picture = reader.read();
    if (picture.isNull())
        return {};
    const QRect place = centred(picture.size(), pixels).toAlignedRect();
    QImage image = emptySquare(pixels);
    QPainter(&image).drawImage(
        place, picture.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return image;
}

} // namespace

QImage drawIconFile(const QString& path, int pixels)
{
    const auto contents = readRegularFile(path, longestFile);
    if (!contents)
        return {};
    if (contents->startsWith("\x89PNG"))
        return drawPixels(*contents, "png", pixels);
    if (contents->startsWith("/* XPM"))
        return drawPixels(*contents, "xpm", pixels);
    return path.endsWith(u".svg", Qt::CaseInsensitive) ? drawVectors(*contents, pixels) : QImage();
}

QImage drawGeneralIcon(int pixels)
{
    // A window with its bar, on a grid of 32 units.
    constexpr qreal grid = 32;
    QImage image = emptySquare(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / grid, pixels / grid);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x8e, 0x8e, 0x93));
    painter.drawRoundedRect(QRectF(3, 4, 26, 24), 5, 5);
    painter.setBrush(QColor(0xf2, 0xf2, 0xf7));
    painter.drawRoundedRect(QRectF(5, 10, 22, 16), 3, 3);
    for (const qreal x : {6.0, 9.5, 13.0})
        painter.drawEllipse(QRectF(x, 6, 2, 2));
    return image;
}

} // namespace Tavrin
