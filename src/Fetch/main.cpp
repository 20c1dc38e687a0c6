// Fetches one address for the program in a process of its own: what the network needs in memory, and what
// looking for a proxy may block, is gone when this process is. Started as
//     tavrin-fetch ADDRESS BYTES
#include "Fetch/FetchFrame.h"
#include "Fetch/FetchOrder.h"
#include "Fetch/FetchOutput.h"
#include "Fetch/ManifestRequest.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sys/resource.h>

using namespace Tavrin;

namespace {

/// A server that never ends its headers must not take the machine's memory. Of memory that is written to,
/// not of addresses: those the C library reserves by the hundred megabytes for every thread.
void limitMemory()
{
#ifndef TAVRIN_SANITIZED // Sanitizers take terabytes of addresses to work with.
    constexpr rlimit limit{256 * 1024 * 1024, 256 * 1024 * 1024};
    setrlimit(RLIMIT_DATA, &limit);
#endif
    // Running out of it is no crash that a desktop should report.
    std::set_terminate([] { std::_Exit(EXIT_FAILURE); });
}

int fetch(int argc, char** argv, const FetchOrder& order)
{
    const FetchOutput output;
    output.endWithReader();
    QCoreApplication application(argc, argv);
    ManifestRequest request(order.address, order.largestBody);
    QObject::connect(&request, &ManifestRequest::answered, [&output](const ManifestAnswer& answer) {
        QCoreApplication::exit(output.write(encodeFetchFrame(answer)) ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    QMetaObject::invokeMethod(&request, &ManifestRequest::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    limitMemory();
    const auto order = fetchOrder(QByteArrayList(argv + 1, argv + argc));
    if (!order) {
        std::fputs("Cách dùng: tavrin-fetch ĐỊA_CHỈ SỐ_BYTE\n", stderr);
        return EXIT_FAILURE;
    }
    return fetch(argc, argv, *order);
}
