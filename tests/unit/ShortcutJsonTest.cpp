#include "Core/Model/ShortcutJson.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

ShortcutItem terminal()
{
    return {QUuid::fromString(QStringLiteral("1818E811-892F-402B-923F-0824128B2F33")),
        QStringLiteral("Terminal"), 46, 256, ActionType::launchApp, QStringLiteral("com.apple.Terminal"),
        true, 785365688.9169126};
}

const char* const terminalRecord
    = R"({"id":"1818E811-892F-402B-923F-0824128B2F33","name":"Terminal","keyCode":46,"modifiers":256,)"
      R"("actionType":"launchApp","actionValue":"com.apple.Terminal","isEnabled":true,"createdAt":785365688.9169126})";

QByteArray record(const QByteArray& from = {}, const QByteArray& to = {})
{
    QByteArray text(terminalRecord);
    if (!from.isEmpty()) {
        EXPECT_TRUE(text.contains(from)) << from.constData();
        text.replace(from, to);
    }
    return '[' + text + ']';
}

std::vector<ShortcutItem> decoded(const QByteArray& json)
{
    const auto result = decodeShortcuts(json);
    const auto* shortcuts = std::get_if<std::vector<ShortcutItem>>(&result);
    EXPECT_TRUE(shortcuts) << json.left(200).constData() << ": "
                           << qPrintable(std::get<DecodingError>(result).description);
    return shortcuts ? *shortcuts : std::vector<ShortcutItem>{};
}

bool isRefused(const QByteArray& json)
{
    const auto result = decodeShortcuts(json);
    const auto* error = std::get_if<DecodingError>(&result);
    return error && !error->description.isEmpty();
}

TEST(ShortcutRecord, ShowsItsCombination)
{
    EXPECT_EQ(terminal().shortcutDisplay(), QStringLiteral("⌘ M"));
}

TEST(ShortcutRecord, IsEqualOnlyInAllFields)
{
    EXPECT_EQ(terminal(), terminal());
    const std::function<void(ShortcutItem&)> changes[] = {
        [](ShortcutItem& item) { item.id = QUuid::createUuid(); },
        [](ShortcutItem& item) { item.name = QStringLiteral("terminal"); },
        [](ShortcutItem& item) { item.keyCode = 47; },
        [](ShortcutItem& item) { item.modifiers = 512; },
        [](ShortcutItem& item) { item.actionType = ActionType::shellScript; },
        [](ShortcutItem& item) { item.actionValue.clear(); },
        [](ShortcutItem& item) { item.isEnabled = false; },
        [](ShortcutItem& item) { item.createdAt += 1; },
    };
    for (const auto& change : changes) {
        ShortcutItem other = terminal();
        change(other);
        EXPECT_NE(other, terminal());
    }
}

TEST(ShortcutJson, WritesTheKeysInOrderAndCompactly)
{
    const ShortcutItem item = terminal();
    EXPECT_EQ(encodeShortcuts({&item, 1}), record());
    EXPECT_EQ(encodeShortcuts({}), "[]");
}

TEST(ShortcutJson, ReadsWhatItWrites)
{
    std::vector<ShortcutItem> items;
    const QString names[] = {{}, QStringLiteral("dòng 1\ndòng 2"), QStringLiteral("\"'\\/"),
        QStringLiteral("\u202Eمرحبا"), QString(10000, u'ấ'), QStringLiteral("🚀\u0000x")};
    for (const QString& name : names) {
        for (const ActionType type : allActionTypes) {
            items.push_back({QUuid::createUuid(), name, 4294967295U, 0x1B00, type, name + u'/', false,
                ShortcutItem::currentDate()});
        }
    }
    EXPECT_EQ(decoded(encodeShortcuts(items)), items);
}

TEST(ShortcutJson, ReadsOtherWritersFormats)
{
    EXPECT_EQ(decoded(record()), std::vector{terminal()});
    // Escaped slashes, keys in another order, white space, keys of a later version.
    const auto items = decoded(R"( [ {"createdAt":1,"extra":{"deep":[{"id":1}]},"isEnabled":false,
        "actionValue":"\/System\/Applications\/TextEdit.app","actionType":"launchApp","modifiers":2304.0,
        "keyCode":2,"name":"T\u00e0i li\u1ec7u","id":"36f675cc-81e7-4ef5-a8e2-5d940ed90475","more":null} ] )");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].actionValue, QStringLiteral("/System/Applications/TextEdit.app"));
    EXPECT_EQ(items[0].name, QStringLiteral("Tài liệu"));
    EXPECT_EQ(items[0].modifiers, 2304U);
    EXPECT_EQ(items[0].createdAt, 1.0);
    EXPECT_EQ(
        items[0].id.toString(QUuid::WithoutBraces), QStringLiteral("36f675cc-81e7-4ef5-a8e2-5d940ed90475"));
}

TEST(ShortcutJson, ReadsAnEmptyArray)
{
    EXPECT_TRUE(decoded("[]").empty());
    EXPECT_TRUE(decoded(" [ ] \n").empty());
}

struct Refusal {
    const char* from;
    const char* to;
};

class RefusedRecord : public testing::TestWithParam<Refusal> { };

TEST_P(RefusedRecord, FailsTheWholeFile)
{
    const QByteArray bad = record(GetParam().from, GetParam().to);
    EXPECT_TRUE(isRefused(bad)) << bad.constData();
    // One bad record is enough, wherever it stands.
    const QByteArray good(terminalRecord);
    EXPECT_TRUE(isRefused('[' + good + ',' + bad.mid(1)));
    EXPECT_TRUE(isRefused(bad.chopped(1) + ',' + good + ']'));
}

INSTANTIATE_TEST_SUITE_P(Table, RefusedRecord,
    testing::Values(Refusal{R"("launchApp")", R"("LaunchApp")"}, Refusal{R"("launchApp")", R"("dance")"},
        Refusal{R"("launchApp")", "3"}, Refusal{R"(,"createdAt":785365688.9169126)", ""},
        Refusal{R"("isEnabled":true,)", ""}, Refusal{R"("name":"Terminal",)", ""},
        Refusal{R"("keyCode":46,)", ""}, Refusal{R"("modifiers":256,)", ""},
        Refusal{R"("actionType":"launchApp",)", ""}, Refusal{R"("actionValue":"com.apple.Terminal",)", ""},
        Refusal{R"("id":"1818E811-892F-402B-923F-0824128B2F33",)", ""}, Refusal{":46", ":\"46\""},
        Refusal{":46", ":-1"}, Refusal{":46", ":4294967296"}, Refusal{":46", ":46.5"},
        Refusal{":46", ":null"}, Refusal{":46", ":true"}, Refusal{":46", ":[46]"}, Refusal{":46", ":{}"},
        Refusal{":256", ":1e20"}, Refusal{":true", ":1"}, Refusal{":true", ":\"true\""},
        Refusal{":true", ":null"}, Refusal{":785365688.9169126", ":\"785365688\""},
        Refusal{":785365688.9169126", ":1e999"}, Refusal{R"("Terminal")", "null"},
        Refusal{R"("Terminal")", "7"}, Refusal{R"("Terminal")", "\"\xff\""},
        Refusal{R"("Terminal")", R"("\ud800")"}, Refusal{"1818E811-892F-402B-923F-0824128B2F33", "1818E811"},
        Refusal{"1818E811-892F-402B-923F-0824128B2F33", "{1818E811-892F-402B-923F-0824128B2F33}"},
        Refusal{"1818E811-892F-402B-923F-0824128B2F33", "1818E811-892F-402B-923F-0824128B2FZZ"},
        Refusal{"1818E811-892F-402B-923F-0824128B2F33", "1818E811x892F-402B-923F-0824128B2F33"},
        Refusal{"1818E811-892F-402B-923F-0824128B2F33", ""}));

TEST(ShortcutJson, TakesTheZeroUuid)
{
    const auto items
        = decoded(record("1818E811-892F-402B-923F-0824128B2F33", "00000000-0000-0000-0000-000000000000"));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_TRUE(items[0].id.isNull());
}

TEST(ShortcutJson, RefusesWhatIsNoArrayOfObjects)
{
    for (const char* json : {"", " ", "{}", "null", "1", "\"text\"", "true", "[1]", "[null]", "[\"x\"]",
             "[[]]", "[true]", "[1.5]", "[{}]", "[", "[{", "]", "[{}", "[] []", "\xff\xfe[]", "not json"})
        EXPECT_TRUE(isRefused(json)) << json;
    QByteArray truncated = record();
    while (truncated.size() > 1) {
        truncated.chop(1);
        EXPECT_TRUE(isRefused(truncated));
    }
}

TEST(ShortcutJson, SurvivesDeepNesting)
{
    EXPECT_TRUE(isRefused(QByteArray(1000000, '[')));
    QByteArray deep = record(",\"createdAt\"",
        ",\"extra\":" + QByteArray(100000, '[') + QByteArray(100000, ']') + ",\"createdAt\"");
    EXPECT_EQ(decoded(deep), std::vector{terminal()});
}

} // namespace
} // namespace Tavrin
