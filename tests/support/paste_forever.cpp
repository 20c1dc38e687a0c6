// Pastes and pastes until it is killed, as the program would with one hotkey registered.
#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/X11/PrimarySelection.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "Platform/Linux/X11/X11PasteCommand.h"

#include <QCoreApplication>

using namespace Tavrin;

namespace {

/// None of these pastes needs it.
class NoSelection : public PrimarySelection {
public:
    void lend(const QString& /*text*/, std::function<void()> /*ready*/) override { }
    void giveBack() override { }
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto connection = X11Connection::open();
    if (!connection)
        return EXIT_FAILURE;
    X11KeyInjector injector(*connection);
    X11HotKeyBackend hotKeys(*connection, injector);
    // With a hotkey the server reports keys to us: the paste must not be cut off by that.
    constexpr std::uint32_t f5Key = 96;
    const HotKeyCombination combination{f5Key, cmdKey};
    hotKeys.registerHotKeys({&combination, 1});
    FakePasteboard pasteboard;
    NoSelection primary;
    X11PasteCommand command({*connection, injector, hotKeys, pasteboard, primary});
    while (command.post()) { }
    return EXIT_FAILURE;
}
