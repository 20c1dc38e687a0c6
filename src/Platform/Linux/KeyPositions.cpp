#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <array>

namespace Tavrin::KeyPositions {
namespace {

struct Position {
    std::uint32_t keyCode;
    std::uint32_t evdevCode;
};

// Virtual key codes (Carbon, HIToolbox/Events.h) and the evdev codes (linux/input-event-codes.h) of the
// keys at the same place; JIS and ISO keys included. By rising virtual key code.
constexpr std::array positions = std::to_array<Position>({
    {0, 30},
    {1, 31},
    {2, 32},
    {3, 33},
    {4, 35},
    {5, 34},
    {6, 44},
    {7, 45},
    {8, 46},
    {9, 47},
    {10, 86},
    {11, 48},
    {12, 16},
    {13, 17},
    {14, 18},
    {15, 19},
    {16, 21},
    {17, 20},
    {18, 2},
    {19, 3},
    {20, 4},
    {21, 5},
    {22, 7},
    {23, 6},
    {24, 13},
    {25, 10},
    {26, 8},
    {27, 12},
    {28, 9},
    {29, 11},
    {30, 27},
    {31, 24},
    {32, 22},
    {33, 26},
    {34, 23},
    {35, 25},
    {36, 28},
    {37, 38},
    {38, 36},
    {39, 40},
    {40, 37},
    {41, 39},
    {42, 43},
    {43, 51},
    {44, 53},
    {45, 49},
    {46, 50},
    {47, 52},
    {48, 15},
    {49, 57},
    {50, 41},
    {51, 14},
    {53, 1},
    {54, 126},
    {55, 125},
    {56, 42},
    {57, 58},
    {58, 56},
    {59, 29},
    {60, 54},
    {61, 100},
    {62, 97},
    {64, 187},
    {65, 83},
    {67, 55},
    {69, 78},
    {71, 69},
    {75, 98},
    {76, 96},
    {78, 74},
    {79, 188},
    {80, 189},
    {81, 117},
    {82, 82},
    {83, 79},
    {84, 80},
    {85, 81},
    {86, 75},
    {87, 76},
    {88, 77},
    {89, 71},
    {90, 190},
    {91, 72},
    {92, 73},
    {93, 124},
    {94, 89},
    {95, 121},
    {96, 63},
    {97, 64},
    {98, 65},
    {99, 61},
    {100, 66},
    {101, 67},
    {103, 87},
    {105, 183},
    {106, 186},
    {107, 184},
    {109, 68},
    {110, 127},
    {111, 88},
    {113, 185},
    {114, 110},
    {115, 102},
    {116, 104},
    {117, 111},
    {118, 62},
    {119, 107},
    {120, 60},
    {121, 109},
    {122, 59},
    {123, 105},
    {124, 106},
    {125, 108},
    {126, 103},
});
static_assert(std::ranges::is_sorted(positions, {}, &Position::keyCode));

} // namespace

std::optional<std::uint32_t> evdevCode(std::uint32_t keyCode)
{
    if (keyCode >= firstForeignKeyCode) {
        const std::uint32_t code = keyCode - firstForeignKeyCode;
        if (code == 0 || code > largestEvdevCode)
            return std::nullopt;
        return code;
    }
    const auto found = std::ranges::lower_bound(positions, keyCode, {}, &Position::keyCode);
    if (found == positions.end() || found->keyCode != keyCode)
        return std::nullopt;
    return found->evdevCode;
}

std::uint32_t keyCode(std::uint32_t evdevCode)
{
    const auto found = std::ranges::find(positions, evdevCode, &Position::evdevCode);
    return found == positions.end() ? firstForeignKeyCode + evdevCode : found->keyCode;
}

} // namespace Tavrin::KeyPositions
