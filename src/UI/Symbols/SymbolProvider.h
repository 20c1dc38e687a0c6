#pragma once

#include <QColor>
#include <QImage>
#include <QQuickImageProvider>

namespace Tavrin {

/// A symbol drawn in one colour; a null image, after a warning, if the name has no picture.
/// `pixels` is the side of the square.
QImage symbolImage(const QString& name, const QColor& color, int pixels);

/// image://symbol/<name>/<colour>, asked with the size in pixels. Main thread.
class SymbolProvider : public QQuickImageProvider {
public:
    SymbolProvider()
        : QQuickImageProvider(QQuickImageProvider::Image)
    {
    }

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace Tavrin
