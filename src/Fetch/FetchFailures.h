#pragma once

#include <QString>

namespace Tavrin {

/// What either end of the pipe says of a fetch that failed between them, for the user.

inline QString helperMissing(const QString& reason)
{
    return QStringLiteral("Không chạy được chương trình tải (%1).").arg(reason);
}

inline QString helperMalformed()
{
    return QStringLiteral("Chương trình tải trả lời sai quy cách.");
}

inline QString helperBrokenOff()
{
    return QStringLiteral("Chương trình tải đã dừng giữa chừng.");
}

inline QString serverSilent()
{
    return QStringLiteral("Hết thời gian chờ máy chủ trả lời.");
}

} // namespace Tavrin
