#include "Platform/Linux/X11/Selections/SelectionTargets.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using namespace SelectionTargets;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(TextTargets, ComeTheOneThatLosesLeastFirst)
{
    EXPECT_THAT(textTargets({"TARGETS", "TEXT", "STRING", "text/html", "text/plain", "UTF8_STRING",
                    "COMPOUND_TEXT", "text/plain;charset=utf-8"}),
        ElementsAre("UTF8_STRING", "text/plain;charset=utf-8", "STRING", "text/plain", "TEXT"));
    EXPECT_THAT(textTargets({"text/plain; charset=UTF-8", "text/plain;charset=UTF-8"}),
        ElementsAre("text/plain; charset=UTF-8", "text/plain;charset=UTF-8"));
    EXPECT_THAT(
        textTargets({"utf8_string", "COMPOUND_TEXT", "text/plain;charset=utf-16", "image/png"}), IsEmpty());
    EXPECT_THAT(textTargets({"STRING", "STRING"}), ElementsAre("STRING"));
}

TEST(FormatTargets, AreWhatStandsBesideTheText)
{
    EXPECT_THAT(
        formatTargets({"TARGETS", "MULTIPLE", "DELETE", "UTF8_STRING", "text/html", "text/plain",
            "TEXT/PLAIN", "text/plain;charset=utf-8", "x-special/gnome-copied-files", "text/html", ""}),
        ElementsAre("text/html", "x-special/gnome-copied-files"));
}

TEST(FormatTargets, KeepTheMarkOfAPassword)
{
    EXPECT_THAT(formatTargets({"UTF8_STRING", "x-kde-passwordManagerHint"}),
        ElementsAre("x-kde-passwordManagerHint"));
}

TEST(FormatTargets, HaveOnePicture)
{
    EXPECT_THAT(formatTargets({"image/bmp", "image/jpeg", "image/png", "image/svg+xml", "text/html"}),
        ElementsAre("image/png", "image/svg+xml", "text/html"));
    EXPECT_THAT(formatTargets({"image/svg+xml", "image/jpeg", "image/tiff"}),
        ElementsAre("image/svg+xml", "image/jpeg"));
}

TEST(DecodeText, GoesByTheTypeOfTheAnswer)
{
    const QString text = QStringLiteral("chữ é");
    EXPECT_EQ(decodeText("UTF8_STRING", "UTF8_STRING", "chữ é"), text);
    EXPECT_EQ(decodeText("TEXT", "UTF8_STRING", "chữ é"), text);
    EXPECT_EQ(decodeText("text/plain", "text/plain;charset=UTF-8", "chữ é"), text);
    EXPECT_EQ(decodeText("STRING", "STRING", "\xC3\xA9"), QStringLiteral("Ã©"));
    EXPECT_EQ(decodeText("TEXT", "STRING", "\xE9"), QStringLiteral("é"));
    EXPECT_EQ(decodeText("UTF8_STRING", "UTF8_STRING", ""), QString());
}

TEST(DecodeText, LooksAtTheBytesWhereTheTypeSaysLittle)
{
    EXPECT_EQ(decodeText("UTF8_STRING", "STRING", "chữ"), QStringLiteral("chữ"));
    EXPECT_EQ(decodeText("UTF8_STRING", "STRING", "\xE9"), QStringLiteral("é"));
    EXPECT_EQ(decodeText("text/plain", "text/plain", "chữ"), QStringLiteral("chữ"));
    EXPECT_EQ(decodeText("text/plain", "text/plain", "\xE9"), QStringLiteral("é"));
    EXPECT_EQ(decodeText("TEXT", "TEXT", "chữ"), QStringLiteral("chữ"));
}

TEST(DecodeText, TakesNothingElseForText)
{
    for (const char* type : {"", "ATOM", "INTEGER", "NULL", "COMPOUND_TEXT", "image/png", "text/html"})
        EXPECT_FALSE(decodeText("UTF8_STRING", type, "x")) << type;
}

} // namespace
} // namespace Tavrin
