#pragma once

#include "Core/Support/Mailbox.h"
#include "Platform/Linux/Process/HelperProcess.h"

#include <QObject>
#include <QSocketNotifier>
#include <memory>
#include <optional>

namespace Tavrin {

/// Programs that show a file chooser and write the chosen path to their standard output, with their
/// arguments, the one that suits the desktop (as in $XDG_CURRENT_DESKTOP) first. `window` is the number of
/// the X window that the panel belongs to, or 0.
QList<QByteArrayList> chooserTools(const QByteArray& currentDesktop, std::uintptr_t window);

/// One panel of the first of these programs that can be started. Main thread.
class ChooserTool : public QObject {
    Q_OBJECT

public:
    /// Nothing if none of the programs could be started; else the chosen path, or nothing if the user
    /// cancelled.
    using Answer = std::optional<std::optional<QString>>;
    using Completion = std::function<void(const Answer&)>;

    /// `children` outlives this. The completion comes once, never from within, and may destroy this object.
    ChooserTool(ChildWatcher& children, QList<QByteArrayList> programs, Completion completion);
    /// Ends the program if it still runs.
    ~ChooserTool() override;

private:
    void startNext();
    void take(HelperStart start);
    void read();

    ChildWatcher& m_children;
    QList<QByteArrayList> m_programs;
    Completion m_completion;
    HelperProcess m_helper;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_output;
    Mailbox m_mailbox;
};

} // namespace Tavrin
