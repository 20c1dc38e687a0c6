#pragma once

#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "Platform/Linux/SystemActions/LinuxSystemActions.h"
#include "support/MockBus.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <QStandardPaths>
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
class SystemActionsFixture : public testing::Test {
protected:
    SystemActionsFixture()
    {
        folder.write(QStringLiteral("bin/.keep"), {});
        setVariable("PATH", folder.path(QStringLiteral("bin")).toLocal8Bit());
        // The bus of the whole system, unless the test makes one.
        setVariable("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
        for (const char* name : {"gdbus", "grep", "setsid", "sleep", "timeout", "cat", "cp", "mv"})
            useReal(name);
    }

    ~SystemActionsFixture() override
    {
        actions.reset();
        EXPECT_TRUE(waitFor([this] { return children.runningCount() == 0; })) << "a tool is left";
        for (const auto& [name, value] : m_variables)
            put(name, value);
    }

    /// Until the end of the test.
    void setVariable(const QByteArray& name, const QByteArray& value)
    {
        m_variables.try_emplace(
            name, qEnvironmentVariableIsSet(name.constData()) ? qgetenv(name.constData()) : QByteArray());
        put(name, value);
    }

    /// A program that writes its name and arguments down, then does this in sh.
    void standIn(const QString& name, const QByteArray& more = {}) const
    {
        // Written aside, because a line that grows while it is read is half a line.
        folder.write(u"bin/" + name,
            "#!/bin/sh\nprintf '%s\\n' \"" + name.toUtf8() + "${1:+ }$*\" >> '" + logFile().toUtf8() + "'\n"
                + more + '\n');
        QFile::setPermissions(
            folder.path(u"bin/" + name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// The program of this machine.
    void useReal(const QString& name) const
    {
        const QString program
            = QStandardPaths::findExecutable(name, {QStringLiteral("/usr/bin"), QStringLiteral("/bin")});
        ASSERT_FALSE(program.isEmpty()) << qPrintable(name);
        ASSERT_TRUE(QFile::link(program, folder.path(u"bin/" + name)));
    }

    /// What the stand-ins were called with.
    QStringList log() const
    {
        return QString::fromUtf8(folder.read(QStringLiteral("log"))).split(u'\n', Qt::SkipEmptyParts);
    }
    QString logFile() const { return folder.path(QStringLiteral("log")); }

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

    TemporaryFolder folder;
    ChildWatcher children;
    FakePasteboard pasteboard;
    RecordingControls controls;
    std::unique_ptr<LinuxSystemActions> actions
        = std::make_unique<LinuxSystemActions>(children, pasteboard, controls);
    QStringList failures;

private:
    /// No value takes the variable away.
    static void put(const QByteArray& name, const QByteArray& value)
    {
        if (value.isNull())
            qunsetenv(name.constData());
        else
            qputenv(name.constData(), value);
    }

    std::map<QByteArray, QByteArray> m_variables;
};

} // namespace Tavrin::Testing
