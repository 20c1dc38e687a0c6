#include "Platform/Linux/Network/FetchHelper.h"

#include "Platform/Linux/Process/ChildWatcher.h"

#include <csignal>

namespace Tavrin {

FetchHelper::~FetchHelper()
{
    if (m_pid < 0)
        return;
    // It leads a process group of its own. Only now is it waited for, so neither number can be another's.
    kill(-m_pid, SIGKILL);
    m_children->watch(m_pid);
}

} // namespace Tavrin
