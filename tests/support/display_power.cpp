// Loaded into Xorg by LD_PRELOAD: gives the screen of the dummy driver, which has no display to switch, what
// a driver with one does at its start. The server's extension for display power then works as it does on a
// real machine. This must happen between the screen's start and the extension's; the one call into a library
// at that time is the one that logs the extension's name.
#include <array>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <string_view>

namespace {

/// The beginning of the server's ScreenInfo (scrnintstr.h).
struct ScreenInfo {
    struct Format {
        std::array<unsigned char, 3> numbers;
    };
    std::array<int, 5> image;
    std::array<Format, 8> formats;
    int screenCount;
    void* firstScreen;
};

using SetPower = void (*)(void* screen, int level, int flags);
using InitPower = int (*)(void* screen, SetPower set, int flags);
using Write = std::size_t (*)(const void*, std::size_t, std::size_t, FILE*);

template <typename Type>
Type symbol(void* where, const char* name)
{
    return reinterpret_cast<Type>(dlsym(where, name));
}

void givePower()
{
    const auto* info = symbol<const ScreenInfo*>(RTLD_DEFAULT, "screenInfo");
    const auto init = symbol<InitPower>(RTLD_DEFAULT, "xf86DPMSInit");
    if (info && init && info->screenCount == 1)
        init(
            info->firstScreen, [](void*, int, int) {}, 0);
}

} // namespace

extern "C" std::size_t fwrite(const void* data, std::size_t size, std::size_t count, FILE* file)
{
    constexpr std::string_view sign = "Initializing extension DPMS";
    static const auto write = symbol<Write>(RTLD_NEXT, "fwrite");
    if (memmem(data, size * count, sign.data(), sign.size()))
        givePower();
    return write(data, size, count, file);
}
