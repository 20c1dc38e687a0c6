#include "UI/Editor/KeyRecorder.h"

#include "Core/Model/KeyCodeHelper.h"

namespace Tavrin {
namespace {

constexpr std::uint32_t escapeKey = 53;

} // namespace

KeyRecorder::KeyRecorder(KeyCapture& capture, std::uint32_t& keyCode, std::uint32_t& modifiers)
    : m_capture(capture)
    , m_keyCode(keyCode)
    , m_modifiers(modifiers)
{
}

KeyRecorder::~KeyRecorder()
{
    if (m_isRecording)
        m_capture.stop();
}

QStringList KeyRecorder::modifierBadges() const
{
    return KeyCodeHelper::modifierNames(m_modifiers);
}

QString KeyRecorder::keyBadge() const
{
    return m_keyCode != 0 ? KeyCodeHelper::string(m_keyCode) : QString();
}

void KeyRecorder::start()
{
    if (m_isRecording)
        return;
    setRecording(true);
    m_capture.start({
        [this](std::uint32_t keyCode, std::uint32_t modifiers) { handleKeyDown(keyCode, modifiers); },
        [this] { setRecording(false); },
    });
}

void KeyRecorder::stop()
{
    if (!m_isRecording)
        return;
    m_capture.stop();
    setRecording(false);
}

void KeyRecorder::toggle()
{
    m_isRecording ? stop() : start();
}

void KeyRecorder::clear()
{
    setCombination(0, 0);
    stop();
}

void KeyRecorder::handleKeyDown(std::uint32_t keyCode, std::uint32_t modifiers)
{
    if (keyCode != escapeKey)
        setCombination(keyCode, modifiers & carbonModifierMask);
    stop();
}

void KeyRecorder::setCombination(std::uint32_t keyCode, std::uint32_t modifiers)
{
    if (m_keyCode == keyCode && m_modifiers == modifiers)
        return;
    m_keyCode = keyCode;
    m_modifiers = modifiers;
    Q_EMIT combinationChanged();
}

void KeyRecorder::setRecording(bool isRecording)
{
    if (std::exchange(m_isRecording, isRecording) != isRecording)
        Q_EMIT recordingChanged();
}

} // namespace Tavrin
