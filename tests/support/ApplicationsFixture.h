#pragma once

#include "Platform/Linux/Applications/LinuxWorkspace.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "support/Wait.h"
#include "support/XDesktop.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <gmock/gmock.h>
#include <optional>

namespace Tavrin::Testing {

inline QString homePath(const QString& name)
{
    return QDir::homePath() + u'/' + name;
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void writeFile(const QString& path, const QByteArray& text)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

inline QString writeScript(const QString& path, const QByteArray& lines)
{
    writeFile(path, "#!/bin/sh\n" + lines);
    EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    return path;
}

/// Writes a desktop entry of the user's; its path.
inline QString writeEntry(const QString& id, const QByteArray& exec, const QByteArray& more = {})
{
    QString path = qEnvironmentVariable("XDG_DATA_HOME") + u"/applications/" + id + u".desktop";
    writeFile(path,
        "[Desktop Entry]\nType=Application\nName=" + id.toUtf8() + "\nExec=" + exec + '\n' + more + '\n');
    return path;
}

/// An entry whose program shows one window of this class.
inline QString writeWindowEntry(const QString& className)
{
    const QByteArray name = className.toUtf8();
    return writeEntry(
        className.toLower(), "xterm -class " + name + " -e sleep 1000", "StartupWMClass=" + name + '\n');
}

/// Children of this process, collected or not.
inline QList<pid_t> ownChildren()
{
    QList<pid_t> result;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const QByteArray status = readFile(u"/proc/" + name + u"/stat");
        const QByteArrayList fields = status.sliced(status.lastIndexOf(')') + 1).simplified().split(' ');
        if (fields.size() > 1 && fields[1].toInt() == QCoreApplication::applicationPid())
            result.append(name.toInt());
    }
    return result;
}

/// What /proc says of processes, for the words of a failed test.
inline QByteArray describe(const QList<pid_t>& processes)
{
    QByteArray result;
    for (const pid_t pid : processes)
        result += readFile(QStringLiteral("/proc/%1/stat").arg(pid)).left(80) + ' '
            + readFile(QStringLiteral("/proc/%1/cmdline").arg(pid)).replace('\0', ' ') + "; ";
    return result;
}

/// A workspace on the private desktop; each test's programs are ended, and seen to be collected.
class ApplicationsFixture : public testing::Test {
protected:
    void TearDown() override
    {
        qputenv("PATH", m_path);
        EXPECT_TRUE(waitFor([] {
            const auto left = ownChildren();
            for (const pid_t pid : left)
                kill(pid, SIGKILL);
            return left.isEmpty();
        })) << "a child is not collected: "
            << describe(ownChildren()).toStdString();
        EXPECT_EQ(children.runningCount(), 0);
        // The server gives the next program the same window numbers: the window manager must have noticed.
        EXPECT_TRUE(waitFor([this] { return !desktop.hasWindows(); }));
    }

    /// Opens and waits for the completion; no value if it does not come.
    std::optional<bool> open(const QString& location, const ActivationContext& context = {})
    {
        std::optional<bool> result;
        int completions = 0;
        workspace.openApplication(location, context, [&](bool opened) {
            result = opened;
            ++completions;
        });
        EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
        drainEvents();
        EXPECT_EQ(completions, 1);
        return result;
    }

    std::optional<QString> locate(const QString& identifier)
    {
        std::optional<std::optional<QString>> result;
        workspace.locateApplication(identifier, [&](const auto& location) { result = location; });
        EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
        return result.value_or(std::nullopt);
    }

    /// Waits until that many windows of the class are there; the topmost.
    xcb_window_t awaitWindows(const QString& className, std::size_t count = 1)
    {
        EXPECT_TRUE(waitFor([&] { return desktop.windows(className).size() == count; })) << count;
        const auto windows = desktop.windows(className);
        return windows.empty() ? xcb_window_t(XCB_WINDOW_NONE) : windows.front();
    }

    bool becomesActive(xcb_window_t window)
    {
        return waitFor([&] { return desktop.activeWindow() == window; });
    }

    /// Opens a window entry and waits until its window is active.
    xcb_window_t openWindow(const QString& className)
    {
        EXPECT_EQ(open(writeWindowEntry(className)), true);
        const xcb_window_t window = awaitWindows(className);
        EXPECT_TRUE(becomesActive(window));
        return window;
    }

    /// Puts a folder of stand-ins in front of $PATH, or in its place.
    static QString usePrivatePath(bool alone = false)
    {
        QString folder = homePath(QStringLiteral("bin"));
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        qputenv("PATH", QFile::encodeName(folder) + (alone ? QByteArray() : ':' + m_path));
        return folder;
    }

    inline static const QByteArray m_path = qgetenv("PATH");
    ChildWatcher children;
    LinuxWorkspace workspace{children};
    XDesktop desktop;
};

} // namespace Tavrin::Testing
