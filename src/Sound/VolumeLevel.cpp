#include "Sound/VolumeLevel.h"

#include <algorithm>

namespace Tavrin {
namespace {

constexpr int step = 10;
constexpr int fullPercent = 100;

std::uint32_t volumeAt(int percent)
{
    return static_cast<std::uint32_t>(
        (static_cast<std::uint64_t>(percent) * fullVolume + fullPercent / 2) / fullPercent);
}

} // namespace

int volumePercent(std::uint32_t volume)
{
    return static_cast<int>((static_cast<std::uint64_t>(volume) * fullPercent + fullVolume / 2) / fullVolume);
}

std::uint32_t changedVolume(std::uint32_t volume, VolumeChange change)
{
    const int percent = volumePercent(volume);
    switch (change) {
    case VolumeChange::up:
        return std::max(volume, volumeAt(std::min(percent + step, fullPercent)));
    case VolumeChange::down:
        return volumeAt(std::max(percent - step, 0));
    case VolumeChange::toggleMute:
        break;
    }
    return volume;
}

} // namespace Tavrin
