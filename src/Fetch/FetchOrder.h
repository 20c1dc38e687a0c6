#pragma once

#include <QByteArrayList>
#include <QUrl>
#include <optional>

namespace Tavrin {

/// Bytes. The helper holds a body several times over within its limit on memory.
inline constexpr qint64 largestFetchOrder = 16 * 1024 * 1024;

/// What `tavrin-fetch` is told on its command line.
struct FetchOrder {
    QUrl address;
    /// Of the body, in bytes.
    qint64 largestBody;
};

/// The command line, program name aside, of an order.
QByteArrayList fetchArguments(const FetchOrder& order);

/// The order of a command line, program name aside: an absolute address in its encoded form and a positive
/// number of bytes, at most `largestFetchOrder`. Nothing if it is anything else.
std::optional<FetchOrder> fetchOrder(const QByteArrayList& arguments);

} // namespace Tavrin
