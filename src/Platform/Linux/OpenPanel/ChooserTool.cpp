#include "Platform/Linux/OpenPanel/ChooserTool.h"

#include "Platform/Linux/OpenPanel/ApplicationChoice.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <unistd.h>

namespace Tavrin {
namespace {

/// Bytes; no path is longer.
constexpr qsizetype longestAnswer = 16 * 1024;

QByteArrayList zenity(std::uintptr_t window)
{
    // Programs have no pattern: besides applications, both tools offer all files.
    const QString patterns = ApplicationChoice::filePatterns().join(u' ');
    QByteArrayList words{"zenity", "--file-selection", "--title=" + ApplicationChoice::title().toUtf8(),
        "--filename=" + QFile::encodeName(ApplicationChoice::folder()) + '/',
        "--file-filter=" + ApplicationChoice::filterName().toUtf8() + " | " + patterns.toUtf8(),
        "--file-filter=* | *"};
    if (window)
        words << "--modal"
              << "--attach=" + QByteArray::number(static_cast<qulonglong>(window));
    return words;
}

QByteArrayList kdialog(std::uintptr_t window)
{
    QByteArrayList words{"kdialog", "--title", ApplicationChoice::title().toUtf8()};
    if (window)
        words << "--attach" << QByteArray::number(static_cast<qulonglong>(window));
    const QString patterns = ApplicationChoice::filePatterns().join(u' ');
    return words << "--getopenfilename" << QFile::encodeName(ApplicationChoice::folder())
                 << ApplicationChoice::filterName().toUtf8() + " (" + patterns.toUtf8() + ")|* (*)";
}

} // namespace

QList<QByteArrayList> chooserTools(const QByteArray& currentDesktop, std::uintptr_t window)
{
    QList<QByteArrayList> tools{zenity(window), kdialog(window)};
    if (currentDesktop.split(':').contains("KDE"))
        std::ranges::reverse(tools);
    return tools;
}

ChooserTool::ChooserTool(ChildWatcher& children, QList<QByteArrayList> programs, Completion completion)
    : m_children(children)
    , m_programs(std::move(programs))
    , m_completion(std::move(completion))
{
    startNext();
}

ChooserTool::~ChooserTool() = default;

void ChooserTool::startNext()
{
    startHelper(m_programs.takeFirst(), HelperChannel::answers, m_children, m_mailbox.address(),
        [this](HelperStart start) { take(std::move(start)); });
}

void ChooserTool::take(HelperStart start)
{
    if (start.process.isRunning()) {
        m_helper = std::move(start.process);
        m_notifier = std::make_unique<QSocketNotifier>(m_helper.channel(), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &ChooserTool::read);
    } else if (m_programs.isEmpty()) {
        std::exchange(m_completion, nullptr)(std::nullopt);
    } else {
        startNext();
    }
}

void ChooserTool::read()
{
    std::array<char, 4096> piece{};
    const ssize_t count = ::read(m_helper.channel(), piece.data(), piece.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    m_output.append(piece.data(), std::max<ssize_t>(count, 0));
    if (count > 0 && m_output.size() < longestAnswer)
        return;
    m_notifier.reset();
    m_helper = {};
    // A path may hold any character; only the line's end is the program's own.
    if (m_output.endsWith('\n'))
        m_output.chop(1);
    const bool isPath = m_output.startsWith('/') && m_output.size() < longestAnswer;
    const auto path = isPath ? std::optional(QFile::decodeName(m_output)) : std::nullopt;
    std::exchange(m_completion, nullptr)(Answer(path));
}

} // namespace Tavrin
