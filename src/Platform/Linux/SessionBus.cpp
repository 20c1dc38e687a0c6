#include "Platform/Linux/SessionBus.h"

#include "Core/Support/FileDescriptor.h"

#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace Tavrin::SessionBus {
namespace {

struct SocketAddress {
    sockaddr_un address{};
    socklen_t length = 0;
};

/// The first local socket of an address list; nothing if its first entry is of another kind.
std::optional<SocketAddress> localSocket(const QByteArray& address)
{
    const QByteArray first = address.split(';').first();
    const bool isPath = first.startsWith("unix:path=");
    const bool isAbstract = first.startsWith("unix:abstract=");
    if (!isPath && !isAbstract)
        return std::nullopt;
    const QByteArray name
        = QByteArray::fromPercentEncoding(first.mid(first.indexOf('=') + 1).split(',').first());
    SocketAddress socketAddress;
    socketAddress.address.sun_family = AF_UNIX;
    const std::size_t offset = isAbstract ? 1 : 0;
    const auto size = static_cast<std::size_t>(name.size());
    if (size + offset >= sizeof socketAddress.address.sun_path)
        return std::nullopt;
    std::memcpy(socketAddress.address.sun_path + offset, name.constData(), size);
    socketAddress.length
        = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + offset + size + (isPath ? 1 : 0));
    return socketAddress;
}

/// First message of the protocol's EXTERNAL mechanism: a zero byte, then the user id in hexadecimal digits
/// of its decimal text (D-Bus Specification, Authentication Protocol).
QByteArray authenticationRequest()
{
    return QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(getuid()).toHex() + "\r\n";
}

bool waitFor(int descriptor, short events, std::chrono::milliseconds limit)
{
    pollfd poller{descriptor, events, 0};
    return poll(&poller, 1, static_cast<int>(limit.count())) == 1;
}

} // namespace

QByteArray address()
{
    QByteArray fromEnvironment = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus";
    return socket.startsWith(u"/bus") || !QFileInfo::exists(socket) ? QByteArray()
                                                                    : "unix:path=" + socket.toLocal8Bit();
}

bool answers(const QByteArray& address, std::chrono::milliseconds limit)
{
    const auto target = localSocket(address);
    if (!target)
        return true;
    const FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!descriptor.isOpen())
        return true;
    // A refused connection is an answer: the toolkit will get the same, at once. A full queue is none.
    if (connect(descriptor.number(), reinterpret_cast<const sockaddr*>(&target->address), target->length)
        != 0)
        return errno != EAGAIN;
    const QByteArray request = authenticationRequest();
    if (send(descriptor.number(), request.constData(), static_cast<std::size_t>(request.size()), MSG_NOSIGNAL)
        < 0)
        return true;
    return waitFor(descriptor.number(), POLLIN, limit);
}

} // namespace Tavrin::SessionBus
