#include "Core/Support/Diagnostics.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace Tavrin::Diagnostics {
namespace {

bool writableNow(int descriptor)
{
    pollfd poller{descriptor, POLLOUT, 0};
    return poll(&poller, 1, 0) == 1 && (poller.revents & POLLOUT);
}

} // namespace

QString singleLine(const QString& text)
{
    QString line = text;
    for (QChar& character : line) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line
            || category == QChar::Separator_Paragraph)
            character = u' ';
    }
    return line;
}

void printLine(const QString& text)
{
    const QByteArray bytes = singleLine(text).toUtf8() + '\n';
    qsizetype written = 0;
    while (written < bytes.size() && writableNow(STDOUT_FILENO)) {
        // A pipe that polls writable takes a piece of this size (PIPE_BUF) without blocking.
        constexpr qsizetype pieceSize = 4096;
        const auto count = write(STDOUT_FILENO, bytes.constData() + written,
            static_cast<std::size_t>(std::min(pieceSize, bytes.size() - written)));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        written += count;
    }
}

} // namespace Tavrin::Diagnostics
