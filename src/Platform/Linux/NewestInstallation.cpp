#include "Platform/Linux/NewestInstallation.h"

#include "Core/Update/VersionComparison.h"
#include "Platform/Linux/Update/LinuxUpdateInstaller.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <unistd.h>

namespace Tavrin {
namespace {

/// Version of the copy below this prefix; empty without one.
QString installedVersion(const QString& prefix)
{
    constexpr qint64 longestVersion = 64;
    QFile file(prefix + QStringLiteral(TAVRIN_VERSION_FILE));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longestVersion)).trimmed()
                                          : QString();
}

/// Somebody else's program is none that this user may be made to run: an administrator's start can have kept
/// another user's home.
bool isTrusted(const QFileInfo& executable)
{
    const uint owner = executable.ownerId();
    return executable.isExecutable() && (owner == geteuid() || owner == 0);
}

QString executableBelow(const QString& prefix)
{
    return prefix + u"/bin/Tavrin";
}

} // namespace

QStringList installationPrefixes(const QString& home)
{
    return {QStringLiteral("/usr"), linuxUpdaterTarget(home).destination};
}

QString newerInstallation(const QString& executable, const QStringList& prefixes)
{
    QString newest;
    QString newestVersion;
    for (const QString& prefix : prefixes) {
        if (QFileInfo(executableBelow(prefix)).canonicalFilePath() == executable)
            newestVersion = installedVersion(prefix);
    }
    // Files are compared with files, so that two copies never hand over to each other.
    if (newestVersion.isEmpty())
        return {};
    for (const QString& prefix : prefixes) {
        const QString candidate = executableBelow(prefix);
        const QString version = installedVersion(prefix);
        if (std::is_gt(compareVersions(version, newestVersion)) && isTrusted(QFileInfo(candidate))) {
            newest = candidate;
            newestVersion = version;
        }
    }
    return newest;
}

void becomeNewestInstallation()
{
    const QString executable = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    const QByteArray newest
        = QFile::encodeName(newerInstallation(executable, installationPrefixes(QDir::homePath())));
    if (newest.isEmpty())
        return;
    // If it cannot run after all, this copy does.
    execl(newest.constData(), newest.constData(), nullptr);
}

} // namespace Tavrin
