#include "Fetch/FetchOrder.h"

namespace Tavrin {

QByteArrayList fetchArguments(const FetchOrder& order)
{
    return {order.address.toEncoded(), QByteArray::number(order.largestBody)};
}

std::optional<FetchOrder> fetchOrder(const QByteArrayList& arguments)
{
    if (arguments.size() != 2)
        return std::nullopt;
    const QUrl address = QUrl::fromEncoded(arguments[0], QUrl::StrictMode);
    bool isNumber = false;
    const qint64 largestBody = arguments[1].toLongLong(&isNumber);
    if (!address.isValid() || address.isRelative() || !isNumber || largestBody <= 0
        || largestBody > largestFetchOrder)
        return std::nullopt;
    return FetchOrder{address, largestBody};
}

} // namespace Tavrin
