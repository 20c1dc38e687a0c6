#include "Fetch/DownloadReport.h"

#include <QList>

namespace Tavrin {
namespace {

constexpr auto progressWord = "progress ";
constexpr auto completeWord = "complete";
constexpr auto brokenWord = "broken ";

QByteArray text(const DownloadProgress& progress)
{
    return progressWord + QByteArray::number(progress.written) + ' ' + QByteArray::number(progress.expected);
}

QByteArray text(const DownloadComplete& /*complete*/)
{
    return completeWord;
}

QByteArray text(const DownloadBroken& broken)
{
    // A letter takes up to three bytes for each of its UTF-16 units.
    constexpr qsizetype longestReason = (longestDownloadReport - 8) / 3;
    return brokenWord + broken.reason.simplified().left(longestReason).toUtf8();
}

std::optional<DownloadReport> decodeProgress(const QByteArray& numbers)
{
    const QList<QByteArray> words = numbers.split(' ');
    bool isWritten = false;
    bool isExpected = false;
    const DownloadProgress progress{
        words.value(0).toLongLong(&isWritten), words.value(1).toLongLong(&isExpected)};
    if (words.size() != 2 || !isWritten || !isExpected || progress.written < 0)
        return std::nullopt;
    return progress;
}

} // namespace

DownloadBroken fileNotWritten(int errorNumber)
{
    return {QStringLiteral("Không ghi được tệp tải về (%1).").arg(qt_error_string(errorNumber))};
}

QByteArray encodeDownloadReport(const DownloadReport& report)
{
    return std::visit([](const auto& kind) { return text(kind); }, report) + '\n';
}

std::optional<DownloadReport> decodeDownloadReport(const QByteArray& line)
{
    if (line.startsWith(progressWord))
        return decodeProgress(line.sliced(static_cast<qsizetype>(qstrlen(progressWord))));
    if (line == completeWord)
        return DownloadComplete{};
    if (line.startsWith(brokenWord))
        return DownloadBroken{QString::fromUtf8(line.sliced(static_cast<qsizetype>(qstrlen(brokenWord))))};
    return std::nullopt;
}

} // namespace Tavrin
