#pragma once

#include <QDateTime>
#include <QString>

namespace Tavrin {

/// True if `text` has the placeholder for what is on the clipboard.
bool mentionsClipboard(const QString& text);

/// `text` with its placeholders filled in: {date}, {time}, {datetime}, {year}, {month}, {day} from `now`,
/// in Western digits and the Gregorian calendar whatever the user's locale, then {clipboard}. Braces
/// around anything else stay, and so do placeholders in what was on the clipboard.
QString resolveDynamicVariables(const QString& text, const QDateTime& now, const QString& clipboard);

} // namespace Tavrin
