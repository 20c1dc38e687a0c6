#include "Platform/Linux/X11/X11PasteCommand.h"

#include "Core/Action/Pasteboard.h"
#include "Platform/Linux/X11/FocusedWindow.h"
#include "Platform/Linux/X11/HeldKeys.h"
#include "Platform/Linux/X11/PasteStrokes.h"
#include "Platform/Linux/X11/PrimarySelection.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"

#include <QPointer>
#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;
using Direction = X11KeyInjector::Direction;
using Stroke = X11KeyInjector::Stroke;

/// Until the program has surely read the selection; as long as the clipboard's text stays.
constexpr auto giveBackDelay = 800ms;

bool isHeld(const HeldKeys& held, xcb_keycode_t keycode)
{
    return std::ranges::find(held.keys, keycode, &HeldKeys::Key::keycode) != held.keys.end();
}

/// The same paste on XTEST's own keyboard. What is let go there is not pressed again: the user's release
/// on the real keyboard would not end it.
std::vector<Stroke> strokesOnXTest(const PasteKeys& keys, HeldKeys held, const KeySymbols& symbols)
{
    held.current = 0;
    for (HeldKeys::Key& key : held.keys)
        key.keyboard = 0;
    std::vector<Stroke> strokes = pasteStrokes(keys, held, symbols);
    std::erase_if(strokes, [&](const Stroke& stroke) {
        return stroke.direction == Direction::press && stroke.keycode != keys.target
            && isHeld(held, stroke.keycode);
    });
    return strokes;
}

} // namespace

X11PasteCommand::X11PasteCommand(const PasteServices& services)
    : m_services(services)
{
    m_giveBackTimer.setSingleShot(true);
    m_giveBackTimer.setInterval(giveBackDelay);
    connect(&m_giveBackTimer, &QTimer::timeout, this, [this] { m_services.primary.giveBack(); });
}

X11PasteCommand::~X11PasteCommand()
{
    if (m_giveBackTimer.isActive())
        m_services.primary.giveBack();
}

bool X11PasteCommand::post()
{
    if (!m_services.injector.isAvailable())
        return false;
    const KeySymbols symbols = queryKeySymbols(m_services.connection);
    const WindowClass focused = focusedWindowClass(m_services.connection);
    const auto keys = findPasteKeys(pasteChordOf(focused.instance, focused.name), symbols);
    if (!keys)
        return false;
    if (keys->chord == PasteChord::shiftInsert)
        lendAndPress(*keys, symbols);
    else
        press(*keys, symbols);
    return true;
}

void X11PasteCommand::lendAndPress(const PasteKeys& keys, const KeySymbols& symbols)
{
    // What some programs paste with Shift+Insert is the primary selection; others take the clipboard.
    m_services.pasteboard.read(Pasteboard::Detail::string,
        [self = QPointer(this), keys, symbols](const PasteboardContents& contents) {
            if (!self)
                return;
            if (!contents.string)
                return self->press(keys, symbols);
            // The text of an earlier paste is not what the user had there.
            if (self->m_giveBackTimer.isActive())
                self->m_services.primary.giveBack();
            self->m_giveBackTimer.start();
            self->m_services.primary.lend(*contents.string, [self, keys, symbols] {
                if (!self)
                    return;
                self->press(keys, symbols);
                self->m_giveBackTimer.start();
            });
        });
}

void X11PasteCommand::press(const PasteKeys& keys, const KeySymbols& symbols)
{
    KeyboardWatch keyboards;
    const HeldKeys& held = keyboards.held();
    X11KeyInjector& injector = m_services.injector;
    m_services.hotKeys.standAside(keys.target,
        (keys.usesControl() ? XCB_MOD_MASK_CONTROL : 0) | (keys.usesShift() ? XCB_MOD_MASK_SHIFT : 0));
    injector.inject(pasteStrokes(keys, held, symbols));
    m_services.hotKeys.resume();
    const std::vector<Stroke> refused = injector.refusedStrokes();

    std::vector<Stroke> further;
    if (std::ranges::find(refused, keys.target, &Stroke::keycode) != refused.end())
        further = strokesOnXTest(keys, held, symbols);
    for (const HeldKeys::Key& key : releasedMeanwhile(held.keys, keyboards.takeReports()))
        further.push_back({key.keycode, Direction::release, key.keyboard});
    if (further.empty())
        return;
    injector.inject(further);
    injector.refusedStrokes();
}

} // namespace Tavrin
