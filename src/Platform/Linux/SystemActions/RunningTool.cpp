#include "Platform/Linux/SystemActions/RunningTool.h"

#include "Platform/Linux/Process/ChildWatcher.h"

#include <QPointer>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Tavrin {
namespace {

/// Bytes of the errors that are kept: the reason stands in the first line.
constexpr std::size_t keptErrors = 4096;

/// A file in memory that cannot grow, so that nobody has to read what a tool writes while it runs. Whoever
/// writes more, perhaps long after we have gone, is told that it cannot, and is not ended as by a pipe.
FileDescriptor errorFile()
{
    FileDescriptor file(memfd_create("tool-errors", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (file.isOpen() && ftruncate(file.number(), keptErrors) == 0)
        fcntl(file.number(), F_ADD_SEALS, F_SEAL_GROW | F_SEAL_SHRINK);
    return file;
}

} // namespace

StartedTool startTool(const QByteArrayList& arguments)
{
    FileDescriptor errors = errorFile();
    ChildRequest request;
    request.arguments = arguments;
    request.standardError = errors.number();
    return {spawn(request), std::move(errors)};
}

RunningTool::RunningTool(ChildWatcher& children, StartedTool tool, std::chrono::seconds limit,
    Farewell farewell, Completion completion, QObject* parent)
    : QObject(parent)
    , m_tool(std::move(tool))
    , m_farewell(farewell)
    , m_completion(std::move(completion))
{
    if (!m_tool.child) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                complete({ToolResult::End::failure, m_tool.child.error});
            },
            Qt::QueuedConnection);
        return;
    }
    children.watch(m_tool.child.pid, [self = QPointer(this)](int exitCode) {
        if (self)
            self->finish(exitCode);
    });
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &RunningTool::giveUp);
    if (limit > std::chrono::seconds::zero())
        m_limit.start(limit);
}

RunningTool::~RunningTool()
{
    if (m_farewell == Farewell::end && m_completion)
        endGroup();
}

void RunningTool::giveUp()
{
    m_isLate = true;
    endGroup();
}

void RunningTool::finish(int exitCode)
{
    if (m_isLate) {
        const auto seconds = m_limit.intervalAsDuration() / std::chrono::seconds(1);
        return complete({ToolResult::End::timeout,
            QStringLiteral("Chương trình không trả lời sau %1 giây").arg(seconds)});
    }
    if (exitCode == 0)
        return complete({});
    const QString line = firstLineOfErrors();
    complete({ToolResult::End::failure,
        line.isEmpty() ? QStringLiteral("Chương trình kết thúc với mã %1").arg(exitCode) : line});
}

void RunningTool::complete(const ToolResult& result)
{
    m_limit.stop();
    deleteLater();
    std::exchange(m_completion, nullptr)(result);
}

/// The tool leads a group of its own, and is not collected before finish(): the number is still its own.
void RunningTool::endGroup()
{
    if (m_tool.child)
        kill(-m_tool.child.pid, SIGKILL);
}

QString RunningTool::firstLineOfErrors() const
{
    std::array<char, keptErrors> text{};
    const ssize_t count = pread(m_tool.errors.number(), text.data(), text.size(), 0);
    const QByteArray written(text.data(),
        static_cast<qsizetype>(qstrnlen(text.data(), count > 0 ? static_cast<size_t>(count) : 0)));
    return QString::fromUtf8(written.trimmed().split('\n').constFirst());
}

} // namespace Tavrin
