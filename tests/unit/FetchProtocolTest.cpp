#include "Fetch/DownloadOrder.h"
#include "Fetch/DownloadReport.h"
#include "Fetch/FetchFrame.h"
#include "Fetch/FetchOrder.h"

#include <gtest/gtest.h>

namespace Tavrin {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestBody = 8;
const auto brokenOff = u"Chương trình tải đã dừng giữa chừng."_s;
const auto malformed = u"Chương trình tải trả lời sai quy cách."_s;

QString failureIn(const ManifestAnswer& answer)
{
    const auto* failure = std::get_if<ManifestFailure>(&answer);
    return failure ? failure->reason : u"no failure"_s;
}

TEST(FetchFrame, CarriesABodyAsItIs)
{
    for (const QByteArray& body : {QByteArray(), QByteArray("{}"), QByteArray("\n\0ok 1\n", 7)}) {
        const ManifestAnswer answer = decodeFetchFrame(encodeFetchFrame(body), largestBody);
        ASSERT_TRUE(std::holds_alternative<QByteArray>(answer)) << failureIn(answer).toStdString();
        EXPECT_EQ(std::get<QByteArray>(answer), body);
    }
}

TEST(FetchFrame, CarriesARefusal)
{
    EXPECT_EQ(encodeFetchFrame(ManifestRefused{}), "refused\n");
    EXPECT_TRUE(std::holds_alternative<ManifestRefused>(decodeFetchFrame("refused\n", largestBody)));
}

TEST(FetchFrame, CarriesTheReasonOfAFailureInOneLine)
{
    const auto carried = [](const QString& reason) {
        return failureIn(decodeFetchFrame(encodeFetchFrame(ManifestFailure{reason}), largestBody));
    };
    EXPECT_EQ(carried(u"Không tìm thấy máy chủ."_s), u"Không tìm thấy máy chủ."_s);
    EXPECT_EQ(carried(u"two\nlines"_s), u"two lines"_s);
    const QByteArray longest = encodeFetchFrame(ManifestFailure{QString(100'000, u'ế')});
    EXPECT_LE(longest.size(), longestFetchHead);
    EXPECT_GT(longest.size(), longestFetchHead / 2);
    EXPECT_TRUE(failureIn(decodeFetchFrame(longest, largestBody)).startsWith(u"ếếế"));
}

struct BadFrame {
    QByteArray bytes;
    QString reason;
};

class Frame : public testing::TestWithParam<BadFrame> { };

TEST_P(Frame, ThatIsNoneIsAFailure)
{
    EXPECT_EQ(failureIn(decodeFetchFrame(GetParam().bytes, largestBody)), GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(Short, Frame,
    testing::Values(BadFrame{"", brokenOff}, BadFrame{"ok 3", brokenOff}, BadFrame{"ok 3\n", brokenOff},
        BadFrame{"ok 3\nab", brokenOff}));

INSTANTIATE_TEST_SUITE_P(Wrong, Frame,
    testing::Values(BadFrame{"\n", malformed}, BadFrame{"<html>\n", malformed}, BadFrame{"ok\n", malformed},
        BadFrame{"ok \n", malformed}, BadFrame{"ok x\nabc", malformed}, BadFrame{"ok -1\n", malformed},
        BadFrame{"ok 3\nabcd", malformed}, BadFrame{"ok 9\nabcdefghi", malformed},
        BadFrame{"ok 99999999999999999999\n", malformed}, BadFrame{"refused\nbody", malformed},
        BadFrame{"failed \n", malformed}, BadFrame{"failed reason\nbody", malformed},
        BadFrame{QByteArray(longestFetchHead + 1, 'a'), malformed}));

TEST(FetchOrder, ComesBackFromItsCommandLine)
{
    const FetchOrder order{QUrl(u"https://example.org/version.json?t=1&a=%C3%A9 b"_s), 1024};
    const auto parsed = fetchOrder(fetchArguments(order));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->address, order.address);
    EXPECT_EQ(parsed->largestBody, order.largestBody);
    EXPECT_TRUE(fetchOrder({"http://localhost", QByteArray::number(largestFetchOrder)}));
}

TEST(FetchOrder, IsNoneWithAnythingElse)
{
    const QByteArrayList commandLines[] = {{}, {"http://localhost"}, {"http://localhost", "1", "1"},
        {"", "1"}, {"version.json", "1"}, {"http://exa mple.org/", "1"}, {"http://localhost", ""},
        {"http://localhost", "x"}, {"http://localhost", "0"}, {"http://localhost", "-1"},
        {"http://localhost", QByteArray::number(largestFetchOrder + 1)}};
    for (const QByteArrayList& commandLine : commandLines)
        EXPECT_FALSE(fetchOrder(commandLine)) << commandLine.join(' ').constData();
}

TEST(DownloadOrder, IsACommandLine)
{
    const QUrl address(u"https://a.vn/đường dẫn.zip?a=b"_s);
    const QByteArrayList arguments = downloadArguments({address, "/run/t.zip"});
    const auto order = downloadOrder(arguments);
    ASSERT_TRUE(order);
    EXPECT_EQ(order->address, address);
    EXPECT_EQ(order->file, "/run/t.zip");
    EXPECT_FALSE(fetchOrder(arguments));
    EXPECT_FALSE(downloadOrder(fetchArguments({address, 1024})));
}

TEST(DownloadOrder, IsNothingElse)
{
    for (const QByteArrayList& arguments : {QByteArrayList{}, QByteArrayList{"download", "https://a.vn/"},
             QByteArrayList{"download", "https://a.vn/", "relative"}, QByteArrayList{"download", "", "/file"},
             QByteArrayList{"upload", "https://a.vn/", "/file"},
             QByteArrayList{"download", "https://a.vn/", "/file", "more"}})
        EXPECT_FALSE(downloadOrder(arguments)) << arguments.join(' ').constData();
}

/// What comes out at the other end, in words.
std::string carried(const DownloadReport& report)
{
    const QByteArray line = encodeDownloadReport(report);
    EXPECT_EQ(line.indexOf('\n'), line.size() - 1) << "one line";
    EXPECT_LE(line.size(), longestDownloadReport);
    const auto decoded = decodeDownloadReport(line.chopped(1));
    if (!decoded)
        return "nothing";
    if (const auto* progress = std::get_if<DownloadProgress>(&*decoded))
        return std::to_string(progress->written) + " of " + std::to_string(progress->expected);
    const auto* broken = std::get_if<DownloadBroken>(&*decoded);
    return broken ? broken->reason.toStdString() : "complete";
}

TEST(DownloadReport, IsALine)
{
    EXPECT_EQ(carried(DownloadProgress{0, -1}), "0 of -1");
    EXPECT_EQ(carried(DownloadProgress{5'000'000'000, 6'000'000'000}), "5000000000 of 6000000000");
    EXPECT_EQ(carried(DownloadComplete{}), "complete");
    EXPECT_EQ(carried(DownloadBroken{u"Không tìm thấy\nmáy chủ."_s}), "Không tìm thấy máy chủ.");
    EXPECT_GT(carried(DownloadBroken{QString(100'000, u'ế')}).size(), longestDownloadReport / 2);
}

TEST(DownloadReport, IsNothingElse)
{
    for (const char* line : {"", "progress", "progress ", "progress 1", "progress 1 2 3", "progress a 2",
             "progress -1 2", "progress 1 ", "complete ", "completed", "ok 3", "<html>"})
        EXPECT_FALSE(decodeDownloadReport(line)) << line;
}

} // namespace
} // namespace Tavrin
