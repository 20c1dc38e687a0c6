#pragma once

#include <QString>
#include <QStringList>

namespace Tavrin::ApplicationChoice {

/// What every panel for choosing an application says and shows.
inline QString title()
{
    return QStringLiteral("Chọn Ứng Dụng");
}

/// Where it starts.
inline QString folder()
{
    return QStringLiteral("/usr/share/applications");
}

/// The name of what it shows.
inline QString filterName()
{
    return QStringLiteral("Ứng dụng");
}

inline QStringList filePatterns()
{
    return {QStringLiteral("*.desktop"), QStringLiteral("*.AppImage")};
}

/// Of programs, whose names have no pattern.
inline QStringList contentTypes()
{
    return {QStringLiteral("application/x-executable"), QStringLiteral("application/x-pie-executable"),
        QStringLiteral("application/x-shellscript")};
}

} // namespace Tavrin::ApplicationChoice
