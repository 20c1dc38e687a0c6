#include "Platform/Linux/KeyPositions.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

struct PositionCase {
    std::uint32_t keyCode;
    std::uint32_t evdevCode;
};

class Position : public testing::TestWithParam<PositionCase> { };

TEST_P(Position, ConvertsBothWays)
{
    EXPECT_EQ(KeyPositions::evdevCode(GetParam().keyCode), GetParam().evdevCode);
    EXPECT_EQ(KeyPositions::keyCode(GetParam().evdevCode), GetParam().keyCode);
}

// Key names as in linux/input-event-codes.h.
INSTANTIATE_TEST_SUITE_P(Table, Position,
    testing::Values(PositionCase{0, 30 /*A*/}, PositionCase{46, 50 /*M*/}, PositionCase{40, 37 /*K*/},
        PositionCase{9, 47 /*V*/}, PositionCase{18, 2 /*1*/}, PositionCase{29, 11 /*0*/},
        PositionCase{10, 86 /*102ND*/}, PositionCase{36, 28 /*ENTER*/}, PositionCase{48, 15 /*TAB*/},
        PositionCase{49, 57 /*SPACE*/}, PositionCase{50, 41 /*GRAVE*/}, PositionCase{51, 14 /*BACKSPACE*/},
        PositionCase{53, 1 /*ESC*/}, PositionCase{76, 96 /*KPENTER*/}, PositionCase{96, 63 /*F5*/},
        PositionCase{103, 87 /*F11*/}, PositionCase{111, 88 /*F12*/}, PositionCase{122, 59 /*F1*/},
        PositionCase{117, 111 /*DELETE*/}, PositionCase{123, 105 /*LEFT*/}, PositionCase{126, 103 /*UP*/},
        PositionCase{90, 190 /*F20*/}, PositionCase{0x10000 + 240, 240 /*UNKNOWN*/},
        PositionCase{0x10000 + 194, 194 /*F24*/}, PositionCase{0x10000 + 163, 163 /*NEXTSONG*/}));

TEST(Positions, AreTotalAndUnambiguous)
{
    for (std::uint32_t code = 1; code <= KeyPositions::largestEvdevCode; ++code)
        EXPECT_EQ(KeyPositions::evdevCode(KeyPositions::keyCode(code)), code);
}

TEST(Positions, RefuseWhatIsNoKey)
{
    for (const std::uint32_t keyCode :
        {52U, 63U, 127U, 128U, 0xFFFFU, 0x10000U, 0x10000U + 0x300, 4294967295U})
        EXPECT_EQ(KeyPositions::evdevCode(keyCode), std::nullopt) << keyCode;
}

} // namespace
} // namespace Tavrin
