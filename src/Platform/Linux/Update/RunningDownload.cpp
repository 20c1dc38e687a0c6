#include "Platform/Linux/Update/RunningDownload.h"

#include "Core/Update/UpdaterScript.h"
#include "Fetch/FetchFailures.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace Tavrin {

RunningDownload::RunningDownload(
    std::chrono::milliseconds silence, UpdateInstaller::DownloadHandlers handlers)
    : m_handlers(std::move(handlers))
{
    m_silence.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, [this] { finish(DownloadFailure{serverSilent()}); });
    m_silence.start(silence);
}

RunningDownload::~RunningDownload()
{
    if (!m_incompleteFile.isEmpty())
        QFile::remove(m_incompleteFile);
}

void RunningDownload::listen(HelperProcess helper)
{
    if (!m_handlers.ended)
        return;
    m_helper = std::move(helper);
    m_notifier = std::make_unique<QSocketNotifier>(m_helper.channel(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &RunningDownload::read);
}

void RunningDownload::read()
{
    std::array<char, 4 * 1024> piece{};
    const ssize_t count = ::read(m_helper.channel(), piece.data(), piece.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0)
        return finish(DownloadFailure{helperBrokenOff()});
    m_received.append(piece.data(), count);
    for (qsizetype end = 0; (end = m_received.indexOf('\n')) >= 0;) {
        const QByteArray line = m_received.first(end);
        m_received.remove(0, end + 1);
        if (!readLine(line))
            return;
    }
    if (m_received.size() > longestDownloadReport)
        finish(DownloadFailure{helperMalformed()});
}

bool RunningDownload::readLine(const QByteArray& line)
{
    const auto report = decodeDownloadReport(line);
    if (!report) {
        finish(DownloadFailure{helperMalformed()});
    } else if (const auto* broken = std::get_if<DownloadBroken>(&*report)) {
        finish(DownloadFailure{broken->reason});
    } else if (std::holds_alternative<DownloadComplete>(*report)) {
        finish(keep());
    } else {
        m_silence.start();
        const auto& progress = std::get<DownloadProgress>(*report);
        const QPointer<RunningDownload> self(this);
        m_handlers.progress(progress.written, progress.expected);
        return self;
    }
    return false;
}

DownloadResult RunningDownload::keep()
{
    const QString archive = QFileInfo(m_incompleteFile).path() + u'/' + updateArchiveName;
    const QByteArray name = QFile::encodeName(archive);
    // What stands there from an earlier time; that there is usually nothing is no error.
    std::error_code ignored;
    std::filesystem::remove_all(name.toStdString(), ignored);
    if (std::rename(QFile::encodeName(m_incompleteFile).constData(), name.constData()) != 0)
        return SaveFailure{qt_error_string(errno)};
    m_incompleteFile.clear();
    return DownloadedArchive{archive};
}

void RunningDownload::finish(const DownloadResult& result)
{
    const auto ended = std::exchange(m_handlers.ended, nullptr);
    if (!ended)
        return;
    m_silence.stop();
    m_notifier.reset();
    m_helper = {};
    ended(result);
}

} // namespace Tavrin
