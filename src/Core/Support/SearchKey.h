#pragma once

#include <QString>

namespace Tavrin {

/// What a text is compared by when it is searched: without case, and with accented letters in one
/// spelling. An input method may compose "ế" from parts, a file system may take it apart; the user sees
/// the same letter. Letters with different accents stay different. Any thread.
QString searchKey(const QString& text);

} // namespace Tavrin
