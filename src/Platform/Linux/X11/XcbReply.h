#pragma once

#include <cstdlib>
#include <memory>

namespace Tavrin {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, event or error that xcb allocated.
template <typename Type>
using XcbReply = std::unique_ptr<Type, FreeDeleter>;

} // namespace Tavrin
