// register_hotkeys COUNT REPEATS: one line a round: nanoseconds to register COUNT combinations as one batch.
// register_hotkeys --singly COUNT REPEATS: the same, one by one.
#include "Clock.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Linux/KeyPositions.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "Platform/Linux/X11/XcbReply.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace Tavrin;
using namespace Tavrin::Bench;

namespace {

/// Key codes that a PC keyboard has, by their evdev numbers, with every mask of the four modifiers.
std::vector<HotKeyCombination> allCombinations()
{
    constexpr std::uint32_t firstKey = 1;
    constexpr std::uint32_t lastKey = 127;
    constexpr std::uint32_t modifiers[] = {shiftKey, controlKey, optionKey, cmdKey};
    std::vector<HotKeyCombination> combinations;
    for (std::uint32_t choice = 1; choice < 16; ++choice) {
        std::uint32_t mask = 0;
        for (std::uint32_t bit = 0; bit < 4; ++bit)
            mask |= choice >> bit & 1 ? modifiers[bit] : 0;
        for (std::uint32_t key = firstKey; key <= lastKey; ++key)
            combinations.push_back({KeyPositions::firstForeignKeyCode + key, mask});
    }
    return combinations;
}

bool isRegistered(const HotKeyRegistration& result)
{
    return result.state == HotKeyRegistration::State::registered;
}

std::vector<EventHotKeyRef> refsOf(const std::vector<HotKeyRegistration>& results)
{
    std::vector<EventHotKeyRef> refs;
    for (const HotKeyRegistration& result : results)
        refs.push_back(result.ref);
    return refs;
}

/// Frees them and waits for the server, which takes its time: the next round must not pay for it.
void unregister(
    X11Connection& connection, X11HotKeyBackend& backend, const std::vector<HotKeyRegistration>& results)
{
    backend.unregisterHotKeys(refsOf(results));
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.xcb(), xcb_get_input_focus(connection.xcb()), nullptr));
}

/// The first `count` that this server's keyboard can do.
std::vector<HotKeyCombination> possibleCombinations(
    X11Connection& connection, X11HotKeyBackend& backend, std::size_t count)
{
    const auto candidates = allCombinations();
    const auto results = backend.registerHotKeys(candidates);
    unregister(connection, backend, results);
    std::vector<HotKeyCombination> possible;
    for (std::size_t index = 0; index < candidates.size() && possible.size() < count; ++index) {
        if (isRegistered(results[index]))
            possible.push_back(candidates[index]);
    }
    return possible;
}

/// All that belongs together is in one call, or each in a call of its own.
std::vector<HotKeyRegistration> registerAll(
    X11HotKeyBackend& backend, const std::vector<HotKeyCombination>& combinations, bool singly)
{
    if (!singly)
        return backend.registerHotKeys(combinations);
    std::vector<HotKeyRegistration> results;
    for (const HotKeyCombination& combination : combinations)
        results.push_back(backend.registerHotKeys({&combination, 1}).front());
    return results;
}

int measure(std::size_t count, int repeats, bool singly)
{
    const auto connection = X11Connection::open();
    if (!connection)
        return EXIT_FAILURE;
    X11KeyInjector injector(*connection);
    X11HotKeyBackend backend(*connection, injector);
    const auto combinations = possibleCombinations(*connection, backend, count);
    if (combinations.size() < count)
        return EXIT_FAILURE;
    for (int turn = 0; turn < repeats; ++turn) {
        const Nanoseconds start = now();
        const auto results = registerAll(backend, combinations, singly);
        const Nanoseconds end = now();
        if (!std::ranges::all_of(results, isRegistered))
            return EXIT_FAILURE;
        std::printf("%lld\n", end - start);
        unregister(*connection, backend, results);
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool singly = argc > 1 && std::strcmp(argv[1], "--singly") == 0;
    if (argc != (singly ? 4 : 3))
        return EXIT_FAILURE;
    return measure(static_cast<std::size_t>(std::atoi(argv[argc - 2])), std::atoi(argv[argc - 1]), singly);
}
