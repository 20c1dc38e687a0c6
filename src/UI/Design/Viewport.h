#pragma once

#include <QQuickItem>
#include <QtQmlIntegration>

namespace Tavrin {

/// What of an item is in sight. Main thread.
class Viewport : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Has a text drawn only as far as it is in sight. The toolkit decides so by itself for a long text that
    /// is set, but not for one that is pasted, which would be drawn whole after every key.
    Q_INVOKABLE static void drawOnlyVisiblePart(QQuickItem* text)
    {
        text->setFlag(QQuickItem::ItemObservesViewport);
    }
};

} // namespace Tavrin
