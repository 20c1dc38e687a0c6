#pragma once

#include "Core/Action/PasteCommand.h"
#include "Platform/Linux/X11/PasteChord.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11KeyInjector.h"

#include <QTimer>

namespace Tavrin {

class Pasteboard;
class PrimarySelection;
class X11HotKeyBackend;

/// What a paste is pressed with; everything outlives the command.
struct PasteServices {
    X11Connection& connection;
    X11KeyInjector& injector;
    /// Its own hotkeys must not catch the paste.
    X11HotKeyBackend& hotKeys;
    Pasteboard& pasteboard;
    PrimarySelection& primary;
};

/// Presses the chord that the focused program takes as paste, whatever the user still holds.
///
/// The keys are pressed on the real keyboards, each modifier on the one that holds it. So nothing has to
/// be undone later, by us or by anybody if we are killed: all strokes leave in one write, and what is down
/// after them is what the user holds, until the user lets go.
class X11PasteCommand : public QObject, public PasteCommand {
    Q_OBJECT

public:
    explicit X11PasteCommand(const PasteServices& services);
    ~X11PasteCommand() override;

    bool post() override;

private:
    void lendAndPress(const PasteKeys& keys, const KeySymbols& symbols);
    void press(const PasteKeys& keys, const KeySymbols& symbols);

    PasteServices m_services;
    QTimer m_giveBackTimer;
};

} // namespace Tavrin
