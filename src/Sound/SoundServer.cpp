#include "Sound/SoundServer.h"

#include "Sound/VolumeLevel.h"

#include <pulse/error.h>
#include <pulse/operation.h>
#include <utility>

namespace Tavrin {
namespace {

static_assert(fullVolume == PA_VOLUME_NORM);

/// The server resolves this name itself: it is the default at the moment of the request.
constexpr auto defaultSink = "@DEFAULT_SINK@";

/// Gives the loudest channel this volume and the others theirs in proportion.
void setLoudest(pa_cvolume& volume, std::uint32_t loudest)
{
    const bool isBalanced = pa_cvolume_channels_equal_to(&volume, volume.values[0]) != 0;
    // Of channels that are all at zero nobody knows the proportions any more.
    pa_cvolume_scale(&volume, isBalanced || loudest > silentVolume ? loudest : silentVolume);
}

} // namespace

void SoundServer::ContextDeleter::operator()(pa_context* context) const
{
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

SoundServer::SoundServer(pa_mainloop_api& loop, Answer answer, End end)
    : m_loop(loop)
    , m_answer(std::move(answer))
    , m_end(std::move(end))
{
}

void SoundServer::change(VolumeChange change)
{
    if (!m_failure.empty())
        return m_answer(m_failure);
    m_waiting.push_back(change);
    if (!m_context)
        connect();
    else if (m_isReady && m_requests == 0)
        askForSink();
}

void SoundServer::connect()
{
    m_context.reset(pa_context_new(&m_loop, "Tavrin"));
    pa_context_set_state_callback(
        m_context.get(), [](pa_context*, void* self) { static_cast<SoundServer*>(self)->handleState(); },
        this);
    // Where the server is started by its first client, we may be the first: its settings say whether.
    pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr);
}

void SoundServer::handleState()
{
    const auto state = pa_context_get_state(m_context.get());
    if (state == PA_CONTEXT_READY) {
        m_isReady = true;
        askForSink();
    } else if (!PA_CONTEXT_IS_GOOD(state)) {
        fail(m_isReady ? "Mất kết nối với máy chủ âm thanh" : "Không kết nối được máy chủ âm thanh");
    }
}

void SoundServer::askForSink()
{
    request(pa_context_get_sink_info_by_name(
        m_context.get(), defaultSink,
        [](pa_context*, const pa_sink_info* sink, int end, void* self) {
            static_cast<SoundServer*>(self)->handleSink(sink, end);
        },
        this));
}

void SoundServer::handleSink(const pa_sink_info* sink, int end)
{
    if (sink)
        apply(*sink);
    else if (end < 0 && pa_context_errno(m_context.get()) == PA_ERR_NOENTITY)
        fail("Không có thiết bị phát âm thanh nào");
    else
        handleResult(end > 0);
}

void SoundServer::apply(const pa_sink_info& sink)
{
    const std::uint32_t loudest = pa_cvolume_max(&sink.volume);
    std::uint32_t newLoudest = loudest;
    bool isMuted = sink.mute != 0;
    for (const VolumeChange change : m_waiting) {
        newLoudest = changedVolume(newLoudest, change);
        isMuted = isMuted != (change == VolumeChange::toggleMute);
    }
    m_batch = m_waiting.size();

    const auto handle = [](pa_context*, int succeeded, void* self) {
        static_cast<SoundServer*>(self)->handleResult(succeeded != 0);
    };
    if (newLoudest != loudest) {
        pa_cvolume volume = sink.volume;
        setLoudest(volume, newLoudest);
        request(pa_context_set_sink_volume_by_index(m_context.get(), sink.index, &volume, handle, this));
    }
    if (isMuted != (sink.mute != 0))
        request(pa_context_set_sink_mute_by_index(m_context.get(), sink.index, isMuted, handle, this));
}

void SoundServer::request(pa_operation* operation)
{
    ++m_requests;
    if (operation)
        pa_operation_unref(operation);
    else
        handleResult(false);
}

void SoundServer::handleResult(bool succeeded)
{
    if (!succeeded)
        return fail("Không đổi được âm lượng");
    if (--m_requests > 0)
        return;
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(m_batch));
    for (; m_batch > 0; --m_batch)
        m_answer({});
    if (!m_waiting.empty())
        askForSink();
}

void SoundServer::fail(const std::string& what)
{
    m_failure = what + " (" + pa_strerror(pa_context_errno(m_context.get())) + ").";
    m_batch = 0;
    for (auto count = std::exchange(m_waiting, {}).size(); count > 0; --count)
        m_answer(m_failure);
    m_end();
}

} // namespace Tavrin
