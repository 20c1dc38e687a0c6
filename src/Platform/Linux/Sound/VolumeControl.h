#pragma once

#include "Platform/Linux/Process/HelperProcess.h"
#include "Sound/VolumeChange.h"

#include <QDeadlineTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <deque>
#include <memory>

namespace Tavrin {

/// The volume of the default output, through the helper program `tavrin-sound`: the sound server's library
/// never enters this process, and a server that hangs holds only the helper up. The helper is started by the
/// first change and serves those that follow until nothing was asked of it for a while. Main thread.
class VolumeControl {
public:
    using Failure = std::function<void(const QString& reason)>;

    struct Limits {
        /// From a change to its answer. A server that takes longer is given up, and the helper with it.
        std::chrono::milliseconds answer{3000};
        /// How long the helper waits for another change: longer than a user pauses between two presses.
        std::chrono::milliseconds idle{5000};
    };

    /// The watcher outlives this. `helper` is the path of the helper; it is looked at when it is started.
    VolumeControl(ChildWatcher& children, const QString& helper, const Limits& limits);
    ~VolumeControl();
    Q_DISABLE_COPY_MOVE(VolumeControl)

    /// Returns at once. Changes are carried out in their order. The failure is called at most once, never
    /// from within this call, and may destroy this object.
    void change(VolumeChange change, Failure failure);

private:
    struct Press {
        VolumeChange change;
        Failure failure;
        QDeadlineTimer deadline;
        bool isSecondTry = false;
    };

    void start();
    void handleStart(HelperStart start);
    void stopHelper();
    void send();
    void read();
    void takeAnswers();
    void tryAgain();
    void failAll(const QString& reason);
    void updateTimers();

    ChildWatcher& m_children;
    QByteArray m_path;
    Limits m_limits;
    /// Those without an answer. The first `m_sent` of them are known to the helper.
    std::deque<Press> m_presses;
    std::size_t m_sent = 0;
    bool m_isStarting = false;
    HelperProcess m_helper;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_answers;
    QTimer m_answerTimer;
    QTimer m_idleTimer;
    Mailbox m_mailbox;
};

} // namespace Tavrin
