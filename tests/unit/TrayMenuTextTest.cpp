#include "Platform/Linux/Tray/TrayMenuText.h"

#include <gtest/gtest.h>

#include <QTextBoundaryFinder>

namespace Tavrin {
namespace {

using namespace TrayMenuText;

const QString tail = QStringLiteral(" (⌃ ⌥ ⇧ ⌘ M)");

struct TextCase {
    QString given;
    QString wanted;
};

class SingleLine : public testing::TestWithParam<TextCase> { };

TEST_P(SingleLine, IsWhatTheMenuShows)
{
    EXPECT_EQ(singleLine(GetParam().given).toStdString(), GetParam().wanted.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Table, SingleLine,
    testing::Values(TextCase{QStringLiteral("Terminal (⌘ M)"), QStringLiteral("Terminal (⌘ M)")},
        TextCase{QString(), QString()}, TextCase{QStringLiteral(" (F5)"), QStringLiteral(" (F5)")},
        TextCase{QStringLiteral("A\tB (F5)"), QStringLiteral("A B (F5)")},
        TextCase{QStringLiteral("A\r\nB\nC"), QStringLiteral("A B C")},
        TextCase{QStringLiteral("A\u2028B\u2029C\u0085D\u0007E"), QStringLiteral("A B C D E")},
        TextCase{QStringLiteral("two  spaces\n stay"), QStringLiteral("two  spaces  stay")},
        TextCase{QString(QChar(u'\0')) + QStringLiteral("x"), QStringLiteral(" x")},
        TextCase{QString(80, u'a'), QString(80, u'a')}, TextCase{QString(81, u'a'), QString(79, u'a') + u'…'},
        TextCase{QString(10000, u'a') + tail, QString(79 - tail.size(), u'a') + u'…' + tail},
        TextCase{QString(10000, u'\n') + tail, u' ' + tail},
        // Parentheses that far apart are part of the name.
        TextCase{u"a (" + QString(200, u'b') + u')', u"a (" + QString(76, u'b') + u'…'},
        // The last pair of parentheses is the shortcut's.
        TextCase{QString(100, u'a') + u" (b) (F5)", QString(74, u'a') + u"… (F5)"}));

TEST(LongTitle, IsNotCutWithinASurrogatePair)
{
    const QString text = singleLine(u'x' + QString::fromUtf8("🚀").repeated(5000));
    EXPECT_EQ(text, u'x' + QString::fromUtf8("🚀").repeated(39) + u'…');
    EXPECT_TRUE(text.isValidUtf16());
}

TEST(LongTitle, IsNotCutWithinALetter)
{
    // Each letter is e, circumflex, acute: three units that are shown as one.
    const QString text = singleLine(QStringLiteral("e\u0302\u0301").repeated(100));
    EXPECT_EQ(text, QStringLiteral("e\u0302\u0301").repeated(26) + u'…');
}

TEST(LongTitle, OfCombiningMarksOnlyIsStillCut)
{
    EXPECT_EQ(singleLine(QString(10000, QChar(0x0301))).size(), longestTitle);
    // Variation selectors beyond the basic plane: combining, two units each.
    const QString pairs = singleLine(QString::fromUcs4(U"\U000E0100", 1).repeated(5000));
    EXPECT_LE(pairs.size(), longestTitle);
    EXPECT_TRUE(pairs.isValidUtf16());
}

class WidgetText : public testing::TestWithParam<TextCase> { };

TEST_P(WidgetText, DoublesAmpersands)
{
    EXPECT_EQ(forWidget(GetParam().given).toStdString(), GetParam().wanted.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Table, WidgetText,
    testing::Values(TextCase{QStringLiteral("A & B_c"), QStringLiteral("A && B_c")},
        TextCase{QStringLiteral("&&"), QStringLiteral("&&&&")},
        TextCase{QStringLiteral("a&"), QStringLiteral("a&&")},
        TextCase{QStringLiteral("plain"), QStringLiteral("plain")}));

/// What Qt 6 sends for an action's text (its first ampersand, unless last, becomes an underscore).
QString sentByQt(const QString& text)
{
    const qsizetype first = text.indexOf(u'&');
    return first < 0 || first == text.size() - 1 ? text : QString(text).replace(first, 1, u'_');
}

/// What a host shows for a label: "__" is an underscore, any other underscore is not shown.
QString shownByHost(const QString& label)
{
    QString shown;
    for (qsizetype index = 0; index < label.size(); ++index) {
        if (label[index] == u'_' && ++index == label.size())
            break;
        shown += label[index];
    }
    return shown;
}

class HostText : public testing::TestWithParam<const char*> { };

TEST_P(HostText, ArrivesLetterByLetter)
{
    const QString text = QString::fromUtf8(GetParam());
    EXPECT_EQ(shownByHost(sentByQt(forDBusMenu(text))).toStdString(), text.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Table, HostText,
    testing::Values("plain", "A & B_c", "&", "&&", "a&", "a & b & c", "_", "__", "_&_", "&_", "x_", "",
        "___&&&", "_x & y", " & x", "🚀 & x_"));

TEST(HostLabel, MarksALetterRatherThanAnAmpersand)
{
    EXPECT_EQ(sentByQt(forDBusMenu(QStringLiteral("A & B_c"))), QStringLiteral("_A & B__c"));
    EXPECT_EQ(sentByQt(forDBusMenu(QStringLiteral("(é & b)"))), QStringLiteral("(_é & b)"));
    EXPECT_EQ(sentByQt(forDBusMenu(QStringLiteral("no ampersand"))), QStringLiteral("no ampersand"));
    // Nothing else to mark.
    EXPECT_EQ(sentByQt(forDBusMenu(QStringLiteral("& a"))), QStringLiteral("_& a"));
}

} // namespace
} // namespace Tavrin
