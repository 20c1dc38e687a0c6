#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Tavrin::IdleMemory {

/// A stretch of the address space.
struct Range {
    std::uintptr_t start = 0;
    std::size_t size = 0;
    bool operator==(const Range&) const = default;
};

/// Reads the text of /proc/PID/smaps line by line and finds the mappings that hold nothing but unchanged
/// pages of a library or a font, and not one of those that a key press goes through: dropping them costs a
/// look-up in the page cache later. Allocates nothing, so that it does not add to what it is there to reduce.
class MappingScanner {
public:
    /// The mapping that this line settles as releasable, if it does.
    std::optional<Range> feed(std::string_view line);

private:
    Range m_range;
    bool m_isCandidate = false;
};

/// Gives unused heap back, and the pages of libraries and fonts that only a window in use needs. Returns at
/// once; a thread of its own does the work.
void release();

} // namespace Tavrin::IdleMemory
