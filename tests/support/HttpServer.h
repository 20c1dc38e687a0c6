#pragma once

#include <QDateTime>
#include <QHash>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>
#include <sys/socket.h>
#include <vector>

namespace Tavrin::Testing {

struct HttpRequest {
    QByteArray method;
    QByteArray target;
    /// By lower-case name.
    QHash<QByteArray, QByteArray> headers;
};

/// An HTTP server on the loopback interface that does with every request what its handler says, so that
/// any fault can be had. With a TLS configuration it speaks https. Lives in the test's event loop.
class HttpServer : public QTcpServer {
public:
    using Handler = std::function<void(QTcpSocket&, const HttpRequest&)>;

    explicit HttpServer(Handler handler, std::optional<QSslConfiguration> tls = std::nullopt)
        : m_handler(std::move(handler))
        , m_tls(std::move(tls))
    {
        if (!listen(QHostAddress::LocalHost))
            qFatal("cannot listen: %s", qPrintable(errorString()));
    }

    QUrl address(const QString& path = QStringLiteral("/version.json")) const
    {
        return QUrl(QStringLiteral("%1://127.0.0.1:%2%3")
                        .arg(m_tls ? QStringLiteral("https") : QStringLiteral("http"))
                        .arg(serverPort())
                        .arg(path));
    }

    void setHandler(Handler handler) { m_handler = std::move(handler); }
    /// Every request so far.
    const std::vector<HttpRequest>& requests() const { return m_requests; }
    /// Connections accepted so far, and how many of them are still there.
    int connectionCount() const { return m_connections; }
    int openConnectionCount() const { return m_openConnections; }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        ++m_connections;
        ++m_openConnections;
        connect(socket, &QAbstractSocket::disconnected, this, [this, socket] {
            --m_openConnections;
            socket->deleteLater();
        });
        auto received = std::make_shared<QByteArray>();
        connect(socket, &QAbstractSocket::readyRead, this,
            [this, socket, received] { read(*socket, *received); });
        if (m_tls) {
            socket->setSslConfiguration(*m_tls);
            socket->startServerEncryption();
        }
    }

private:
    void read(QTcpSocket& socket, QByteArray& received)
    {
        received += socket.readAll();
        const auto end = received.indexOf("\r\n\r\n");
        if (end < 0)
            return;
        m_requests.push_back(parse(received.first(end)));
        received.remove(0, end + 4);
        m_handler(socket, m_requests.back());
    }

    static HttpRequest parse(const QByteArray& head)
    {
        const QList<QByteArray> lines = head.split('\n');
        const QList<QByteArray> words = lines.first().split(' ');
        HttpRequest request{words.value(0), words.value(1), {}};
        for (const QByteArray& line : lines.mid(1)) {
            const auto colon = line.indexOf(':');
            request.headers.insert(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
        }
        return request;
    }

    Handler m_handler;
    std::optional<QSslConfiguration> m_tls;
    std::vector<HttpRequest> m_requests;
    int m_connections = 0;
    int m_openConnections = 0;
};

/// Sends these bytes and then nothing; the connection stays open.
inline HttpServer::Handler sending(const QByteArray& bytes)
{
    return [bytes](QTcpSocket& socket, const HttpRequest&) { socket.write(bytes); };
}

/// A complete answer, as from a server that would keep the connection.
inline HttpServer::Handler answering(
    const QByteArray& status, const QByteArray& body, const QByteArray& headers = {})
{
    return sending("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n"
        + headers + "\r\n" + body);
}

/// Sends these bytes and then ends the connection; with `isReset` as a crash of the server does.
inline HttpServer::Handler breakingOff(const QByteArray& bytes, bool isReset)
{
    return [bytes, isReset](QTcpSocket& socket, const HttpRequest&) {
        socket.write(bytes);
        socket.flush();
        if (isReset) {
            const linger option{1, 0};
            ::setsockopt(
                static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &option, sizeof option);
        }
        socket.abort();
    };
}

/// Sends `head`, then one byte each `interval` for as long as the client listens; counts the bytes.
inline HttpServer::Handler dripping(const QByteArray& head, std::chrono::milliseconds interval, int& count)
{
    return [head, interval, &count](QTcpSocket& socket, const HttpRequest&) {
        socket.write(head);
        auto* timer = new QTimer(&socket);
        QObject::connect(
            timer, &QTimer::timeout, &socket, [&socket, &count] { count += socket.write("a") == 1; });
        timer->start(interval);
    };
}

/// Sends `head`, then `total` bytes as fast as the client takes them; counts what has been handed over.
inline HttpServer::Handler streaming(const QByteArray& head, qint64 total, qint64& sent)
{
    return [head, total, &sent](QTcpSocket& socket, const HttpRequest&) {
        const auto sendMore = [&socket, total, &sent] {
            constexpr qint64 blockSize = 64 * 1024;
            if (socket.bytesToWrite() == 0 && sent < total)
                sent += socket.write(QByteArray(std::min(blockSize, total - sent), 'a'));
        };
        QObject::connect(&socket, &QAbstractSocket::bytesWritten, &socket, sendMore);
        socket.write(head);
    };
}

} // namespace Tavrin::Testing
