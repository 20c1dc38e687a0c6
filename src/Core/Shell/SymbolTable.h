#pragma once

#include <QString>
#include <array>

namespace Tavrin {

struct SymbolPicture {
    const char* name;
    const char* picture;
};

/// The program's symbols and the pictures that stand for them, by their names in Bootstrap Icons; the
/// nearest one where there is no counterpart. The build reads the second column and embeds those pictures.
inline constexpr auto symbolTable = std::to_array<SymbolPicture>({
    {"app.badge.fill", "app-indicator"},
    {"arrow.clockwise", "arrow-clockwise"},
    {"arrow.counterclockwise.circle", "arrow-counterclockwise"},
    {"arrow.down.circle.fill", "arrow-down-circle-fill"},
    {"bolt.horizontal.fill", "lightning-fill"},
    {"book.closed.fill", "book-fill"},
    {"camera.viewfinder", "camera-fill"},
    {"checkmark", "check-lg"},
    {"chevron.up.chevron.down", "chevron-expand"},
    {"circle.righthalf.filled", "circle-half"},
    {"command.square.fill", "command"},
    {"cup.and.saucer.fill", "cup-hot-fill"},
    {"display", "display"},
    {"doc.on.clipboard.fill", "clipboard-fill"},
    {"exclamationmark.shield.fill", "shield-fill-exclamation"},
    {"exclamationmark.triangle.fill", "exclamation-triangle-fill"},
    {"eye.slash.fill", "eye-slash-fill"},
    {"folder", "folder"},
    {"gearshape.2.fill", "gear-fill"},
    {"keyboard", "keyboard"},
    {"lock.fill", "lock-fill"},
    {"macwindow.on.rectangle", "window-stack"},
    {"magnifyingglass", "search"},
    {"memorychip", "memory"},
    {"moon.fill", "moon-fill"},
    {"network", "hdd-network"},
    {"note.text.badge.plus", "journal-plus"},
    {"pause.circle.fill", "pause-circle-fill"},
    {"pencil", "pencil"},
    {"person.crop.circle.fill", "person-circle"},
    {"play.circle.fill", "play-circle-fill"},
    {"play.fill", "play-fill"},
    {"plus", "plus-lg"},
    {"plus.app.fill", "plus-square-fill"},
    {"questionmark.app.dashed", "question-square"},
    {"record.circle", "record-circle"},
    {"safari.fill", "compass-fill"},
    {"sparkles", "stars"},
    {"speaker.slash.fill", "volume-mute-fill"},
    {"speaker.wave.1.fill", "volume-down-fill"},
    {"speaker.wave.3.fill", "volume-up-fill"},
    {"square.stack.3d.up.fill", "stack"},
    {"terminal.fill", "terminal-fill"},
    {"trash", "trash3"},
    {"trash.fill", "trash3-fill"},
    {"xmark", "x-lg"},
    {"xmark.circle.fill", "x-circle-fill"},
});

/// The picture for a symbol, without folder and suffix; empty for a name that is not in the table.
QString symbolPicture(QStringView name);

} // namespace Tavrin
