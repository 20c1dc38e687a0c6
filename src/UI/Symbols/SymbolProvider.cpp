#include "UI/Symbols/SymbolProvider.h"

#include "Core/Shell/SymbolTable.h"

#include <QPainter>
#include <QSvgRenderer>

namespace Tavrin {

QImage symbolImage(const QString& name, const QColor& color, int pixels)
{
    QSvgRenderer renderer(QStringLiteral(":/Tavrin/Symbols/%1.svg").arg(symbolPicture(name)));
    if (!renderer.isValid() || pixels <= 0) {
        qWarning("There is no picture for the symbol \"%s\" at %d pixels.", qUtf8Printable(name), pixels);
        return {};
    }
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    // The drawings are black: what they cover takes the colour.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const qsizetype separator = id.indexOf(u'/');
    QImage image
        = symbolImage(id.first(qMax(separator, 0)), QColor(id.sliced(separator + 1)), requestedSize.width());
    *size = image.size();
    return image;
}

} // namespace Tavrin
