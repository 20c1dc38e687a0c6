#include "UI/Design/Palette.h"
#include "support/Wait.h"
#include "support/WindowFixture.h"

namespace Tavrin {
namespace {

using Testing::waitFor;
using Testing::Window;

TEST_F(Window, IsDarkFromItsFirstFrame)
{
    platform.fakeAppearance.setDark(true);
    EXPECT_EQ(window().color(), darkPalette().window);
    window().show(ActivationContext{});
    const QImage picture = window().grabWindow();
    EXPECT_EQ(picture.pixelColor(picture.width() - 3, picture.height() - 60), darkPalette().window);
    EXPECT_EQ(picture.pixelColor(3, 3), darkPalette().bar);
}

TEST_F(Window, FollowsTheDesktopsLook)
{
    window().show(ActivationContext{});
    const auto corner = [this] { return window().grabWindow().pixelColor(3, 3); };
    EXPECT_EQ(corner(), lightPalette().bar);
    platform.fakeAppearance.setDark(true);
    EXPECT_TRUE(waitFor([&] { return corner() == darkPalette().bar; }));
    EXPECT_EQ(window().color(), darkPalette().window);
    window().hide();
    platform.fakeAppearance.setDark(false);
    window().show(ActivationContext{});
    EXPECT_TRUE(waitFor([&] { return corner() == lightPalette().bar; }));
}

} // namespace
} // namespace Tavrin
