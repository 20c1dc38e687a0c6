#include "Platform/Linux/X11/KeySymbols.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbReply.h"
#include "Platform/Linux/X11/Xkb.h"

#include <algorithm>
#include <span>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tavrin {
namespace {

// Parts of KeySymbols::Key::groupInfo.
constexpr std::uint8_t groupCountBits = 0x0F, redirectBits = 0x30, outOfRangeBits = 0xC0;
constexpr int redirectShift = 4;

constexpr std::uint8_t highestGroup = 3;

/// The group that the key has where the keyboard is in `group`: not every key has all of them.
std::uint8_t groupOf(const KeySymbols::Key& key, std::uint8_t group)
{
    const std::uint8_t count = key.groupInfo & groupCountBits;
    if (group < count)
        return group;
    switch (key.groupInfo & outOfRangeBits) {
    case XCB_XKB_GROUPS_WRAP_CLAMP_INTO_RANGE:
        return count - 1;
    case XCB_XKB_GROUPS_WRAP_REDIRECT_INTO_RANGE: {
        const auto target = static_cast<std::uint8_t>((key.groupInfo & redirectBits) >> redirectShift);
        return target < count ? target : 0;
    }
    default:
        return group % count;
    }
}

void readSymbols(KeySymbols& result, const xcb_xkb_get_map_reply_t& reply, const xcb_xkb_get_map_map_t& parts)
{
    auto map = xcb_xkb_get_map_map_syms_rtrn_iterator(&reply, &parts);
    for (std::size_t keycode = reply.firstKeySym; map.rem && keycode < result.keys.size();
         xcb_xkb_key_sym_map_next(&map), ++keycode) {
        KeySymbols::Key& key = result.keys[keycode];
        key.groupInfo = map.data->groupInfo;
        key.width = map.data->width;
        key.first = result.symbols.size();
        std::ranges::copy(map.data->kt_index, key.types.begin());
        const xcb_keysym_t* const symbols = xcb_xkb_key_sym_map_syms(map.data);
        result.symbols.insert(
            result.symbols.end(), symbols, symbols + xcb_xkb_key_sym_map_syms_length(map.data));
    }
}

void readTypes(KeySymbols& result, const xcb_xkb_get_map_reply_t& reply, const xcb_xkb_get_map_map_t& parts)
{
    for (auto type = xcb_xkb_get_map_map_types_rtrn_iterator(&reply, &parts); type.rem;
         xcb_xkb_key_type_next(&type)) {
        KeySymbols::Type& read = result.types.emplace_back();
        read.mask = type.data->mods_mask;
        const std::span entries(xcb_xkb_key_type_map(type.data), type.data->nMapEntries);
        for (const xcb_xkb_kt_map_entry_t& entry : entries) {
            if (entry.active)
                read.entries.push_back({entry.mods_mask, entry.level});
        }
    }
}

} // namespace

xcb_keysym_t KeySymbols::symbol(xcb_keycode_t keycode, std::uint8_t group, std::uint8_t modifiers) const
{
    const Key& key = keys[keycode];
    if (!(key.groupInfo & groupCountBits) || !key.width)
        return XKB_KEY_NoSymbol;
    const std::uint8_t present = groupOf(key, group);
    std::size_t level = 0;
    if (const std::size_t type = key.types[present]; type < types.size()) {
        const auto entry
            = std::ranges::find(types[type].entries, modifiers & types[type].mask, &Type::Entry::modifiers);
        if (entry != types[type].entries.end() && entry->level < key.width)
            level = entry->level;
    }
    return symbols[key.first + std::size_t{present} * key.width + level];
}

std::vector<xcb_keycode_t> KeySymbols::keysFor(xcb_keysym_t wanted, std::uint8_t group) const
{
    std::vector<xcb_keycode_t> result;
    for (std::size_t keycode = 0; keycode < keys.size(); ++keycode) {
        if (symbol(static_cast<xcb_keycode_t>(keycode), group) == wanted)
            result.push_back(static_cast<xcb_keycode_t>(keycode));
    }
    return result;
}

std::optional<xcb_keycode_t> KeySymbols::keyFor(xcb_keysym_t wanted) const
{
    if (const auto found = keysFor(wanted, lockedGroup); !found.empty())
        return found.front();
    for (std::uint8_t group = 0; group <= highestGroup; ++group) {
        if (const auto found = keysFor(wanted, group); !found.empty())
            return found.front();
    }
    return std::nullopt;
}

KeySymbols queryKeySymbols(X11Connection& connection)
{
    KeySymbols result;
    if (!connection.hasXkb())
        return result;
    xcb_connection_t* const xcb = connection.xcb();
    const auto mapCookie = xcb_xkb_get_map(xcb, XCB_XKB_ID_USE_CORE_KBD,
        XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP, 0, 0, 0, 0, 0,
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto stateCookie = xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD);
    const XcbReply<xcb_xkb_get_map_reply_t> map(xcb_xkb_get_map_reply(xcb, mapCookie, nullptr));
    const XcbReply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(xcb, stateCookie, nullptr));
    connection.deliverQueuedEventsSoon();
    if (!map || !state)
        return result;

    xcb_xkb_get_map_map_t parts{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(map.get()), map->nTypes, map->nKeySyms, map->nKeyActions,
        map->totalActions, map->totalKeyBehaviors, map->virtualMods, map->totalKeyExplicit,
        map->totalModMapKeys, map->totalVModMapKeys, map->present, &parts);
    readTypes(result, *map, parts);
    readSymbols(result, *map, parts);
    for (auto entry = xcb_xkb_get_map_map_modmap_rtrn_iterator(map.get(), &parts); entry.rem;
         xcb_xkb_key_mod_map_next(&entry))
        result.keys[entry.data->keycode].modifiers = entry.data->mods;
    result.lockedGroup = std::min(state->lockedGroup, highestGroup);
    return result;
}

} // namespace Tavrin
