#pragma once

#include "support/Wait.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace Tavrin::Testing {

/// Another program that runs beside the test, and ends with this object.
class Program {
public:
    Program(const QString& program, const QStringList& arguments)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(program, arguments);
        EXPECT_TRUE(waitFor([this] { return m_process.state() != QProcess::Starting; }));
        EXPECT_EQ(m_process.state(), QProcess::Running) << qPrintable(program);
    }

    ~Program() { end(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void end()
    {
        m_process.terminate();
        if (!waitFor([this] { return m_process.state() == QProcess::NotRunning; }, 5000)) {
            m_process.kill();
            EXPECT_TRUE(waitFor([this] { return m_process.state() == QProcess::NotRunning; }));
        }
    }

    /// The lines printed so far, whole ones only.
    QStringList lines()
    {
        m_output += m_process.readAll();
        QStringList result = QString::fromUtf8(m_output).split(u'\n');
        result.removeLast();
        return result;
    }

    pid_t pid() const { return static_cast<pid_t>(m_process.processId()); }
    bool hasEnded() const { return m_process.state() == QProcess::NotRunning; }

private:
    QProcess m_process;
    QByteArray m_output;
};

/// Runs a program to its end and returns what it printed.
inline QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; })) << qPrintable(program);
    EXPECT_EQ(process.exitCode(), 0) << qPrintable(program) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

} // namespace Tavrin::Testing
