#include "Platform/Linux/IdleMemory.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

namespace Tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<IdleMemory::Range> releasable(const std::string& text)
{
    std::vector<IdleMemory::Range> ranges;
    IdleMemory::MappingScanner scanner;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (const auto range = scanner.feed(line + '\n'))
            ranges.push_back(*range);
    }
    return ranges;
}

std::string mapping(const std::string& header, const std::string& anonymous)
{
    return header + "\nSize:                  8 kB\nRss:                   8 kB\nAnonymous:      " + anonymous
        + " kB\nVmFlags: rd ex\n";
}

TEST(IdleMemory, ReleasesUnchangedPagesOfLibrariesOnly)
{
    const std::string smaps
        = mapping("7f0000001000-7f0000003000 r-xp 00001000 fe:00 12    /usr/lib/libQt6Quick.so.6.4.2", "0")
        + mapping("7f0000003000-7f0000004000 r--p 00003000 fe:00 12    /usr/lib/libQt6Quick.so.6.4.2", "4")
        + mapping("7f0000004000-7f0000005000 rw-p 00004000 fe:00 12    /usr/lib/libQt6Quick.so.6.4.2", "0")
        + mapping("7f0000005000-7f0000006000 r--s 00000000 fe:00 13    /usr/lib/libshared.so", "0")
        + mapping("7f0000006000-7f0000007000 r-xp 00000000 fe:00 14    /usr/lib/libxcb.so.1.1.0", "0")
        + mapping("7f0000007000-7f0000008000 r--p 00000000 fe:00 15    /usr/share/fonts/font.ttf", "0")
        + mapping("7f0000008000-7f0000009000 rw-p 00000000 00:00 0", "4")
        + mapping("7f0000009000-7f000000a000 r-xp 00000000 00:00 0     [vdso]", "0");
    EXPECT_THAT(releasable(smaps),
        ElementsAre(IdleMemory::Range{0x7f0000001000, 0x2000}, IdleMemory::Range{0x7f0000007000, 0x1000}));
}

TEST(IdleMemory, SurvivesOtherText)
{
    EXPECT_THAT(releasable(""), IsEmpty());
    EXPECT_THAT(releasable("Anonymous: 0 kB\n-\n a-b\nx-y r\n2-1 r-xp /a.so\nAnonymous:\n1-2\nAnonymous:"),
        IsEmpty());
}

} // namespace
} // namespace Tavrin
