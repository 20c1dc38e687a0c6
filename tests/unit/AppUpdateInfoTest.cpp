#include "Core/Update/AppUpdateInfo.h"

#include <gtest/gtest.h>

namespace Tavrin {

using namespace Qt::StringLiterals;

namespace {

struct ValidCase {
    QByteArray json;
    AppUpdateInfo expected;
};

class ValidManifest : public testing::TestWithParam<ValidCase> { };

TEST_P(ValidManifest, IsDecoded)
{
    const auto decoded = decodeUpdateInfo(GetParam().json);
    ASSERT_TRUE(std::holds_alternative<AppUpdateInfo>(decoded))
        << std::get<ManifestDecodingError>(decoded).description.toStdString();
    EXPECT_EQ(std::get<AppUpdateInfo>(decoded), GetParam().expected);
}

TEST_P(ValidManifest, SurvivesEncoding)
{
    const auto decoded = decodeUpdateInfo(encodeUpdateInfo(GetParam().expected));
    ASSERT_TRUE(std::holds_alternative<AppUpdateInfo>(decoded));
    EXPECT_EQ(std::get<AppUpdateInfo>(decoded), GetParam().expected);
}

QByteArray nested(const QByteArray& open, const QByteArray& close)
{
    constexpr int depth = 200'000;
    return open.repeated(depth) + "0" + close.repeated(depth);
}

const ValidCase validCases[]{
    {R"({"version":"1.0.8","releaseNotes":"Ghi chú"})", {u"1.0.8"_s, u"Ghi chú"_s, {}, {}, {}}},
    {R"({"pubDate":"hôm qua","zipUrl":"z","downloadUrl":"d","releaseNotes":"n","version":"v"})",
        {u"v"_s, u"n"_s, u"d"_s, u"z"_s, u"hôm qua"_s}},
    {R"({"version":"v","releaseNotes":"n","downloadUrl":null,"zipUrl":null,"pubDate":null})",
        {u"v"_s, u"n"_s, {}, {}, {}}},
    {R"({"version":"","releaseNotes":"","downloadUrl":"","zipUrl":"","pubDate":""})",
        {u""_s, u""_s, u""_s, u""_s, u""_s}},
    {" \r\n\t{ \"version\" : \" 1.0.8\\n\" , \"releaseNotes\" : \"a\\u0000b\\ud83d\\ude80\" } \n",
        {u" 1.0.8\n"_s, QStringLiteral("a\0b🚀"), {}, {}, {}}},
    // Unknown keys, whatever they hold; the names are case-sensitive.
    {R"({"Version":1,"x":{"version":2,"releaseNotes":[]},"y":[{"zipUrl":3}],"z":null,"":true,"w":-1.5,
        "version":"v","releaseNotes":"n","q":"s"})",
        {u"v"_s, u"n"_s, {}, {}, {}}},
    {R"({"version":"v","x":)" + nested("[", "]") + R"(,"releaseNotes":"n"})", {u"v"_s, u"n"_s, {}, {}, {}}},
    {R"({"version":"v","x":)" + nested("{\"version\":", "}") + R"(,"releaseNotes":"n"})",
        {u"v"_s, u"n"_s, {}, {}, {}}},
    // Of a key that stands twice the last one counts.
    {R"({"version":"1","releaseNotes":"n","version":"2","zipUrl":"z","zipUrl":null})",
        {u"2"_s, u"n"_s, {}, {}, {}}},
};

INSTANTIATE_TEST_SUITE_P(Table, ValidManifest, testing::ValuesIn(validCases));

struct InvalidCase {
    QByteArray json;
    /// Part of the description.
    const char* reason;
};

class InvalidManifest : public testing::TestWithParam<InvalidCase> { };

TEST_P(InvalidManifest, IsRefusedWithAReason)
{
    const auto decoded = decodeUpdateInfo(GetParam().json);
    ASSERT_TRUE(std::holds_alternative<ManifestDecodingError>(decoded));
    const QString description = std::get<ManifestDecodingError>(decoded).description;
    EXPECT_TRUE(description.contains(QString::fromUtf8(GetParam().reason))) << description.toStdString();
}

const InvalidCase invalidCases[]{
    // Keys that have to be there.
    {"{}", "thiếu trường \"version\""},
    {R"({"releaseNotes":"n"})", "thiếu trường \"version\""},
    {R"({"version":"v"})", "thiếu trường \"releaseNotes\""},
    {R"({"version":"v","ReleaseNotes":"n"})", "thiếu trường \"releaseNotes\""},
    {R"({"x":{"version":"v","releaseNotes":"n"}})", "thiếu trường \"version\""},
    // Types.
    {R"({"version":null,"releaseNotes":"n"})", "\"version\" trong thông tin cập nhật phải là văn bản"},
    {R"({"version":"v","releaseNotes":null})", "\"releaseNotes\" trong thông tin cập nhật phải là văn bản"},
    {R"({"version":1,"releaseNotes":"n"})", "\"version\" trong"},
    {R"({"version":-1,"releaseNotes":"n"})", "\"version\" trong"},
    {R"({"version":1.08,"releaseNotes":"n"})", "\"version\" trong"},
    {R"({"version":["v"],"releaseNotes":"n"})", "\"version\" trong"},
    {R"({"version":"v","releaseNotes":{}})", "\"releaseNotes\" trong"},
    {R"({"version":"v","releaseNotes":"n","downloadUrl":false})", "\"downloadUrl\" trong"},
    {R"({"version":"v","releaseNotes":"n","zipUrl":0})", "\"zipUrl\" trong"},
    {R"({"version":"v","releaseNotes":"n","pubDate":20240101})", "\"pubDate\" trong"},
    // Not an object.
    {R"([{"version":"v","releaseNotes":"n"}])", "không phải là một đối tượng"},
    {"[]", "không phải là một đối tượng"},
    {nested("[", "]"), "không phải là một đối tượng"},
    {"null", "không phải là một đối tượng"},
    {"true", "không phải là một đối tượng"},
    {"\"version\"", "không phải là một đối tượng"},
    {"1", "không phải là một đối tượng"},
    {"-1", "không phải là một đối tượng"},
    {"1.5", "không phải là một đối tượng"},
    // Not JSON.
    {"", "không phải là JSON hợp lệ"},
    {QByteArray(), "không phải là JSON hợp lệ"},
    {" \n", "không phải là JSON hợp lệ"},
    {"<html></html>", "không phải là JSON hợp lệ"},
    {R"({"version":"v","releaseNotes":"n")", "không phải là JSON hợp lệ"},
    {R"({"version":"v","releaseNotes":"n"} x)", "không phải là JSON hợp lệ"},
    {R"({"version":"v","releaseNotes":"n"}{})", "không phải là JSON hợp lệ"},
    {R"({"version":"v","releaseNotes":"n",})", "không phải là JSON hợp lệ"},
    {R"(/**/{"version":"v","releaseNotes":"n"})", "không phải là JSON hợp lệ"},
    {R"({"x":)" + QByteArray("[").repeated(1'000'000), "không phải là JSON hợp lệ"},
    {QByteArray(R"({"version":"v","releaseNotes":"n"})") + '\0' + "x",
        "không phải là JSON hợp lệ (tại byte 34)"},
    // Not UTF-8.
    {"{\"version\":\"\xFF\",\"releaseNotes\":\"n\"}", "không phải là JSON hợp lệ"},
    {"{\"version\":\"v\",\"releaseNotes\":\"\xC3\"}", "không phải là JSON hợp lệ"},
    {R"({"version":"\ud800","releaseNotes":"n"})", "không phải là JSON hợp lệ"},
    {QByteArray("\xFF\xFE{\0}\0", 6), "không phải là JSON hợp lệ"},
};

INSTANTIATE_TEST_SUITE_P(Table, InvalidManifest, testing::ValuesIn(invalidCases));

TEST(EncodedManifest, HasTheKeysInOrderAndLeavesAbsentOnesOut)
{
    EXPECT_EQ(encodeUpdateInfo({u"1"_s, u"n\n\"ú\""_s, u"d"_s, u"z"_s, u"p"_s}),
        QByteArray(
            R"({"version":"1","releaseNotes":"n\n\"ú\"","downloadUrl":"d","zipUrl":"z","pubDate":"p"})"));
    EXPECT_EQ(encodeUpdateInfo({u"1"_s, u"n"_s, {}, u""_s, {}}),
        QByteArray(R"({"version":"1","releaseNotes":"n","zipUrl":""})"));
}

TEST(EncodedManifest, IsUtf8EvenOfABrokenText)
{
    const QString half(QChar(0xD83D));
    const auto decoded = decodeUpdateInfo(encodeUpdateInfo({half, half, half, half, half}));
    EXPECT_TRUE(std::holds_alternative<AppUpdateInfo>(decoded));
}

TEST(ManifestEquality, IsFieldByField)
{
    const AppUpdateInfo all{u"v"_s, u"n"_s, u"d"_s, u"z"_s, u"p"_s};
    EXPECT_EQ(all, AppUpdateInfo(all));
    EXPECT_NE(all, (AppUpdateInfo{u"w"_s, u"n"_s, u"d"_s, u"z"_s, u"p"_s}));
    EXPECT_NE(all, (AppUpdateInfo{u"v"_s, u"m"_s, u"d"_s, u"z"_s, u"p"_s}));
    EXPECT_NE(all, (AppUpdateInfo{u"v"_s, u"n"_s, {}, u"z"_s, u"p"_s}));
    EXPECT_NE(all, (AppUpdateInfo{u"v"_s, u"n"_s, u"d"_s, u""_s, u"p"_s}));
    EXPECT_NE(all, (AppUpdateInfo{u"v"_s, u"n"_s, u"d"_s, u"z"_s, u"q"_s}));
}

TEST(ArchiveUrl, PrefersTheZipEvenWhenEmpty)
{
    EXPECT_EQ((AppUpdateInfo{{}, {}, u"d"_s, u"z"_s, {}}.archiveUrl()), u"z"_s);
    EXPECT_EQ((AppUpdateInfo{{}, {}, {}, u"z"_s, {}}.archiveUrl()), u"z"_s);
    EXPECT_EQ((AppUpdateInfo{{}, {}, u"d"_s, u""_s, {}}.archiveUrl()), u""_s);
    EXPECT_EQ((AppUpdateInfo{{}, {}, u"d"_s, {}, {}}.archiveUrl()), u"d"_s);
    EXPECT_EQ((AppUpdateInfo{{}, {}, {}, {}, {}}.archiveUrl()), u""_s);
}

} // namespace
} // namespace Tavrin
