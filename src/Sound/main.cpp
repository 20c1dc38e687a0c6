// Changes the volume for the program in a process of its own: what the sound server's library takes of
// memory, and what a server that hangs may block, ends with this process. Reads one byte for each change
// from standard input, answers each with a line, empty or the reason why it failed, and ends with its input
// or with the first failure.
#include "Sound/SoundServer.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <pulse/mainloop.h>
#include <unistd.h>

using namespace Tavrin;

namespace {

std::optional<VolumeChange> volumeChange(char byte)
{
    switch (const auto change = static_cast<VolumeChange>(byte)) {
    case VolumeChange::up:
    case VolumeChange::down:
    case VolumeChange::toggleMute:
        return change;
    }
    return std::nullopt;
}

/// Writes one line. Whoever does not read any more closes our input as well.
void answer(const std::string& reason)
{
    const std::string line = reason + '\n';
    [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, line.data(), line.size());
}

/// What stands between standard input and the sound server.
class Conversation {
public:
    explicit Conversation(pa_mainloop& loop)
        : m_loop(loop)
        , m_server(*pa_mainloop_get_api(&loop), answer, [this] { end(EXIT_FAILURE); })
    {
        auto* api = pa_mainloop_get_api(&loop);
        m_input = api->io_new(
            api, STDIN_FILENO, PA_IO_EVENT_INPUT,
            [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
                static_cast<Conversation*>(self)->read();
            },
            this);
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    ~Conversation() { pa_mainloop_get_api(&m_loop)->io_free(m_input); }

private:
    void read()
    {
        std::array<char, 256> bytes{};
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0)
            return end(EXIT_SUCCESS);
        for (ssize_t index = 0; index < count; ++index) {
            if (const auto change = volumeChange(bytes[static_cast<std::size_t>(index)]))
                m_server.change(*change);
            else
                return refuse();
        }
    }

    void refuse()
    {
        std::fputs("Cách dùng: tavrin-sound, mỗi byte vào là +, - hoặc m\n", stderr);
        end(EXIT_FAILURE);
    }

    void end(int status) { pa_mainloop_quit(&m_loop, status); }

    pa_mainloop& m_loop;
    SoundServer m_server;
    pa_io_event* m_input = nullptr;
};

} // namespace

int main()
{
    const std::unique_ptr<pa_mainloop, decltype(&pa_mainloop_free)> loop(pa_mainloop_new(), pa_mainloop_free);
    const Conversation conversation(*loop);
    int status = EXIT_FAILURE;
    pa_mainloop_run(loop.get(), &status);
    return status;
}
