#include "Platform/Linux/Update/LinuxUpdateInstaller.h"

#include "Core/Storage/AtomicFile.h"
#include "Fetch/DownloadOrder.h"
#include "Fetch/FetchFailures.h"
#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "Platform/Linux/Update/RunningDownload.h"
#include "Platform/Linux/Update/UserTemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>

namespace Tavrin {
namespace {

/// An empty file for what arrives, alone in its folder but for what is finished.
TemporaryFolderResult makeIncompleteFile(const UserTemporaryFolder& temporaryFolder)
{
    TemporaryFolderResult folder = temporaryFolder.prepare();
    if (!folder.error.isEmpty())
        return folder;
    QDir directory(folder.path);
    const QString prefix = u'.' + updateArchiveName + u'.';
    // A program that was killed could not tidy up.
    for (const QString& name : directory.entryList({prefix + u"??????"}, QDir::Files | QDir::Hidden))
        directory.remove(name);
    QByteArray file = QFile::encodeName(directory.filePath(prefix)) + "XXXXXX";
    if (!FileDescriptor(mkostemp(file.data(), O_CLOEXEC)).isOpen())
        return {{}, qt_error_string(errno)};
    return {QFile::decodeName(file), {}};
}

/// The script unpacks into one folder and copies from there into another; where one of them is full, it would
/// put half a program in the place of a whole one.
bool hasRoomFor(const QString& archive, const QString& folder)
{
    // Programs and libraries pack to about a third.
    constexpr quint64 unpackedToPacked = 8;
    const auto needed = static_cast<quint64>(QFileInfo(archive).size()) * unpackedToPacked;
    return availableSpace(folder) >= needed;
}

/// Why the script would do nothing but harm; empty if it can do its work.
QString obstacle(const QString& archive, const QString& destination)
{
    if (!isSafeInUpdaterScript(destination))
        return QStringLiteral("đường dẫn %1 có ký tự đặc biệt").arg(destination);
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty())
        return QStringLiteral("không tìm thấy chương trình unzip");
    const QString parent = QFileInfo(destination).path();
    if (!QDir().mkpath(parent) || !QFileInfo(parent).isWritable())
        return QStringLiteral("không ghi được vào thư mục %1").arg(parent);
    for (const QString& folder : {QDir::tempPath(), parent}) {
        if (!hasRoomFor(archive, folder))
            return QStringLiteral("không đủ chỗ trống trong thư mục %1").arg(folder);
    }
    return {};
}

/// Ours, for a child to inherit; -1 if we were started without it.
int inherited(int descriptor)
{
    return fcntl(descriptor, F_GETFD) >= 0 ? descriptor : -1;
}

SpawnResult startUpdater(const QByteArray& shell, const QString& home, const QString& archive)
{
    const UpdaterTarget target = linuxUpdaterTarget(home);
    if (const QString reason = obstacle(archive, target.destination); !reason.isEmpty())
        return {-1, reason};
    const QString script = QFileInfo(archive).path() + u'/' + updaterScriptName;
    // If it cannot be written, the shell finds nothing to run, or what stood there before.
    AtomicFile::write(script, updaterScript(target, archive).toUtf8());
    ChildRequest request;
    request.arguments = {shell, QFile::encodeName(script)};
    request.standardInput = inherited(STDIN_FILENO);
    request.standardOutput = inherited(STDOUT_FILENO);
    request.standardError = inherited(STDERR_FILENO);
    return spawn(request);
}

} // namespace

UpdaterTarget linuxUpdaterTarget(const QString& home)
{
    const QString destination = home + u"/.local/opt/Tavrin.app";
    return {
        destination,
        // Files from the network carry no mark here.
        {},
        // In a session of its own: it outlives the script and the terminal that we may have come from.
        u"setsid -f \"" + destination + u"/bin/Tavrin\"",
    };
}

LinuxUpdateInstaller::LinuxUpdateInstaller(ChildWatcher& children, LinuxUpdatePlaces places)
    : m_children(children)
    , m_places(std::move(places))
{
}

std::unique_ptr<ArchiveDownload> LinuxUpdateInstaller::download(
    const QUrl& address, std::chrono::milliseconds silence, DownloadHandlers handlers)
{
    auto download = std::make_unique<RunningDownload>(silence, std::move(handlers));
    const auto startInto = [this, address, waiting = QPointer<RunningDownload>(download.get())](
                               const TemporaryFolderResult& file) {
        if (!waiting) {
            if (file.error.isEmpty())
                QFile::remove(file.path);
            return;
        }
        if (!file.error.isEmpty())
            return waiting->fail(SaveFailure{file.error});
        waiting->setIncompleteFile(file.path);
        const QByteArrayList arguments = QByteArrayList{QFile::encodeName(m_places.helper)}
            + downloadArguments({address, QFile::encodeName(file.path)});
        startHelper(
            arguments, HelperChannel::answers, m_children, m_mailbox.address(), [waiting](HelperStart start) {
                if (waiting && start.process.isRunning())
                    waiting->listen(std::move(start.process));
                else if (waiting)
                    waiting->fail(DownloadFailure{helperMissing(start.error)});
            });
    };
    m_workers.run([places = m_places, address = m_mailbox.address(), startInto] {
        const auto file = makeIncompleteFile({places.runtimeDirectory, places.cacheHome});
        address.post([startInto, file] { startInto(file); });
    });
    return download;
}

void LinuxUpdateInstaller::install(const QString& archive, InstallCompletion completion)
{
    m_workers.run([watcher = &m_children, places = m_places, archive, address = m_mailbox.address(),
                      completion = std::move(completion)] {
        const SpawnResult updater = startUpdater(places.shell, places.home, archive);
        address.post([watcher, updater, completion] {
            if (updater)
                watcher->watch(updater.pid);
            completion(updater ? std::nullopt : std::optional(updater.error));
        });
    });
}

} // namespace Tavrin
