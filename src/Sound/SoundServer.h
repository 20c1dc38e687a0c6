#pragma once

#include "Sound/VolumeChange.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop-api.h>
#include <string>
#include <vector>

namespace Tavrin {

/// The default output of the user's sound server, over one connection. Changes are carried out in order;
/// those that come while the server is busy with others are carried out together. Lives on its main loop.
class SoundServer {
public:
    /// Called once for each change, in order. An empty reason: it is done.
    using Answer = std::function<void(const std::string& reason)>;
    /// Called when nothing works any more. Every change has been answered, and those that still come fail for
    /// the same reason.
    using End = std::function<void()>;

    SoundServer(pa_mainloop_api& loop, Answer answer, End end);

    /// The first change connects.
    void change(VolumeChange change);

private:
    struct ContextDeleter {
        void operator()(pa_context* context) const;
    };

    void connect();
    void handleState();
    void askForSink();
    void handleSink(const pa_sink_info* sink, int end);
    void apply(const pa_sink_info& sink);
    void request(pa_operation* operation);
    void handleResult(bool succeeded);
    void fail(const std::string& what);

    pa_mainloop_api& m_loop;
    Answer m_answer;
    End m_end;
    std::vector<VolumeChange> m_waiting;
    /// How many of those waiting are being carried out, by how many requests that are not answered yet.
    std::size_t m_batch = 0;
    int m_requests = 0;
    bool m_isReady = false;
    /// Why nothing works any more, empty before.
    std::string m_failure;
    std::unique_ptr<pa_context, ContextDeleter> m_context;
};

} // namespace Tavrin
