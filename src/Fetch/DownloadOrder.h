#pragma once

#include <QByteArrayList>
#include <QUrl>
#include <optional>

namespace Tavrin {

/// What `tavrin-fetch` is told on its command line when it is to save an answer of any size.
struct DownloadOrder {
    QUrl address;
    /// Path of a file that is there; it is overwritten.
    QByteArray file;
};

/// The command line, program name aside, of an order.
QByteArrayList downloadArguments(const DownloadOrder& order);

/// The order of a command line, program name aside. Nothing if it is anything else.
std::optional<DownloadOrder> downloadOrder(const QByteArrayList& arguments);

} // namespace Tavrin
