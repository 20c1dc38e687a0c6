#pragma once

#include "Core/Action/Pasteboard.h"
#include "Core/Action/SystemActions.h"
#include "Core/Support/Mailbox.h"
#include "Core/Support/WorkerPool.h"
#include "Platform/Linux/SystemActions/NativeControls.h"
#include "Platform/Linux/SystemActions/RunningTool.h"

#include <QObject>
#include <deque>
#include <map>
#include <memory>

namespace Tavrin {

class ChildWatcher;
class RegionPicture;

/// System actions on a Linux desktop, as the table says: what is there is asked anew at each press, on a
/// worker thread, and a script or one of the program's own controls does the rest. Nothing exists before the
/// first press.
class LinuxSystemActions : public SystemActions {
public:
    /// All outlive this object.
    LinuxSystemActions(ChildWatcher& children, Pasteboard& pasteboard, NativeControls& controls);
    /// Tools go on without us, but for the choice of a region, whose picture nobody would take.
    ~LinuxSystemActions() override;

    /// A press of a toggle waits until the one before has ended; of another action, a press while it is under
    /// way changes nothing.
    void perform(SystemActionType action, Failure failure) override;

    /// No action is under way.
    bool isIdle() const;

private:
    using Done = std::function<void(const ToolResult&)>;

    /// The presses of one action.
    struct Lane {
        bool isBusy = false;
        std::deque<Failure> waiting;
    };

    struct Attempt;

    static std::shared_ptr<Attempt> attempt(SystemActionType step, bool hasDisplayPower);

    void start(SystemActionType action, const Failure& failure);
    void finish(SystemActionType action, const ToolResult& result, const Failure& failure);
    void carryOut(SystemActionType step, Done done);
    void proceed(const std::shared_ptr<Attempt>& attempt, const Done& done);
    void takePicture(std::shared_ptr<RegionPicture> region, const ToolResult& result, const Done& done);

    ChildWatcher& m_children;
    Pasteboard& m_pasteboard;
    NativeControls& m_controls;
    std::map<SystemActionType, Lane> m_lanes;
    QObject m_tools;
    Mailbox m_mailbox;
    WorkerPool m_workers;
};

} // namespace Tavrin
