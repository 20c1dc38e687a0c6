#include "Platform/Linux/Tray/TrayIconImage.h"

#include "Core/Shell/SymbolTable.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace Tavrin {
namespace {

/// How the mark is laid out at one size. The glyph's drawing has a grid of 16 units with strokes of one
/// unit on whole units: the small sizes take the drawing as it is, which keeps the strokes on the pixels;
/// from 32 pixels on, a broken scale no longer blurs them to the eye.
struct Layout {
    int size;
    qreal glyphSize;
    qreal cornerRadius;
};

constexpr Layout layouts[] = {
    {16, 16, 3},
    {22, 16, 5},
    {24, 16, 5.5},
    {32, 24, 7},
    {48, 36, 10.5},
    {64, 48, 14},
};

constexpr QRgb topColor = 0xff2b96ff;
constexpr QRgb bottomColor = 0xff0a78f0;

void paintTile(QPainter& painter, const Layout& layout)
{
    QLinearGradient gradient(0, 0, 0, layout.size);
    gradient.setColorAt(0, QColor::fromRgb(topColor));
    gradient.setColorAt(1, QColor::fromRgb(bottomColor));
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(QRectF(0, 0, layout.size, layout.size), layout.cornerRadius, layout.cornerRadius);
}

/// The glyph's file leaves its colour to whoever shows it, so only its shape is taken.
QPixmap whiteGlyph(QSvgRenderer& renderer, const Layout& layout)
{
    QPixmap glyph(layout.size, layout.size);
    glyph.fill(Qt::transparent);
    QPainter painter(&glyph);
    const qreal inset = (layout.size - layout.glyphSize) / 2;
    renderer.render(&painter, QRectF(inset, inset, layout.glyphSize, layout.glyphSize));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(glyph.rect(), Qt::white);
    return glyph;
}

} // namespace

QIcon trayIcon()
{
    QSvgRenderer renderer(QStringLiteral(":/Tavrin/Tray/%1.svg").arg(symbolPicture(u"command.square.fill")));
    QIcon icon;
    for (const Layout& layout : layouts) {
        QPixmap mark(layout.size, layout.size);
        mark.fill(Qt::transparent);
        QPainter painter(&mark);
        painter.setRenderHint(QPainter::Antialiasing);
        paintTile(painter, layout);
        painter.drawPixmap(0, 0, whiteGlyph(renderer, layout));
        painter.end();
        icon.addPixmap(mark);
    }
    return icon;
}

} // namespace Tavrin
