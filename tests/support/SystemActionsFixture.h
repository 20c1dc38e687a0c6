#pragma once

#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "Platform/Linux/SystemActions/LinuxSystemActions.h"
#include "support/MockBus.h"
#include "support/Processes.h"
#include "support/StandIns.h"
#include "support/Wait.h"

#include <csignal>
#include <gmock/gmock.h>

/// Texts in the words of a failed test.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << qPrintable(text);
}

namespace Tavrin::Testing {

/// What the program itself would do, recorded.
class RecordingControls : public NativeControls {
public:
    bool hasDisplayPower() override { return displayPower; }
    void turnDisplayOff(std::function<void(bool isOff)> done) override
    {
        record.append(QStringLiteral("display off"));
        done(turnsOff);
    }
    void whenKeysAreUp(std::function<void()> block) override
    {
        record.append(QStringLiteral("keys up"));
        block();
    }
    void changeVolume(SystemActionType action, SystemActions::Failure /*failure*/) override
    {
        record.append(rawValue(action));
    }

    QStringList record;
    bool displayPower = false;
    bool turnsOff = true;
};

/// System actions on a desktop of the test's own making: only the programs that it puts there are found, and
/// only the names that it owns answer.
class SystemActionsFixture : public testing::Test, protected StandIns {
protected:
    SystemActionsFixture()
    {
        // The bus of the whole system, unless the test makes one.
        setVariable("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
        for (const char* name : {"gdbus", "grep", "setsid", "sleep", "timeout", "cat", "cp", "mv"})
            useReal(name);
    }

    ~SystemActionsFixture() override
    {
        actions.reset();
        EXPECT_TRUE(waitFor([this] { return children.runningCount() == 0; })) << "a tool is left";
    }

    void perform(SystemActionType action)
    {
        actions->perform(action, [this](const QString& reason) { failures.append(reason); });
    }

    /// Performs and waits until it has failed; the reason.
    QString failureOf(SystemActionType action, int milliseconds = 10000)
    {
        const qsizetype before = failures.size();
        perform(action);
        EXPECT_TRUE(waitFor([&] { return failures.size() > before; }, milliseconds)) << "no failure";
        return failures.value(before);
    }

    /// Every action has ended, and nothing that one waited for runs any more.
    bool isQuiet() const { return (!actions || actions->isIdle()) && children.runningCount() == 0; }

    ChildWatcher children;
    FakePasteboard pasteboard;
    RecordingControls controls;
    std::unique_ptr<LinuxSystemActions> actions
        = std::make_unique<LinuxSystemActions>(children, pasteboard, controls);
    QStringList failures;
};

} // namespace Tavrin::Testing
