#pragma once

#include "support/TemporaryFolder.h"

#include <QStandardPaths>
#include <gtest/gtest.h>
#include <map>

namespace Tavrin::Testing {

/// Only the programs that are put here are found, until the end of the test.
class StandIns {
public:
    StandIns()
    {
        folder.write(QStringLiteral("bin/.keep"), {});
        setVariable("PATH", folder.path(QStringLiteral("bin")).toLocal8Bit());
    }
    ~StandIns()
    {
        for (const auto& [name, value] : m_variables)
            put(name, value);
    }
    StandIns(const StandIns&) = delete;
    StandIns& operator=(const StandIns&) = delete;

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

    TemporaryFolder folder;

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
