#pragma once

#include "Core/Support/FileDescriptor.h"
#include "Platform/Linux/Process/ChildProcess.h"

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace Tavrin {

class ChildWatcher;

/// A tool that has been started, or the reason why it has not.
struct StartedTool {
    SpawnResult child;
    /// What it writes to standard error, as far as that is kept.
    FileDescriptor errors;
};

/// Starts a tool. Executing a program can wait for a disk: not for the main thread.
StartedTool startTool(const QByteArrayList& arguments);

/// How a tool ended.
struct ToolResult {
    enum class End { success, failure, timeout };
    End end = End::success;
    /// Why it failed, in words; empty after success.
    QString reason;
};

/// One run of a tool, from its start to its end. Main thread.
class RunningTool : public QObject {
    Q_OBJECT

public:
    using Completion = std::function<void(const ToolResult&)>;
    /// What becomes of the tool if this object goes first.
    enum class Farewell { leave, end };

    /// `children` outlives the tool. After `limit` (none if it is zero) the tool is ended, with all that is
    /// in its process group. The completion is called once, never from within; then this object deletes
    /// itself.
    RunningTool(ChildWatcher& children, StartedTool tool, std::chrono::seconds limit, Farewell farewell,
        Completion completion, QObject* parent);
    ~RunningTool() override;

private:
    void giveUp();
    void finish(int exitCode);
    void complete(const ToolResult& result);
    void endGroup();
    QString firstLineOfErrors() const;

    StartedTool m_tool;
    Farewell m_farewell;
    Completion m_completion;
    QTimer m_limit;
    bool m_isLate = false;
};

} // namespace Tavrin
