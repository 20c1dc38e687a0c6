#pragma once

#include <QColor>

namespace Tavrin {

/// The colours of one look by what they are for. Every text keeps a contrast of 4.5 to 1 on the grounds
/// that it is used on.
struct Palette {
    /// Grounds: the window, its header and footer, what lies on it, what is typed into.
    QColor window;
    QColor bar;
    QColor card;
    QColor field;
    /// A ground that sinks in (tabs), what is raised on it, and small grounds of badges and keys.
    QColor well;
    QColor raised;
    QColor badge;
    /// What the pointer is on, and what is selected by it.
    QColor hover;
    QColor hoverBorder;
    QColor pressed;

    QColor text;
    QColor secondaryText;
    QColor placeholderText;
    QColor separator;
    QColor border;
    QColor fieldBorder;

    /// Grounds that carry white text, and the same meaning as text.
    QColor accent;
    QColor accentPressed;
    QColor accentText;
    QColor destructive;
    QColor onAccent;
    QColor selection;

    QColor green;
    /// As symbols, which may be brighter than text.
    QColor greenSymbol;
    QColor orangeSymbol;
    QColor cyan;
    QColor yellow;
    QColor orange;
    QColor red;

    /// A switch that is off, and the knob of any switch.
    QColor switchOff;
    QColor knob;

    /// What the action types are told apart by.
    QColor applicationType;
    QColor addressType;
    QColor textType;
    QColor scriptType;
    QColor systemType;

    /// Laid over what a sheet covers, and the sheet itself.
    QColor dim;
    QColor sheet;
    QColor tip;
    QColor tipText;
};

const Palette& lightPalette();
const Palette& darkPalette();

/// Contrast of two opaque colours, 1 to 21, as the Web Content Accessibility Guidelines 2.1 define it.
double contrastRatio(const QColor& first, const QColor& second);

/// What is seen of `color` at `opacity` (0 to 1) on an opaque ground.
QColor blended(const QColor& color, double opacity, const QColor& ground);

} // namespace Tavrin
