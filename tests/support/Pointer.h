#pragma once

#include "support/Program.h"

#include <QPoint>

namespace Tavrin::Testing {

/// Presses a mouse button (1 left, 3 right) at a point of the screen.
inline void clickAt(const QPoint& point, int button)
{
    outputOf(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
            QStringLiteral("click"), QString::number(button)});
}

/// Presses and releases keys as xdotool names them, such as "ctrl+o".
inline void pressKeys(const QString& keys)
{
    outputOf(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
}

/// Keeps a picture of the screen for whoever looks, when TAVRIN_TEST_PICTURES names a folder.
inline void takePicture(const QString& name)
{
    const QString folder = qEnvironmentVariable("TAVRIN_TEST_PICTURES");
    if (!folder.isEmpty())
        outputOf(QStringLiteral("import"),
            {QStringLiteral("-window"), QStringLiteral("root"), folder + u'/' + name + u".png"});
}

} // namespace Tavrin::Testing
