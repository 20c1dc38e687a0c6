#include "Fetch/FetchFrame.h"

#include "Fetch/FetchFailures.h"

namespace Tavrin {
namespace {

constexpr auto refused = "refused";
constexpr auto failedWord = "failed ";
constexpr auto okWord = "ok ";

QByteArray encodeHead(const ManifestAnswer& answer)
{
    if (std::holds_alternative<ManifestRefused>(answer))
        return refused;
    if (const auto* failure = std::get_if<ManifestFailure>(&answer)) {
        // A letter takes up to three bytes for each of its UTF-16 units.
        constexpr qsizetype longestReason = (longestFetchHead - 8) / 3;
        return failedWord + failure->reason.simplified().left(longestReason).toUtf8();
    }
    return okWord + QByteArray::number(std::get<QByteArray>(answer).size());
}

ManifestFailure malformed()
{
    return {helperMalformed()};
}

ManifestFailure brokenOff()
{
    return {helperBrokenOff()};
}

/// The rest of `text` behind `word`; null if it begins otherwise.
QByteArray behind(const QByteArray& text, const QByteArray& word)
{
    return text.startsWith(word) ? text.sliced(word.size()) : QByteArray();
}

} // namespace

QByteArray encodeFetchFrame(const ManifestAnswer& answer)
{
    QByteArray frame = encodeHead(answer) + '\n';
    if (const auto* body = std::get_if<QByteArray>(&answer))
        frame += *body;
    return frame;
}

ManifestAnswer decodeFetchFrame(const QByteArray& frame, qint64 largestBody)
{
    const auto headLength = frame.indexOf('\n');
    if (headLength < 0)
        return frame.size() > longestFetchHead ? malformed() : brokenOff();
    const QByteArray head = frame.first(headLength);
    const QByteArray body = frame.sliced(headLength + 1);
    if (head == refused && body.isEmpty())
        return ManifestRefused{};
    if (const QByteArray reason = behind(head, failedWord); !reason.isEmpty() && body.isEmpty())
        return ManifestFailure{QString::fromUtf8(reason)};
    bool isNumber = false;
    const qint64 length = behind(head, okWord).toLongLong(&isNumber);
    if (!isNumber || length < 0 || length > largestBody || body.size() > length)
        return malformed();
    if (body.size() < length)
        return brokenOff();
    return body;
}

} // namespace Tavrin
