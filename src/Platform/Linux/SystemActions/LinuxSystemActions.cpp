#include "Platform/Linux/SystemActions/LinuxSystemActions.h"

#include "Core/Support/Diagnostics.h"
#include "Platform/Linux/SystemActions/DesktopSurroundings.h"
#include "Platform/Linux/SystemActions/RegionPicture.h"
#include "Platform/Linux/SystemActions/SystemActionScripts.h"
#include "Platform/Linux/SystemActions/SystemActionTable.h"

#include <QFile>
#include <algorithm>
#include <csignal>
#include <utility>

namespace Tavrin {
namespace {

using End = ToolResult::End;

/// Two presses of these end where they began, so neither may be lost.
bool isToggle(SystemActionType action)
{
    return action == SystemActionType::toggleDarkMode || action == SystemActionType::toggleHiddenFiles
        || action == SystemActionType::openMissionControl;
}

bool isVolume(SystemActionType action)
{
    return action == SystemActionType::toggleMute || action == SystemActionType::volumeUp
        || action == SystemActionType::volumeDown;
}

/// No start-up file of the user's is read: it could be slow, and could mean another thing by a name.
StartedTool startScript(const Means& means, const QString& file)
{
    return startTool({"/bin/zsh", "-f", "-c", QByteArray(SystemActionScripts::sharedFunctions) + means.script,
        "tavrin", QFile::encodeName(file)});
}

} // namespace

/// What a worker has found and started for a step.
struct LinuxSystemActions::Attempt {
    Attempt() = default;
    ~Attempt()
    {
        // Started while the program was ending: nobody would take the picture.
        if (region && tool.child)
            kill(-tool.child.pid, SIGKILL);
    }
    Q_DISABLE_COPY_MOVE(Attempt)

    const Means* means = nullptr;
    QString missing;
    StartedTool tool;
    std::shared_ptr<RegionPicture> region;
};

LinuxSystemActions::LinuxSystemActions(
    ChildWatcher& children, Pasteboard& pasteboard, NativeControls& controls)
    : m_children(children)
    , m_pasteboard(pasteboard)
    , m_controls(controls)
{
}

LinuxSystemActions::~LinuxSystemActions() = default;

void LinuxSystemActions::perform(SystemActionType action, Failure failure)
{
    if (isVolume(action))
        return m_controls.changeVolume(action, std::move(failure));
    Lane& lane = m_lanes[action];
    if (!lane.isBusy)
        return start(action, failure);
    if (isToggle(action))
        lane.waiting.push_back(std::move(failure));
}

bool LinuxSystemActions::isIdle() const
{
    return std::none_of(m_lanes.begin(), m_lanes.end(), [](const auto& lane) { return lane.second.isBusy; });
}

void LinuxSystemActions::start(SystemActionType action, const Failure& failure)
{
    m_lanes[action].isBusy = true;
    const auto last = [this, action, failure](const ToolResult& result) { finish(action, result, failure); };
    if (action != SystemActionType::lockScreen)
        return carryOut(action, last);
    // A locked screen is dark as well, and stays locked where it cannot be made dark.
    carryOut(action, [this, last](const ToolResult& locked) {
        carryOut(SystemActionType::sleepDisplay, [last, locked](const ToolResult& darkened) {
            last(locked.end == End::success ? darkened : locked);
        });
    });
}

void LinuxSystemActions::finish(SystemActionType action, const ToolResult& result, const Failure& failure)
{
    Lane& lane = m_lanes[action];
    lane.isBusy = false;
    // What hung once would hang again: who pressed meanwhile is told, and the next press starts afresh.
    std::deque<Failure> told{failure};
    if (result.end == End::timeout) {
        told.insert(told.end(), lane.waiting.begin(), lane.waiting.end());
        lane.waiting.clear();
    }
    if (!lane.waiting.empty()) {
        const Failure next = lane.waiting.front();
        lane.waiting.pop_front();
        start(action, next);
    }
    if (result.end == End::success)
        return;
    for (const Failure& tell : told)
        tell(result.reason);
}

void LinuxSystemActions::carryOut(SystemActionType step, Done done)
{
    const bool isDisplay = step == SystemActionType::sleepDisplay;
    const bool hasDisplayPower = isDisplay && m_controls.hasDisplayPower();
    const auto work = [this, step, hasDisplayPower, done = std::move(done), address = m_mailbox.address()] {
        m_workers.run([this, step, hasDisplayPower, done, address] {
            const auto made = attempt(step, hasDisplayPower);
            address.post([this, made, done] { proceed(made, done); });
        });
    };
    if (!isDisplay)
        return work();
    m_controls.whenKeysAreUp([address = m_mailbox.address(), work] { address.post(work); });
}

std::shared_ptr<LinuxSystemActions::Attempt> LinuxSystemActions::attempt(
    SystemActionType step, bool hasDisplayPower)
{
    DesktopSurroundings surroundings(hasDisplayPower);
    auto made = std::make_shared<Attempt>();
    made->means = chooseMeans(step, surroundings);
    if (!made->means) {
        made->missing = QString::fromUtf8(missingNeeds(step, surroundings).join(", "));
        return made;
    }
    if (made->means->tool == Means::Tool::script)
        made->tool = startScript(*made->means, {});
    if (made->means->tool == Means::Tool::region) {
        made->region = std::make_shared<RegionPicture>();
        made->tool = startScript(*made->means, made->region->file());
    }
    return made;
}

void LinuxSystemActions::proceed(const std::shared_ptr<Attempt>& attempt, const Done& done)
{
    if (!attempt->means)
        return done({End::failure, QStringLiteral("Máy này không có: ") + attempt->missing});
    switch (attempt->means->tool) {
    case Means::Tool::script:
        new RunningTool(m_children, std::exchange(attempt->tool, {}), attempt->means->limit,
            RunningTool::Farewell::leave, done, &m_tools);
        return;
    case Means::Tool::region:
        new RunningTool(
            m_children, std::exchange(attempt->tool, {}), attempt->means->limit, RunningTool::Farewell::end,
            [this, region = attempt->region, done](
                const ToolResult& result) { takePicture(region, result, done); },
            &m_tools);
        return;
    case Means::Tool::displayPower:
        return m_controls.turnDisplayOff([address = m_mailbox.address(), done](bool isOff) {
            address.post([done, isOff] {
                done(isOff ? ToolResult{}
                           : ToolResult{End::failure, QStringLiteral("Máy chủ X không tắt được màn hình")});
            });
        });
    case Means::Tool::impossible: {
        const QString reason = QString::fromUtf8(attempt->means->script);
        // Failures of this kind of action are not said, but nothing that the user could install mends this.
        Diagnostics::printLine(reason);
        return done({End::failure, reason});
    }
    case Means::Tool::volume:
        // Told from the beginning by its action.
        return;
    }
}

void LinuxSystemActions::takePicture(
    std::shared_ptr<RegionPicture> region, const ToolResult& result, const Done& done)
{
    m_workers.run([this, region = std::move(region), result, done, address = m_mailbox.address()]() mutable {
        const bool isTaken = result.end == End::success;
        auto picture = isTaken ? region->read() : std::nullopt;
        // The folder goes here, not on the main thread.
        region.reset();
        address.post([this, isTaken, picture = std::move(picture), result, done] {
            if (picture)
                m_pasteboard.write(
                    {std::nullopt, {{QStringLiteral("image/png"), *picture}}}, Pasteboard::Stay::lasting);
            const bool isEmpty = isTaken && !picture;
            done(isEmpty ? ToolResult{End::failure, QStringLiteral("Không nhận được ảnh PNG nào")} : result);
        });
    });
}

} // namespace Tavrin
