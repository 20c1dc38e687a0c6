#include "Platform/Linux/Tray/TrayMenuText.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace Tavrin::TrayMenuText {
namespace {

/// A longer tail is no shortcut but part of a name that happens to hold parentheses.
constexpr qsizetype longestTail = 32;

bool breaksLine(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator
        || character == QChar::ParagraphSeparator;
}

/// Where to cut `text` so that at most `length` units stay and no visible letter is torn apart.
qsizetype cut(QStringView text, qsizetype length)
{
    // A little more than what stays is enough to see whether a letter goes on across the cut.
    const QStringView beginning = text.first(std::min(text.size(), length + 2));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, beginning.data(), beginning.size());
    finder.setPosition(length);
    if (finder.isAtBoundary())
        return length;
    const qsizetype boundary = finder.toPreviousBoundary();
    if (boundary > 0)
        return boundary;
    // One endless heap of combining marks: cut it, only not within a surrogate pair.
    return text[length - 1].isHighSurrogate() ? length - 1 : length;
}

QStringView shortcutTail(QStringView text)
{
    const qsizetype start = text.endsWith(u')') ? text.lastIndexOf(u" (") : -1;
    const QStringView tail = start < 0 ? QStringView() : text.sliced(start);
    return tail.size() <= longestTail ? tail : QStringView();
}

} // namespace

QString singleLine(const QString& title)
{
    QString text;
    text.reserve(title.size());
    bool isInRun = false;
    for (const QChar character : title) {
        const bool breaks = breaksLine(character);
        if (!breaks || !isInRun)
            text += breaks ? QChar(u' ') : character;
        isInRun = breaks;
    }
    if (text.size() <= longestTitle)
        return text;
    const QStringView tail = shortcutTail(text);
    const QStringView name = QStringView(text).chopped(tail.size());
    return name.first(cut(name, longestTitle - tail.size() - 1)) + u'…' + tail;
}

QString forWidget(const QString& text)
{
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

QString forDBusMenu(const QString& text)
{
    // In the protocol "__" is an underscore, a single one marks the letter after it as the entry's key, and
    // an ampersand is just that. Qt makes the first ampersand of an action's text that marker (unless it is
    // the last character) and passes on everything else. Where there are ampersands, it is given one more
    // to take, before a letter: hosts built on Qt would otherwise take a marked ampersand for two markers.
    QString label = QString(text).replace(u'_', QStringLiteral("__"));
    const auto ampersand = std::find(label.cbegin(), label.cend(), u'&');
    if (ampersand == label.cend())
        return label;
    const auto marked = std::find_if(
        label.cbegin(), ampersand, [](QChar character) { return character.isLetterOrNumber(); });
    return label.insert(marked - label.cbegin(), u'&');
}

} // namespace Tavrin::TrayMenuText
