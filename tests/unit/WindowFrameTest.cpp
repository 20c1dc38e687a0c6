#include "UI/WindowFrame.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

constexpr QRect screen{0, 0, 1920, 1080};
constexpr QRect second{1920, 0, 1280, 1024};
constexpr QSize size{720, 540};

TEST(WindowFrames, SurviveAsText)
{
    const QRect frame{-10, 20, 800, 600};
    EXPECT_EQ(frameFromText(frameText(frame)), frame);
    for (const char* text :
        {"", "1 2 3", "1 2 3 4 5", "a b c d", "1 2 0 4", "1 2 3 -4", "1 2 3 99999999999", "1  2 3 4"})
        EXPECT_EQ(frameFromText(QString::fromUtf8(text)), std::nullopt) << text;
}

TEST(WindowFrames, AreCentredAtFirst)
{
    EXPECT_EQ(windowFrame(std::nullopt, size, {screen}).center(), screen.center());
    EXPECT_EQ(windowFrame(std::nullopt, size, {screen}).size(), size);
}

TEST(WindowFrames, AreKeptWhereTheyCanBeSeen)
{
    const QRect kept{2000, 100, 800, 600};
    EXPECT_EQ(windowFrame(kept, size, {screen, second}), kept);
}

TEST(WindowFrames, ComeBackFromAScreenThatIsGone)
{
    EXPECT_EQ(windowFrame(QRect{2000, 100, 800, 600}, size, {screen}).size(), size);
    EXPECT_TRUE(screen.contains(windowFrame(QRect{2000, 100, 800, 600}, size, {screen})));
    EXPECT_TRUE(screen.contains(windowFrame(QRect{1900, 100, 800, 600}, size, {screen})))
        << "a sliver is not enough";
}

TEST(WindowFrames, FitTheScreen)
{
    EXPECT_TRUE(screen.contains(windowFrame(QRect{100, 100, 5000, 5000}, size, {screen})));
    EXPECT_TRUE(screen.contains(windowFrame(QRect{-100, -50, 800, 600}, size, {screen})));
    const QRect tiny{0, 0, 640, 400};
    EXPECT_TRUE(tiny.contains(windowFrame(std::nullopt, size, {tiny})));
}

} // namespace
} // namespace Tavrin
