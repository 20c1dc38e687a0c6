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
    {"app.gift.fill", "gift-fill"},
    {"arrow.clockwise", "arrow-clockwise"},
    {"arrow.counterclockwise.circle", "arrow-counterclockwise"},
    {"arrow.down.circle.fill", "arrow-down-circle-fill"},
    {"arrow.triangle.2.circlepath", "arrow-repeat"},
    {"arrow.up.forward.app.fill", "box-arrow-up-right"},
    {"arrow.up.right.square", "box-arrow-up-right"},
    {"bolt.circle.fill", "lightning-charge-fill"},
    {"bolt.fill", "lightning-charge-fill"},
    {"bolt.horizontal.fill", "lightning-fill"},
    {"book.closed.fill", "book-fill"},
    {"book.fill", "book-fill"},
    {"book.pages.fill", "journal-richtext"},
    {"bubble.left.and.bubble.right.fill", "chat-dots-fill"},
    {"camera.viewfinder", "camera-fill"},
    {"checkmark", "check-lg"},
    {"checkmark.circle.fill", "check-circle-fill"},
    {"checkmark.seal.fill", "patch-check-fill"},
    {"chevron.left", "chevron-left"},
    {"chevron.right", "chevron-right"},
    {"chevron.up.chevron.down", "chevron-expand"},
    {"circle.righthalf.filled", "circle-half"},
    {"command.square.fill", "command"},
    {"cup.and.saucer.fill", "cup-hot-fill"},
    {"display", "display"},
    {"doc.on.clipboard.fill", "clipboard-fill"},
    {"doc.on.doc", "files"},
    {"exclamationmark.shield.fill", "shield-fill-exclamation"},
    {"exclamationmark.triangle.fill", "exclamation-triangle-fill"},
    {"eye.slash.fill", "eye-slash-fill"},
    {"folder", "folder"},
    {"gearshape.2.fill", "gear-fill"},
    {"gearshape.fill", "gear-fill"},
    {"globe", "globe"},
    {"heart.circle.fill", "heart-fill"},
    {"info.circle.fill", "info-circle-fill"},
    {"keyboard", "keyboard"},
    {"keyboard.fill", "keyboard-fill"},
    {"leaf.fill", "tree-fill"},
    {"lightbulb.fill", "lightbulb-fill"},
    {"lock.fill", "lock-fill"},
    {"lock.shield.fill", "shield-lock-fill"},
    {"macwindow.on.rectangle", "window-stack"},
    {"magnifyingglass", "search"},
    {"memorychip", "memory"},
    {"menubar.rectangle", "window"},
    {"moon.fill", "moon-fill"},
    {"network", "hdd-network"},
    {"note.text.badge.plus", "journal-plus"},
    {"paperplane.fill", "send-fill"},
    {"pause.circle.fill", "pause-circle-fill"},
    {"pencil", "pencil"},
    {"person.crop.circle.fill", "person-circle"},
    {"phone.circle.fill", "telephone-fill"},
    {"play.circle.fill", "play-circle-fill"},
    {"play.fill", "play-fill"},
    {"plus", "plus-lg"},
    {"plus.app.fill", "plus-square-fill"},
    {"plus.circle.fill", "plus-circle-fill"},
    {"questionmark.app.dashed", "question-square"},
    {"record.circle", "record-circle"},
    {"safari.fill", "compass-fill"},
    {"slider.horizontal.3", "sliders"},
    {"sparkles", "stars"},
    {"speaker.slash.fill", "volume-mute-fill"},
    {"speaker.wave.1.fill", "volume-down-fill"},
    {"speaker.wave.3.fill", "volume-up-fill"},
    {"square.grid.2x2.fill", "grid-fill"},
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
