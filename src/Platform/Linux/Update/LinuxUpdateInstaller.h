#pragma once

#include "Core/Support/Mailbox.h"
#include "Core/Support/WorkerPool.h"
#include "Core/Update/UpdateInstaller.h"
#include "Core/Update/UpdaterScript.h"

#include <QByteArray>

namespace Tavrin {

class ChildWatcher;

/// Where an update goes here: the bundle in `home`, a folder with bin/Tavrin in it, which finds the rest of
/// the bundle by itself.
UpdaterTarget linuxUpdaterTarget(const QString& home);

/// What an installer works with.
struct LinuxUpdatePlaces {
    /// Path of tavrin-fetch.
    QString helper;
    /// As in UserTemporaryFolder.
    QString runtimeDirectory;
    QString cacheHome;
    /// The user's home; below it lies the installed bundle.
    QString home;
    /// Runs the updater script.
    QByteArray shell = "/bin/bash";
};

/// Downloads through `tavrin-fetch`, a process for each download, and hands the rest to a shell script that
/// survives us. Main thread; all that waits for a disk happens on threads of its own.
class LinuxUpdateInstaller : public UpdateInstaller {
public:
    /// The watcher outlives this.
    LinuxUpdateInstaller(ChildWatcher& children, LinuxUpdatePlaces places);

    std::unique_ptr<ArchiveDownload> download(
        const QUrl& address, std::chrono::milliseconds silence, DownloadHandlers handlers) override;
    void install(const QString& archive, InstallCompletion completion) override;

private:
    ChildWatcher& m_children;
    LinuxUpdatePlaces m_places;
    Mailbox m_mailbox;
    WorkerPool m_workers;
};

} // namespace Tavrin
