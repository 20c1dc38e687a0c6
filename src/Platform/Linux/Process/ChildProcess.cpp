#include "Platform/Linux/Process/ChildProcess.h"

#include "Core/Support/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <vector>

namespace Tavrin {
namespace {

class SpawnActions {
public:
    SpawnActions() { posix_spawn_file_actions_init(&m_actions); }
    ~SpawnActions() { posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(SpawnActions)

    /// Each adding function returns 0 or an error number, here and below.
    int connect(int source, int target)
    {
        const int mode = target == STDIN_FILENO ? O_RDONLY : O_WRONLY;
        return source < 0 ? posix_spawn_file_actions_addopen(&m_actions, target, "/dev/null", mode, 0)
                          : posix_spawn_file_actions_adddup2(&m_actions, source, target);
    }
    int closeFrom(int lowest) { return posix_spawn_file_actions_addclosefrom_np(&m_actions, lowest); }
    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

class SpawnAttributes {
public:
    SpawnAttributes()
    {
        posix_spawnattr_init(&m_attributes);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(
            &m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&m_attributes); }
    Q_DISABLE_COPY_MOVE(SpawnAttributes)

    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

/// The strings as the system wants them: pointers with a null pointer behind the last.
std::vector<char*> pointers(QByteArrayList& strings)
{
    std::vector<char*> result;
    result.reserve(static_cast<std::size_t>(strings.size()) + 1);
    for (QByteArray& text : strings)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

QByteArrayList changedEnvironment(const QList<ChildRequest::Variable>& changes)
{
    QByteArrayList result;
    for (char** entry = environ; entry && *entry; ++entry) {
        const QByteArray text(*entry);
        const QByteArray name = text.left(text.indexOf('='));
        const bool changed = std::any_of(
            changes.begin(), changes.end(), [&](const auto& change) { return change.name == name; });
        if (!changed)
            result.append(text);
    }
    for (const auto& change : changes) {
        if (change.value)
            result.append(change.name + '=' + *change.value);
    }
    return result;
}

/// A copy above the standard three, so that connecting one of those cannot overwrite the other's
/// source: a program started with its standard descriptors closed gets pipes numbered 0 to 2.
FileDescriptor sourceDescriptor(int number)
{
    return FileDescriptor(number < 0 ? -1 : fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

SpawnResult failure(int error)
{
    return {-1, qt_error_string(error)};
}

} // namespace

SpawnResult spawn(const ChildRequest& request)
{
    std::array<FileDescriptor, 3> sources;
    const std::array wanted{request.standardInput, request.standardOutput, request.standardError};
    for (std::size_t target = 0; target < wanted.size(); ++target) {
        sources[target] = sourceDescriptor(wanted[target]);
        if (wanted[target] >= 0 && !sources[target].isOpen())
            return failure(errno);
    }
    if (request.arguments.isEmpty())
        return failure(EINVAL);

    SpawnActions actions;
    const std::array added{
        actions.connect(sources[STDIN_FILENO].number(), STDIN_FILENO),
        actions.connect(sources[STDOUT_FILENO].number(), STDOUT_FILENO),
        actions.connect(sources[STDERR_FILENO].number(), STDERR_FILENO),
        actions.closeFrom(STDERR_FILENO + 1),
    };
    if (const auto* error = std::find_if(added.begin(), added.end(), [](int code) { return code != 0; });
        error != added.end())
        return failure(*error);

    QByteArrayList arguments = request.arguments;
    QByteArrayList environment = changedEnvironment(request.environmentChanges);
    pid_t pid = -1;
    const int error = posix_spawnp(&pid, arguments.constFirst().constData(), actions.get(),
        SpawnAttributes().get(), pointers(arguments).data(), pointers(environment).data());
    return error ? failure(error) : SpawnResult{pid, {}};
}

} // namespace Tavrin
