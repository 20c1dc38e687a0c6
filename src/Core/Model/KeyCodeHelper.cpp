#include "Core/Model/KeyCodeHelper.h"

#include <algorithm>
#include <array>

namespace Tavrin {
namespace {

struct NamedKey {
    std::uint32_t keyCode;
    QStringView name;
};

// Virtual key codes of Carbon (HIToolbox, Events.h), by rising code. Keys that are not here have no
// name on purpose: keypad, Home, End, paging keys, Help, F13 and above, the modifiers.
constexpr std::array namedKeys{
    NamedKey{0, u"A"},
    NamedKey{1, u"S"},
    NamedKey{2, u"D"},
    NamedKey{3, u"F"},
    NamedKey{4, u"H"},
    NamedKey{5, u"G"},
    NamedKey{6, u"Z"},
    NamedKey{7, u"X"},
    NamedKey{8, u"C"},
    NamedKey{9, u"V"},
    NamedKey{11, u"B"},
    NamedKey{12, u"Q"},
    NamedKey{13, u"W"},
    NamedKey{14, u"E"},
    NamedKey{15, u"R"},
    NamedKey{16, u"Y"},
    NamedKey{17, u"T"},
    NamedKey{18, u"1"},
    NamedKey{19, u"2"},
    NamedKey{20, u"3"},
    NamedKey{21, u"4"},
    NamedKey{22, u"6"},
    NamedKey{23, u"5"},
    NamedKey{24, u"="},
    NamedKey{25, u"9"},
    NamedKey{26, u"7"},
    NamedKey{27, u"-"},
    NamedKey{28, u"8"},
    NamedKey{29, u"0"},
    NamedKey{30, u"]"},
    NamedKey{31, u"O"},
    NamedKey{32, u"U"},
    NamedKey{33, u"["},
    NamedKey{34, u"I"},
    NamedKey{35, u"P"},
    NamedKey{36, u"⏎"},
    NamedKey{37, u"L"},
    NamedKey{38, u"J"},
    NamedKey{39, u"'"},
    NamedKey{40, u"K"},
    NamedKey{41, u";"},
    NamedKey{42, u"\\"},
    NamedKey{43, u","},
    NamedKey{44, u"/"},
    NamedKey{45, u"N"},
    NamedKey{46, u"M"},
    NamedKey{47, u"."},
    NamedKey{48, u"⇥"},
    NamedKey{49, u"Space"},
    NamedKey{50, u"`"},
    NamedKey{51, u"⌫"},
    NamedKey{53, u"⎋"},
    NamedKey{96, u"F5"},
    NamedKey{97, u"F6"},
    NamedKey{98, u"F7"},
    NamedKey{99, u"F3"},
    NamedKey{100, u"F8"},
    NamedKey{101, u"F9"},
    NamedKey{103, u"F11"},
    NamedKey{109, u"F10"},
    NamedKey{111, u"F12"},
    NamedKey{117, u"⌦"},
    NamedKey{118, u"F4"},
    NamedKey{120, u"F2"},
    NamedKey{122, u"F1"},
    NamedKey{123, u"←"},
    NamedKey{124, u"→"},
    NamedKey{125, u"↓"},
    NamedKey{126, u"↑"},
};
static_assert(namedKeys.size() == 69);
static_assert(std::ranges::is_sorted(namedKeys, {}, &NamedKey::keyCode));

struct Modifier {
    std::uint32_t mask;
    std::uint64_t eventFlag;
    QStringView symbol;
    QStringView name;
};

// In display order.
constexpr std::array modifiersInOrder{
    Modifier{controlKey, controlEventFlag, u"⌃", u"⌃ Control"},
    Modifier{optionKey, optionEventFlag, u"⌥", u"⌥ Option"},
    Modifier{shiftKey, shiftEventFlag, u"⇧", u"⇧ Shift"},
    Modifier{cmdKey, commandEventFlag, u"⌘", u"⌘ Command"},
};

QStringList texts(std::uint32_t modifiers, QStringView Modifier::*text)
{
    QStringList result;
    for (const Modifier& modifier : modifiersInOrder) {
        if (modifiers & modifier.mask)
            result.append((modifier.*text).toString());
    }
    return result;
}

} // namespace

QString KeyCodeHelper::string(std::uint32_t keyCode)
{
    const auto found = std::ranges::lower_bound(namedKeys, keyCode, {}, &NamedKey::keyCode);
    if (found != namedKeys.end() && found->keyCode == keyCode)
        return found->name.toString();
    return QStringLiteral("Key(%1)").arg(keyCode);
}

QStringList KeyCodeHelper::modifierSymbols(std::uint32_t modifiers)
{
    return texts(modifiers, &Modifier::symbol);
}

QStringList KeyCodeHelper::modifierNames(std::uint32_t modifiers)
{
    return texts(modifiers, &Modifier::name);
}

QString KeyCodeHelper::combinationText(std::uint32_t keyCode, std::uint32_t modifiers)
{
    QStringList parts = modifierSymbols(modifiers);
    parts.append(string(keyCode));
    return parts.join(u' ');
}

std::uint32_t KeyCodeHelper::carbonModifiers(std::uint64_t eventFlags)
{
    std::uint32_t mask = 0;
    for (const Modifier& modifier : modifiersInOrder) {
        if (eventFlags & modifier.eventFlag)
            mask |= modifier.mask;
    }
    return mask;
}

} // namespace Tavrin
