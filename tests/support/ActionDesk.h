#pragma once

#include "Core/Action/ActionExecutor.h"
#include "Platform/Fake/FakePlatform.h"

#include <map>

namespace Tavrin::Testing {

/// Time that passes when it is told to. Blocks run inside advance(), in the order of their times.
class ManualClock : public ActionClock {
public:
    double secondsSince1970() const override { return time; }
    QDateTime now() const override { return wallTime; }
    void after(double seconds, std::function<void()> block) override
    {
        m_blocks.emplace(time + seconds, std::move(block));
    }

    /// Lets so many seconds pass.
    void advance(double seconds)
    {
        const double end = time + seconds;
        while (!m_blocks.empty() && m_blocks.begin()->first <= end + 1e-9) {
            auto next = m_blocks.extract(m_blocks.begin());
            time = next.key();
            next.mapped()();
        }
        time = end;
    }

    /// Seconds from now at which something is due.
    QList<double> dueIn() const
    {
        QList<double> delays;
        for (const auto& [due, block] : m_blocks)
            delays.append(due - time);
        return delays;
    }

    double time = 1'700'000'000;
    QDateTime wallTime{{2025, 3, 3}, {9, 5, 7}};

private:
    std::multimap<double, std::function<void()>> m_blocks;
};

/// Everything an executor works with, in memory.
struct ActionDesk {
    ActionServices services()
    {
        return {workspace, scripts, pasteboard, pasteCommand, systemActions, application, clock};
    }

    FakeWorkspace workspace;
    FakeScriptRunner scripts;
    FakePasteboard pasteboard;
    FakePasteCommand pasteCommand;
    FakeSystemActions systemActions;
    FakeApplicationShell application;
    ManualClock clock;
};

} // namespace Tavrin::Testing
