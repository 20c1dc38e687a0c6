#include "UI/WindowFrame.h"

#include <QStringList>

#include <array>

namespace Tavrin {
namespace {

/// So much of the window must be on a screen for the user to find it and take hold of it.
constexpr QSize leastVisible{120, 60};

/// Beyond any screen; a file may hold anything.
constexpr int largestCoordinate = 1 << 15;

QRect fitted(QRect frame, const QRect& screen)
{
    frame.setSize(frame.size().boundedTo(screen.size()));
    frame.moveLeft(qBound(screen.left(), frame.left(), screen.right() - frame.width() + 1));
    frame.moveTop(qBound(screen.top(), frame.top(), screen.bottom() - frame.height() + 1));
    return frame;
}

} // namespace

QString frameText(const QRect& frame)
{
    return QStringLiteral("%1 %2 %3 %4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
}

std::optional<QRect> frameFromText(const QString& text)
{
    const QStringList parts = text.split(u' ');
    std::array<int, 4> numbers{};
    if (parts.size() != static_cast<qsizetype>(numbers.size()))
        return std::nullopt;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        bool isNumber = false;
        numbers[index] = parts[static_cast<qsizetype>(index)].toInt(&isNumber);
        if (!isNumber || std::abs(numbers[index]) > largestCoordinate)
            return std::nullopt;
    }
    const QRect frame(numbers[0], numbers[1], numbers[2], numbers[3]);
    return frame.isEmpty() ? std::nullopt : std::optional(frame);
}

QRect windowFrame(const std::optional<QRect>& kept, QSize size, const QList<QRect>& screens)
{
    if (screens.isEmpty())
        return kept.value_or(QRect({}, size));
    if (kept) {
        for (const QRect& screen : screens) {
            const QSize visible = screen.intersected(*kept).size();
            if (visible.width() >= leastVisible.width() && visible.height() >= leastVisible.height())
                return fitted(*kept, screen);
        }
    }
    QRect centred({}, size);
    centred.moveCenter(screens.first().center());
    return fitted(centred, screens.first());
}

} // namespace Tavrin
