#include "Platform/Linux/IdleMemory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <malloc.h>
#include <memory>
#include <sys/mman.h>
#include <thread>

namespace Tavrin::IdleMemory {
namespace {

/// What the road of a key press runs through stays where it is.
constexpr std::array<std::string_view, 6> keptLibraries{
    "/libTavrinCore", "/libQt6Core", "/libxcb", "/libc.so", "/libglib", "/ld-linux"};

/// Longer than any line of the file that matters; a longer path is cut, which does no harm.
constexpr std::size_t longestLine = 512;

std::optional<std::uintptr_t> hexadecimal(std::string_view text)
{
    std::uintptr_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// The addresses of a line that begins a mapping: "start-end perms offset device inode path".
std::optional<Range> headerRange(std::string_view line)
{
    const std::string_view addresses = line.substr(0, line.find(' '));
    const std::size_t dash = addresses.find('-');
    if (dash == std::string_view::npos)
        return std::nullopt;
    const auto start = hexadecimal(addresses.substr(0, dash));
    const auto end = hexadecimal(addresses.substr(dash + 1));
    if (!start || !end || *end < *start)
        return std::nullopt;
    return Range{*start, *end - *start};
}

/// Libraries, and what text is drawn with.
constexpr std::array<std::string_view, 3> releasedFiles{".so", "/fonts/", "/fontconfig/"};

bool isReleasable(std::string_view header)
{
    const std::size_t permissions = header.find(' ') + 1;
    const std::size_t slash = header.find('/');
    if (permissions + 3 >= header.size() || slash == std::string_view::npos)
        return false;
    const std::string_view path = header.substr(slash);
    const auto isNamed = [path](std::string_view part) { return path.find(part) != std::string_view::npos; };
    return header[permissions + 1] == '-' && header[permissions + 3] == 'p'
        && std::ranges::any_of(releasedFiles, isNamed) && std::ranges::none_of(keptLibraries, isNamed);
}

void releaseNow()
{
    malloc_trim(0);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> smaps(
        std::fopen("/proc/self/smaps", "re"), std::fclose);
    std::array<char, longestLine> line{};
    MappingScanner scanner;
    while (smaps && std::fgets(line.data(), static_cast<int>(line.size()), smaps.get())) {
        if (const auto range = scanner.feed(line.data()))
            madvise(reinterpret_cast<void*>(range->start), range->size, MADV_DONTNEED);
    }
}

} // namespace

std::optional<Range> MappingScanner::feed(std::string_view line)
{
    if (const auto range = headerRange(line)) {
        m_range = *range;
        m_isCandidate = isReleasable(line);
        return std::nullopt;
    }
    constexpr std::string_view anonymous = "Anonymous:";
    if (!m_isCandidate || !line.starts_with(anonymous))
        return std::nullopt;
    m_isCandidate = false;
    // Read-only now, but relocated once: pages counted here exist nowhere else.
    const std::size_t number = line.find_first_not_of(' ', anonymous.size());
    return line.substr(std::min(number, line.size())).starts_with("0 ") ? std::optional(m_range)
                                                                        : std::nullopt;
}

void release()
{
    std::thread(releaseNow).detach();
}

} // namespace Tavrin::IdleMemory
