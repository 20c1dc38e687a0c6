#include "Platform/Linux/Tray/TrayIconImage.h"

#include <QPixmap>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

class TrayIconImage : public testing::TestWithParam<int> { };

TEST_P(TrayIconImage, IsABlueTileWithAWhiteGlyphAndClearCorners)
{
    const int size = GetParam();
    const QIcon icon = trayIcon();
    ASSERT_TRUE(icon.availableSizes().contains(QSize(size, size)));
    const QImage image = icon.pixmap(QSize(size, size)).toImage().convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(image.size(), QSize(size, size));
    for (const QPoint corner :
        {QPoint(0, 0), QPoint(size - 1, 0), QPoint(0, size - 1), QPoint(size - 1, size - 1)})
        EXPECT_LT(qAlpha(image.pixel(corner)), 128);
    const QColor middle = image.pixelColor(size / 2, size / 2);
    EXPECT_GT(middle.blue(), middle.red() + 100) << "inside the glyph's square is the tile";

    int white = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x)
            white += image.pixel(x, y) == 0xffffffff ? 1 : 0;
    }
    // The four straight strokes alone are a sixth of the glyph's width each; sharp ones are pure white.
    EXPECT_GT(white, size) << "the strokes are blurred or missing";
}

INSTANTIATE_TEST_SUITE_P(Sizes, TrayIconImage, testing::Values(16, 22, 24, 32, 48, 64));

} // namespace
} // namespace Tavrin
