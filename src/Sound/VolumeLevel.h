#pragma once

#include "Sound/VolumeChange.h"

#include <cstdint>

namespace Tavrin {

/// 100 % as sound servers count.
inline constexpr std::uint32_t fullVolume = 0x10000;

/// Below half a per cent, and so 0 % wherever it is shown, at -140 dB, which no output can play.
inline constexpr std::uint32_t silentVolume = 300;

/// The volume, rounded to whole per cent.
int volumePercent(std::uint32_t volume);

/// The volume after this change: ten whole per cent up or down, from 0 to 100. Counting in per cent makes
/// steps land on what is shown, however many there were before. A volume that was set above 100 % is not
/// lowered by going up, and is left in steps of ten by going down. Mute changes nothing here.
std::uint32_t changedVolume(std::uint32_t volume, VolumeChange change);

} // namespace Tavrin
