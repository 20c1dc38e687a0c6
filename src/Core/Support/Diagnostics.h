#pragma once

#include <QString>

namespace Tavrin::Diagnostics {

/// Prints one line to standard output at once. Line breaks and control characters inside the text
/// become spaces, so that one diagnostic is always one line. A reader that has stopped reading costs
/// the line, never the program's time. May be called on any thread.
void printLine(const QString& text);

/// `text` as one line: line breaks and control characters replaced by spaces.
QString singleLine(const QString& text);

} // namespace Tavrin::Diagnostics
