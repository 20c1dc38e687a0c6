#include "Platform/Linux/Sound/VolumeControl.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <utility>
#include <vector>

namespace Tavrin {
namespace {

/// Bytes. No reason is as long as that.
constexpr qsizetype longestAnswer = 4096;

} // namespace

VolumeControl::VolumeControl(ChildWatcher& children, const QString& helper, const Limits& limits)
    : m_children(children)
    , m_path(QFile::encodeName(helper))
    , m_limits(limits)
{
    m_answerTimer.setSingleShot(true);
    m_answerTimer.callOnTimeout([this] {
        stopHelper();
        failAll(QStringLiteral("Máy chủ âm thanh không trả lời."));
    });
    m_idleTimer.setSingleShot(true);
    m_idleTimer.setInterval(limits.idle);
    m_idleTimer.callOnTimeout([this] { stopHelper(); });
}

VolumeControl::~VolumeControl() = default;

void VolumeControl::change(VolumeChange change, Failure failure)
{
    m_presses.push_back({change, std::move(failure), QDeadlineTimer(m_limits.answer)});
    updateTimers();
    if (m_helper.isRunning())
        send();
    else
        start();
}

void VolumeControl::start()
{
    if (std::exchange(m_isStarting, true))
        return;
    startHelper({m_path}, HelperChannel::conversation, m_children, m_mailbox.address(),
        [this](HelperStart start) { handleStart(std::move(start)); });
}

void VolumeControl::handleStart(HelperStart start)
{
    m_isStarting = false;
    if (!start.process.isRunning())
        return failAll(QStringLiteral("Không chạy được chương trình âm thanh (%1).").arg(start.error));
    m_helper = std::move(start.process);
    m_notifier = std::make_unique<QSocketNotifier>(m_helper.channel(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
    send();
    updateTimers();
}

void VolumeControl::stopHelper()
{
    m_notifier.reset();
    m_helper = {};
    m_answers.clear();
    m_sent = 0;
}

void VolumeControl::send()
{
    QByteArray bytes;
    for (std::size_t index = m_sent; index < m_presses.size(); ++index)
        bytes.append(static_cast<char>(m_presses[index].change));
    // What the helper has no room for follows its next answer. That it is gone is told by reading.
    const ssize_t count
        = ::send(m_helper.channel(), bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    m_sent += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
}

void VolumeControl::read()
{
    std::array<char, longestAnswer> piece{};
    const ssize_t count = ::read(m_helper.channel(), piece.data(), piece.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0 || m_answers.size() > longestAnswer)
        return tryAgain();
    m_answers.append(piece.data(), count);
    takeAnswers();
}

void VolumeControl::takeAnswers()
{
    std::vector<std::pair<Failure, QString>> failures;
    for (qsizetype end = 0; m_sent > 0 && (end = m_answers.indexOf('\n')) >= 0; --m_sent) {
        if (end > 0)
            failures.emplace_back(
                std::move(m_presses.front().failure), QString::fromUtf8(m_answers.first(end)));
        m_answers.remove(0, end + 1);
        m_presses.pop_front();
    }
    send();
    updateTimers();
    for (const auto& [failure, reason] : failures)
        failure(reason);
}

void VolumeControl::tryAgain()
{
    // A helper ends with its server, and that may be just when it is told of the next change: a new helper
    // gets it then. Once, or one that always dies would be started for ever.
    std::vector<Failure> failures;
    for (; !m_presses.empty() && m_presses.front().isSecondTry; m_presses.pop_front())
        failures.push_back(std::move(m_presses.front().failure));
    for (Press& press : m_presses)
        press.isSecondTry = true;
    stopHelper();
    if (!m_presses.empty())
        start();
    updateTimers();
    for (const Failure& failure : failures)
        failure(QStringLiteral("Chương trình âm thanh đã dừng giữa chừng."));
}

void VolumeControl::failAll(const QString& reason)
{
    const auto presses = std::exchange(m_presses, {});
    updateTimers();
    for (const Press& press : presses)
        press.failure(reason);
}

void VolumeControl::updateTimers()
{
    if (m_presses.empty()) {
        m_answerTimer.stop();
        m_idleTimer.start();
    } else {
        m_idleTimer.stop();
        m_answerTimer.start(static_cast<int>(m_presses.front().deadline.remainingTime()));
    }
}

} // namespace Tavrin
