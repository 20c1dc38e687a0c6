#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>

namespace Tavrin {

/// Modifier bits of a stored combination: Carbon's hotkey masks (Carbon/HIToolbox, Events.h).
enum CarbonModifier : std::uint32_t {
    cmdKey = 0x0100,
    shiftKey = 0x0200,
    optionKey = 0x0800,
    controlKey = 0x1000,
};

/// The bits that a stored combination has.
inline constexpr std::uint32_t carbonModifierMask = cmdKey | shiftKey | optionKey | controlKey;

/// Flags of a keyboard event that become modifier bits (NSEvent.ModifierFlags).
enum KeyEventFlag : std::uint64_t {
    shiftEventFlag = 1U << 17,
    controlEventFlag = 1U << 18,
    optionEventFlag = 1U << 19,
    commandEventFlag = 1U << 20,
};

/// Names of keys and modifiers. Stateless; every function is total and may run on any thread.
class KeyCodeHelper {
public:
    /// Display name of a virtual key code (a key's position on the US ANSI board); "Key(n)" where
    /// the key has no name of its own.
    static QString string(std::uint32_t keyCode);

    /// The symbols of the mask in display order (⌃ ⌥ ⇧ ⌘); bits without a symbol are ignored.
    static QStringList modifierSymbols(std::uint32_t modifiers);

    /// The same with the modifiers' names: "⌃ Control".
    static QStringList modifierNames(std::uint32_t modifiers);

    /// Symbols and key name, joined by single spaces: "⌃ ⌥ K".
    static QString combinationText(std::uint32_t keyCode, std::uint32_t modifiers);

    /// The four modifier flags of a keyboard event as a Carbon mask; all other flags are dropped.
    static std::uint32_t carbonModifiers(std::uint64_t eventFlags);
};

} // namespace Tavrin
