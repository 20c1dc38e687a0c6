#include "Sound/VolumeLevel.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

std::uint32_t volumeOf(double percent)
{
    return static_cast<std::uint32_t>(percent * fullVolume / 100);
}

TEST(VolumeLevel, RoundsToWholePerCent)
{
    EXPECT_EQ(volumePercent(0), 0);
    EXPECT_EQ(volumePercent(volumeOf(37.4)), 37);
    EXPECT_EQ(volumePercent(volumeOf(37.6)), 38);
    EXPECT_EQ(volumePercent(fullVolume), 100);
    EXPECT_EQ(volumePercent(volumeOf(1000)), 1000);
    EXPECT_EQ(volumePercent(silentVolume), 0);
}

TEST(VolumeLevel, StepsByTenPerCentAndStopsAtTheEnds)
{
    struct Step {
        int before;
        int up;
        int down;
    };
    const Step steps[] = {{0, 10, 0}, {3, 13, 0}, {10, 20, 0}, {37, 47, 27}, {90, 100, 80}, {95, 100, 85},
        {100, 100, 90}, {101, 101, 91}, {130, 130, 120}};
    for (const auto& [before, up, down] : steps) {
        const std::uint32_t volume = volumeOf(before);
        EXPECT_EQ(volumePercent(changedVolume(volume, VolumeChange::up)), up) << before;
        EXPECT_EQ(volumePercent(changedVolume(volume, VolumeChange::down)), down) << before;
        EXPECT_EQ(changedVolume(volume, VolumeChange::toggleMute), volume);
    }
}

TEST(VolumeLevel, ReachesItsEndsExactly)
{
    EXPECT_EQ(changedVolume(volumeOf(97), VolumeChange::up), fullVolume);
    EXPECT_EQ(changedVolume(volumeOf(99.7), VolumeChange::up), fullVolume);
    EXPECT_EQ(changedVolume(volumeOf(4.2), VolumeChange::down), 0U);
}

TEST(VolumeLevel, NeverLowersByGoingUpNorRaisesByGoingDown)
{
    for (std::uint32_t volume = 0; volume < 2 * fullVolume; volume += 7) {
        ASSERT_GE(changedVolume(volume, VolumeChange::up), volume);
        ASSERT_LE(changedVolume(volume, VolumeChange::down), volume);
    }
}

TEST(VolumeLevel, ComesBackToWhereItWas)
{
    for (int percent = 10; percent <= 90; ++percent) {
        const std::uint32_t once = changedVolume(volumeOf(percent), VolumeChange::down);
        const std::uint32_t back = changedVolume(once, VolumeChange::up);
        EXPECT_EQ(volumePercent(back), percent);
        std::uint32_t volume = back;
        for (int round = 0; round < 1000; ++round)
            volume = changedVolume(changedVolume(volume, VolumeChange::up), VolumeChange::down);
        EXPECT_EQ(volume, back) << percent;
    }
}

} // namespace
} // namespace Tavrin
