#include "Platform/Linux/X11/PasteStrokes.h"

#include <array>
#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tavrin {
namespace {

constexpr xcb_keycode_t controlLeft = 37, controlRight = 105, shiftLeft = 50, shiftRight = 62, altLeft = 64,
                        altRight = 108, superLeft = 133, capsLock = 66, k = 45, v = 55, insert = 118;
constexpr std::uint8_t shiftBit = 1, lockBit = 2, controlBit = 4, altBit = 8, superBit = 64;
constexpr KeyboardId desk = 7, lap = 9;

/// A keyboard with the keys that matter here. `groups` groups, of two levels each.
class Board {
public:
    explicit Board(std::uint8_t groups = 1)
        : m_groups(groups)
    {
        symbols.types.push_back({});
        key(controlLeft, XKB_KEY_Control_L, controlBit);
        key(controlRight, XKB_KEY_Control_R, controlBit);
        key(shiftLeft, XKB_KEY_Shift_L, shiftBit);
        key(shiftRight, XKB_KEY_Shift_R, shiftBit);
        key(altLeft, XKB_KEY_Alt_L, altBit);
        // The third level's modifier sets a bit by way of a virtual one, which the key's own bits do not
        // show.
        key(altRight, XKB_KEY_ISO_Level3_Shift, 0);
        key(superLeft, XKB_KEY_Super_L, superBit);
        key(capsLock, XKB_KEY_Caps_Lock, lockBit);
        key(k, XKB_KEY_k, 0);
        key(v, XKB_KEY_v, 0);
        key(insert, XKB_KEY_Insert, 0);
    }

    Board& key(xcb_keycode_t code, xcb_keysym_t symbol, std::uint8_t modifiers)
    {
        symbols.keys[code] = {m_groups, 2, symbols.symbols.size(), {}, modifiers};
        for (int group = 0; group < m_groups; ++group)
            symbols.symbols.insert(symbols.symbols.end(), {symbol, XKB_KEY_NoSymbol});
        return *this;
    }
    /// The key switches the layout when it goes down while `modifier` is on.
    Board& switchWith(xcb_keycode_t code, std::uint8_t modifier)
    {
        symbols.keys[code].types.fill(static_cast<std::uint8_t>(symbols.types.size()));
        symbols.types.push_back({modifier, {{modifier, 1}}});
        return symbol(code, 0, 1, XKB_KEY_ISO_Next_Group);
    }
    Board& symbol(xcb_keycode_t code, std::size_t group, std::size_t level, xcb_keysym_t symbol)
    {
        symbols.symbols[symbols.keys[code].first + group * 2 + level] = symbol;
        return *this;
    }

    KeySymbols symbols;

private:
    std::uint8_t m_groups;
};

/// As "-45 +37@9": presses and releases, with the keyboard where it is not `desk`.
std::string text(const std::vector<X11KeyInjector::Stroke>& strokes)
{
    std::string result;
    for (const auto& stroke : strokes) {
        result += result.empty() ? "" : " ";
        result += stroke.direction == X11KeyInjector::Direction::press ? '+' : '-';
        result += std::to_string(stroke.keycode);
        if (stroke.keyboard != desk)
            result += '@' + std::to_string(stroke.keyboard);
    }
    return result;
}

std::string paste(
    PasteChord chord, std::vector<HeldKeys::Key> keys, int modifiers, const Board& board = Board())
{
    const HeldKeys held{std::move(keys), static_cast<std::uint8_t>(modifiers), desk};
    return text(pasteStrokes(*findPasteKeys(chord, board.symbols), held, board.symbols));
}

constexpr auto controlV = PasteChord::controlV, controlShiftV = PasteChord::controlShiftV,
               shiftInsert = PasteChord::shiftInsert;

TEST(PasteStrokes, AreTheChordAloneWhenNothingIsHeld)
{
    EXPECT_EQ(paste(controlV, {}, 0), "+37 +55 -55 -37");
    EXPECT_EQ(paste(controlShiftV, {}, 0), "+37 +50 +55 -55 -50 -37");
    EXPECT_EQ(paste(shiftInsert, {}, 0), "+50 +118 -118 -50");
}

TEST(PasteStrokes, KeepControlDownAroundWhatIsLetGo)
{
    EXPECT_EQ(paste(controlV, {{k, desk}, {superLeft, desk}}, superBit), "-45 +37 -133 +55 -55 +133 -37");
    EXPECT_EQ(paste(controlV, {{k, desk}, {altLeft, desk}, {shiftLeft, desk}}, altBit | shiftBit),
        "-45 +37 -50 -64 +55 -55 +64 +50 -37");
    EXPECT_EQ(paste(controlV, {{k, desk}, {altRight, desk}}, 128), "-45 +37 -108 +55 -55 +108 -37");
    EXPECT_EQ(
        paste(controlShiftV, {{k, desk}, {altLeft, desk}}, altBit), "-45 +37 -64 +50 +55 -55 -50 +64 -37");
    EXPECT_EQ(paste(shiftInsert, {{k, desk}, {altLeft, desk}}, altBit),
        "-45 +37 -64 -37 +50 +118 -118 -50 +37 +64 -37");
}

TEST(PasteStrokes, UseTheModifiersThatAreHeldAnyway)
{
    EXPECT_EQ(paste(controlV, {{controlLeft, desk}, {k, desk}}, controlBit), "-45 +55 -55");
    EXPECT_EQ(paste(controlV, {{controlLeft, desk}, {superLeft, desk}, {k, desk}}, controlBit | superBit),
        "-45 -133 +55 -55 +133");
    EXPECT_EQ(
        paste(controlShiftV, {{controlLeft, desk}, {shiftLeft, desk}, {k, desk}}, controlBit | shiftBit),
        "-45 +55 -55");
    EXPECT_EQ(paste(controlV, {{controlLeft, desk}, {shiftLeft, desk}, {k, desk}}, controlBit | shiftBit),
        "-45 -50 +55 -55 +50");
    EXPECT_EQ(paste(shiftInsert, {{shiftLeft, desk}, {k, desk}}, shiftBit), "-45 +118 -118");
    EXPECT_EQ(
        paste(shiftInsert, {{controlLeft, desk}, {k, desk}}, controlBit), "-45 -37 +50 +118 -118 -50 +37");
}

TEST(PasteStrokes, LetGoOfThePastesOwnKey)
{
    EXPECT_EQ(paste(controlV, {{controlLeft, desk}, {v, desk}}, controlBit), "-55 +55 -55");
    EXPECT_EQ(paste(shiftInsert, {{shiftLeft, desk}, {insert, desk}}, shiftBit), "-118 +118 -118");
}

TEST(PasteStrokes, StayOnTheKeyboardThatHoldsTheKey)
{
    EXPECT_EQ(paste(controlV, {{superLeft, lap}, {k, desk}}, superBit), "-45 +37 -133@9 +55 -55 +133@9 -37");
    EXPECT_EQ(paste(controlV, {{superLeft, lap}, {superLeft, desk}}, superBit),
        "+37 -133@9 -133 +55 -55 +133@9 +133 -37");
}

TEST(PasteStrokes, LeaveLocksAndSwitchesAlone)
{
    EXPECT_EQ(paste(controlV, {{capsLock, desk}}, lockBit), "+37 +55 -55 -37");
    Board board;
    board.key(altRight, XKB_KEY_ISO_Next_Group, 0);
    EXPECT_EQ(paste(controlV, {{altRight, desk}}, 0, board), "+37 +55 -55 -37");
    // Shift came down after Alt and switched the layout instead of being Shift.
    EXPECT_EQ(paste(controlV, {{altLeft, desk}, {shiftLeft, desk}}, altBit), "+37 -64 +55 -55 +64 -37");
}

TEST(PasteStrokes, NeverCombineKeysThatSwitchTheLayoutTogether)
{
    Board shifts;
    shifts.switchWith(controlLeft, shiftBit).switchWith(shiftLeft, controlBit);
    EXPECT_EQ(paste(controlV, {{shiftLeft, desk}, {k, desk}}, shiftBit, shifts),
        "-45 -50 +37 +55 -55 -37 +50 +62 -62");
    EXPECT_EQ(paste(controlV, {{altLeft, desk}, {k, desk}}, altBit, shifts), "-45 +37 -64 +55 -55 +64 -37");
    EXPECT_EQ(paste(controlShiftV, {}, 0, shifts), "+50 +118 -118 -50");
    EXPECT_EQ(paste(shiftInsert, {{controlLeft, desk}, {k, desk}}, controlBit, shifts),
        "-45 -37 +50 +118 -118 -50 +37");

    Board alts;
    alts.switchWith(controlLeft, altBit).switchWith(altLeft, controlBit);
    EXPECT_EQ(paste(controlV, {{altLeft, desk}, {superLeft, desk}, {k, desk}}, altBit | superBit, alts),
        "-45 -64 +37 -133 +55 -55 +133 -37 +64 +50 -50");
    EXPECT_EQ(paste(controlShiftV, {}, 0, alts), "+37 +50 +55 -55 -50 -37");

    // One of the two is enough; and Shift is not tapped where it would switch.
    Board one;
    one.switchWith(altLeft, controlBit).switchWith(shiftLeft, altBit);
    EXPECT_EQ(paste(controlV, {{altLeft, desk}, {k, desk}}, altBit, one), "-45 -64 +37 +55 -55 -37 +64");

    // Alt and Shift together switch: Control combines with both, and the keys that are held are one of them.
    Board altShift;
    altShift.switchWith(altLeft, shiftBit).switchWith(shiftLeft, altBit);
    EXPECT_EQ(paste(controlV, {{altLeft, desk}, {k, desk}}, altBit, altShift), "-45 +37 -64 +55 -55 +64 -37");
    EXPECT_EQ(paste(controlShiftV, {{altLeft, desk}, {k, desk}}, altBit, altShift),
        "-45 +37 -64 +50 +55 -55 -50 +64 -37");
}

TEST(PasteStrokes, PressAnotherControlWhereOneIsDownWithoutEffect)
{
    EXPECT_EQ(paste(controlV, {{controlLeft, desk}}, 0), "+105 +55 -55 -105");
}

TEST(HeldKeysOfTheUser, AreLetGoAgainIfTheUserWasQuicker)
{
    constexpr HeldKeys::Key super{superLeft, desk}, alt{altLeft, desk}, otherAlt{altLeft, lap},
        letter{k, desk};
    const auto released = [&](const std::vector<KeyReport>& reports) {
        return releasedMeanwhile(std::array{super, alt, otherAlt, letter}, reports);
    };
    using testing::ElementsAre, testing::IsEmpty;
    EXPECT_THAT(released({}), IsEmpty());
    EXPECT_THAT(released({{letter, false}, {super, false}, {super, true}}), IsEmpty());
    // The user's release comes before ours, or after it.
    EXPECT_THAT(released({{super, false}, {super, false}, {super, true}}), ElementsAre(super));
    EXPECT_THAT(released({{letter, false}, {letter, false}, {alt, false}, {otherAlt, false}, {alt, false},
                    {otherAlt, true}, {alt, true}}),
        ElementsAre(alt));
    // It comes when the key is down again: the server has dealt with it.
    EXPECT_THAT(released({{super, false}, {super, true}, {super, false}}), IsEmpty());
}

std::optional<std::pair<PasteChord, int>> found(PasteChord wanted, const Board& board)
{
    const auto keys = findPasteKeys(wanted, board.symbols);
    if (!keys)
        return std::nullopt;
    return std::pair(keys->chord, int{keys->target});
}

TEST(PasteChords, FindTheirKeyInTheLayoutThatIsOn)
{
    EXPECT_EQ(found(controlV, Board()), std::pair(controlV, int{v}));
    EXPECT_EQ(found(controlShiftV, Board()), std::pair(controlShiftV, int{v}));
    EXPECT_EQ(found(shiftInsert, Board()), std::pair(shiftInsert, int{insert}));

    // Two layouts: v lies elsewhere in the second one.
    Board moved(2);
    moved.symbol(v, 1, 0, XKB_KEY_k).symbol(k, 1, 0, XKB_KEY_v);
    EXPECT_EQ(found(controlV, moved), std::pair(controlV, int{v}));
    moved.symbols.lockedGroup = 1;
    EXPECT_EQ(found(controlV, moved), std::pair(controlV, int{k}));
}

TEST(PasteChords, FindTheirKeyInAnotherLayoutElseTakeInsert)
{
    Board cyrillic(2);
    cyrillic.symbol(v, 1, 0, XKB_KEY_Cyrillic_em);
    cyrillic.symbols.lockedGroup = 1;
    EXPECT_EQ(found(controlV, cyrillic), std::pair(controlV, int{v}));
    cyrillic.symbol(v, 0, 0, XKB_KEY_Cyrillic_em);
    EXPECT_EQ(found(controlV, cyrillic), std::pair(shiftInsert, int{insert}));
    EXPECT_EQ(found(controlShiftV, cyrillic), std::pair(shiftInsert, int{insert}));
    cyrillic.key(insert, XKB_KEY_F1, 0);
    EXPECT_EQ(found(controlV, cyrillic), std::nullopt);
}

TEST(PasteChords, AreNotThereWithoutModifiers)
{
    Board board;
    board.key(shiftLeft, XKB_KEY_a, 0).key(shiftRight, XKB_KEY_b, 0);
    EXPECT_EQ(found(controlV, board), std::nullopt);
    EXPECT_EQ(found(controlV, Board(0)), std::nullopt);
    EXPECT_EQ(findPasteKeys(controlV, KeySymbols()).has_value(), false);
    // A key that is named Control and sets another modifier is none.
    Board odd;
    odd.key(controlLeft, XKB_KEY_Control_L, lockBit);
    EXPECT_EQ(findPasteKeys(controlV, odd.symbols)->controls, std::vector<xcb_keycode_t>{controlRight});
}

TEST(PasteChords, FollowTheProgram)
{
    const auto chord = [](const char* instance, const char* name) {
        return pasteChordOf(QString::fromLatin1(instance), QString::fromLatin1(name));
    };
    EXPECT_EQ(chord("gedit", "Gedit"), controlV);
    EXPECT_EQ(chord("", ""), controlV);
    EXPECT_EQ(chord("Navigator", "firefox"), controlV);
    EXPECT_EQ(chord("gnome-terminal-server", "Gnome-terminal"), controlShiftV);
    EXPECT_EQ(chord("xfce4-terminal", "Xfce4-terminal"), controlShiftV);
    EXPECT_EQ(chord("Alacritty", "Alacritty"), controlShiftV);
    EXPECT_EQ(chord("konsole", "konsole"), controlShiftV);
    EXPECT_EQ(chord("xterm", "XTerm"), shiftInsert);
    EXPECT_EQ(chord("editor", "XTerm"), shiftInsert);
    EXPECT_EQ(chord("urxvt", "URxvt"), shiftInsert);
    EXPECT_EQ(chord("st-256color", "st-256color"), shiftInsert);
}

TEST(KeySymbolTables, FollowTheProtocolBeyondAKeysGroups)
{
    KeySymbols symbols;
    symbols.symbols = {XKB_KEY_a, XKB_KEY_A, XKB_KEY_b, XKB_KEY_B};
    constexpr std::uint8_t clamp = 0x40, redirectToSecond = 0x80 | 0x10, redirectBeyond = 0x80 | 0x30;
    const std::pair<std::uint8_t, xcb_keysym_t> rules[]
        = {{0, XKB_KEY_a}, {clamp, XKB_KEY_b}, {redirectToSecond, XKB_KEY_b}, {redirectBeyond, XKB_KEY_a}};
    for (const auto& [rule, expected] : rules) {
        symbols.keys[k] = {static_cast<std::uint8_t>(2 | rule), 2, 0, {}, 0};
        EXPECT_EQ(symbols.symbol(k, 1), xcb_keysym_t{XKB_KEY_b});
        EXPECT_EQ(symbols.symbol(k, 2), expected) << int{rule};
    }
    EXPECT_EQ(symbols.symbol(v, 0), xcb_keysym_t{XKB_KEY_NoSymbol});
}

TEST(KeySymbolTables, ChooseTheLevelByTheTypeOfTheGroup)
{
    KeySymbols symbols;
    symbols.symbols = {XKB_KEY_a, XKB_KEY_A, XKB_KEY_b, XKB_KEY_B};
    symbols.types = {{}, {shiftBit | lockBit, {{shiftBit, 1}, {lockBit, 1}}}, {altBit, {{altBit, 7}}}};
    symbols.keys[k] = {2, 2, 0, {1, 2}, 0};
    EXPECT_EQ(symbols.symbol(k, 0), xcb_keysym_t{XKB_KEY_a});
    EXPECT_EQ(symbols.symbol(k, 0, shiftBit), xcb_keysym_t{XKB_KEY_A});
    EXPECT_EQ(symbols.symbol(k, 0, shiftBit | controlBit), xcb_keysym_t{XKB_KEY_A});
    EXPECT_EQ(symbols.symbol(k, 0, shiftBit | lockBit), xcb_keysym_t{XKB_KEY_a});
    EXPECT_EQ(symbols.symbol(k, 1, shiftBit), xcb_keysym_t{XKB_KEY_b});
    EXPECT_EQ(symbols.symbol(k, 1, altBit), xcb_keysym_t{XKB_KEY_b}) << "a level that the key lacks";
}

} // namespace
} // namespace Tavrin
