#pragma once

namespace Tavrin {

/// One press on a volume shortcut. The value is the byte that asks `tavrin-sound` for it.
enum class VolumeChange : char {
    up = '+',
    down = '-',
    toggleMute = 'm',
};

} // namespace Tavrin
