#include "Fetch/DownloadOrder.h"

namespace Tavrin {
namespace {

constexpr auto downloadWord = "download";

} // namespace

QByteArrayList downloadArguments(const DownloadOrder& order)
{
    return {downloadWord, order.address.toEncoded(), order.file};
}

std::optional<DownloadOrder> downloadOrder(const QByteArrayList& arguments)
{
    if (arguments.size() != 3 || arguments[0] != downloadWord)
        return std::nullopt;
    // A relative one is for the network access manager to refuse, which has the words for it.
    const QUrl address = QUrl::fromEncoded(arguments[1], QUrl::StrictMode);
    if (!address.isValid() || !arguments[2].startsWith('/'))
        return std::nullopt;
    return DownloadOrder{address, arguments[2]};
}

} // namespace Tavrin
