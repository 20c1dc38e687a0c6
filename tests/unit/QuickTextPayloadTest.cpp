#include "Core/Model/QuickTextPayload.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Mode = QuickTextPayload::Mode;

TEST(QuickTextModes, HaveTheirTexts)
{
    EXPECT_EQ(rawValue(Mode::paste), QStringLiteral("paste"));
    EXPECT_EQ(rawValue(Mode::copyOnly), QStringLiteral("copyOnly"));
    EXPECT_EQ(rawValue(Mode::pasteAndKeep), QStringLiteral("pasteAndKeep"));
    EXPECT_EQ(title(Mode::paste), QStringLiteral("Tự động dán (Auto Paste)"));
    EXPECT_EQ(title(Mode::copyOnly), QStringLiteral("Chỉ chép vào Clipboard"));
    EXPECT_EQ(title(Mode::pasteAndKeep), QStringLiteral("Dán & Lưu vào Clipboard"));
    EXPECT_EQ(shortTitle(Mode::paste), QStringLiteral("Dán"));
    EXPECT_EQ(shortTitle(Mode::copyOnly), QStringLiteral("Chép"));
    EXPECT_EQ(shortTitle(Mode::pasteAndKeep), QStringLiteral("Dán & Chép"));
    EXPECT_EQ(quickTextModeFromRawValue(QStringLiteral("copyOnly")), Mode::copyOnly);
    EXPECT_EQ(quickTextModeFromRawValue(QStringLiteral("CopyOnly")), std::nullopt);
}

TEST(QuickTextPayloads, SurviveEncoding)
{
    const QString texts[] = {{}, QStringLiteral("Xin chào"), QStringLiteral("\"quoted\" \\ / \n\t\r"),
        QStringLiteral("Trân trọng, {date} 🚀 \u0001"), QString(100000, u'ệ')};
    for (const QString& text : texts) {
        for (const Mode mode : QuickTextPayload::allModes) {
            for (const bool restore : {false, true}) {
                const QuickTextPayload payload{mode, text, restore};
                EXPECT_EQ(QuickTextPayload::from(payload.encodeToString()), payload);
            }
        }
    }
}

TEST(QuickTextPayloads, EncodeCompactlyInOrder)
{
    EXPECT_EQ((QuickTextPayload{Mode::copyOnly, QStringLiteral("a"), true}).encodeToString(),
        QStringLiteral(R"({"mode":"copyOnly","text":"a","restoreClipboard":true})"));
}

TEST(QuickTextPayloads, FallBackToTheWholeTextAsPaste)
{
    const char* raws[] = {
        "Hello",
        "",
        "Dạ em chào anh/chị ạ!",
        R"({"mode":"copyOnly","text":"a"})",
        R"({"mode":"Paste","text":"a","restoreClipboard":true})",
        R"({"mode":"paste","text":1,"restoreClipboard":true})",
        R"({"mode":"paste","text":"a","restoreClipboard":1})",
        R"({"mode":"paste","text":"a","restoreClipboard":true)",
        R"(["paste","a",true])",
        "null",
        "12",
    };
    for (const char* raw : raws) {
        const QString text = QString::fromUtf8(raw);
        EXPECT_EQ(QuickTextPayload::from(text), (QuickTextPayload{Mode::paste, text, false})) << raw;
    }
}

TEST(QuickTextPayloads, ReadKeysInAnyOrderAndIgnoreOthers)
{
    EXPECT_EQ(QuickTextPayload::from(QStringLiteral(
                  R"({ "x": [{}], "restoreClipboard": true, "text": "b", "mode": "pasteAndKeep" })")),
        (QuickTextPayload{Mode::pasteAndKeep, QStringLiteral("b"), true}));
}

TEST(QuickTextPayloads, SurviveDeepNesting)
{
    const QString deep = QString(200000, u'[');
    EXPECT_EQ(QuickTextPayload::from(deep).text, deep);
}

} // namespace
} // namespace Tavrin
