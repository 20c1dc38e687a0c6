#pragma once

#include "Core/Support/FileDescriptor.h"

#include <sys/types.h>
#include <utility>

namespace Tavrin {

class ChildWatcher;

/// A helper process that has been started. It ends with this object, with all that it started itself, and
/// is collected. Main thread.
class FetchHelper {
public:
    FetchHelper() = default;
    /// The watcher outlives this. Nobody else waits for the child, so that its number stays its own.
    FetchHelper(ChildWatcher& children, pid_t pid, FileDescriptor output)
        : m_children(&children)
        , m_pid(pid)
        , m_output(std::move(output))
    {
    }
    FetchHelper(FetchHelper&& other) noexcept
        : m_children(other.m_children)
        , m_pid(std::exchange(other.m_pid, -1))
        , m_output(std::move(other.m_output))
    {
    }
    FetchHelper& operator=(FetchHelper&& other) noexcept
    {
        std::swap(m_children, other.m_children);
        std::swap(m_pid, other.m_pid);
        m_output = std::move(other.m_output);
        return *this;
    }
    FetchHelper(const FetchHelper&) = delete;
    FetchHelper& operator=(const FetchHelper&) = delete;
    ~FetchHelper();

    /// Reading end of what the helper writes.
    int output() const { return m_output.number(); }

private:
    ChildWatcher* m_children = nullptr;
    pid_t m_pid = -1;
    FileDescriptor m_output;
};

} // namespace Tavrin
