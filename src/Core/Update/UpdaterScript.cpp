#include "Core/Update/UpdaterScript.h"

#include <QStringList>

namespace Tavrin {

UpdaterTarget referenceUpdaterTarget()
{
    return {
        QStringLiteral("/Applications/Tavrin.app"),
        QStringLiteral(R"(xattr -cr "/Applications/Tavrin.app" 2>/dev/null || true)"),
        QStringLiteral(R"(open "/Applications/Tavrin.app")"),
    };
}

QString updaterScript(const UpdaterTarget& target, const QString& archive)
{
    const QString indent(4, u' ');
    QStringList lines{
        QStringLiteral("#!/bin/bash"),
        QStringLiteral("sleep 1.2"),
        QStringLiteral("TMP_DIR=$(mktemp -d)"),
        u"unzip -q \"" + archive + u"\" -d \"$TMP_DIR\"",
        {},
        QStringLiteral(
            R"(TARGET_APP=$(find "$TMP_DIR" -maxdepth 2 -name "Tavrin.app" -o -name "*.app" | head -n 1))"),
        {},
        QStringLiteral(R"(if [ -n "$TARGET_APP" ] && [ -d "$TARGET_APP" ]; then)"),
        indent + u"killall Tavrin 2>/dev/null || true",
        indent + u"sleep 0.5",
        indent + u"rm -rf \"" + target.destination + u'"',
        indent + u"cp -R \"$TARGET_APP\" \"" + target.destination + u'"',
    };
    if (!target.clearCommand.isEmpty())
        lines.append(indent + target.clearCommand);
    lines += {
        indent + target.openCommand,
        QStringLiteral("fi"),
        {},
        QStringLiteral(R"(rm -rf "$TMP_DIR")"),
        u"rm -f \"" + archive + u'"',
    };
    return lines.join(u'\n');
}

bool isSafeInUpdaterScript(const QString& path)
{
    return !path.contains(u'"') && !path.contains(u'$') && !path.contains(u'`') && !path.contains(u'\\');
}

} // namespace Tavrin
