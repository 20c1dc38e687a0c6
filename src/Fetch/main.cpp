// Fetches one address for the program in a process of its own: what the network needs in memory, and what
// looking for a proxy may block, is gone when this process is. Started as
//     tavrin-fetch ADDRESS BYTES            to answer with the body of at most so many bytes
//     tavrin-fetch download ADDRESS FILE    to put the body into this file and answer with how far it is
#include "Fetch/DownloadOrder.h"
#include "Fetch/DownloadRequest.h"
#include "Fetch/FetchFrame.h"
#include "Fetch/FetchOrder.h"
#include "Fetch/FetchOutput.h"
#include "Fetch/ManifestRequest.h"
#ifdef TAVRIN_TESTS
#include "Fetch/TestAuthority.h"
#endif

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
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

/// Runs the request until it has ended the application.
template <typename Request>
int run(Request& request)
{
#ifdef TAVRIN_TESTS
    trustTestAuthority();
#endif
    QMetaObject::invokeMethod(&request, &Request::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
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
    return run(request);
}

int download(int argc, char** argv, const DownloadOrder& order)
{
    // A file that may not grow is an error to tell of, not the end of this process.
    std::signal(SIGXFSZ, SIG_IGN);
    const FetchOutput output;
    output.endWithReader();
    FileDescriptor file(open(order.file.constData(), O_WRONLY | O_TRUNC | O_NOFOLLOW | O_CLOEXEC));
    if (!file.isOpen()) {
        output.write(encodeDownloadReport(fileNotWritten(errno)));
        return EXIT_FAILURE;
    }
    QCoreApplication application(argc, argv);
    DownloadRequest request(order.address, std::move(file));
    QObject::connect(&request, &DownloadRequest::reported, [&output](const DownloadReport& report) {
        const bool isWritten = output.write(encodeDownloadReport(report));
        if (!isWritten || !std::holds_alternative<DownloadProgress>(report))
            QCoreApplication::exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    return run(request);
}

} // namespace

int main(int argc, char** argv)
{
    limitMemory();
    const QByteArrayList arguments(argv + 1, argv + argc);
    if (const auto order = fetchOrder(arguments))
        return fetch(argc, argv, *order);
    if (const auto order = downloadOrder(arguments))
        return download(argc, argv, *order);
    std::fputs("Cách dùng: tavrin-fetch ĐỊA_CHỈ SỐ_BYTE | tavrin-fetch download ĐỊA_CHỈ TỆP\n", stderr);
    return EXIT_FAILURE;
}
