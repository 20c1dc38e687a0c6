#pragma once

#include "Platform/Linux/Process/ChildWatcher.h"
#include "Platform/Linux/Sound/VolumeControl.h"
#include "support/Processes.h"
#include "support/Program.h"
#include "support/TemporaryFolder.h"

#include <QLocalSocket>
#include <QRegularExpression>
#include <algorithm>
#include <csignal>
#include <memory>
#include <optional>
#include <vector>

namespace Tavrin::Testing {

/// What pactl prints; nothing if it fails.
inline std::optional<QString> pactl(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("pactl"), arguments);
    EXPECT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; }));
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

/// True if somebody listens to this socket.
inline bool accepts(const QString& path)
{
    QLocalSocket socket;
    socket.connectToServer(path);
    return socket.state() == QLocalSocket::ConnectedState;
}

/// A sound server, looked at and set up with pactl. Ends with this object.
class SoundServers {
public:
    /// A PulseAudio that has no sink.
    static std::unique_ptr<SoundServers> pulseAudioWithoutSink()
    {
        auto servers = std::make_unique<SoundServers>();
        servers->start(QStringLiteral("pulseaudio"),
            {QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
                QStringLiteral("--high-priority=no"), QStringLiteral("--realtime=no"),
                QStringLiteral("--load=module-native-protocol-unix")});
        EXPECT_TRUE(waitFor([] { return pactl({QStringLiteral("info")}).has_value(); }));
        return servers;
    }

    static std::unique_ptr<SoundServers> pulseAudio()
    {
        auto servers = pulseAudioWithoutSink();
        servers->addSink(QStringLiteral("first"));
        return servers;
    }

    static std::unique_ptr<SoundServers> pipeWire()
    {
        auto servers = std::make_unique<SoundServers>();
        const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
        servers->start(QStringLiteral("pipewire"), {});
        // The socket is there before anybody listens to it, and pipewire-pulse tries once.
        EXPECT_TRUE(waitFor([&] { return accepts(runtime.filePath(QStringLiteral("pipewire-0"))); }));
        keepFromDevices();
        servers->start(QStringLiteral("wireplumber"), {});
        servers->start(QStringLiteral("pipewire-pulse"), {});
        EXPECT_TRUE(waitFor([] { return pactl({QStringLiteral("info")}).has_value(); }));
        servers->addSink(QStringLiteral("first"));
        return servers;
    }

    /// Adds an output for nobody's ears and makes it the default.
    void addSink(const QString& name)
    {
        EXPECT_TRUE(pactl({QStringLiteral("load-module"), QStringLiteral("module-null-sink"),
            QStringLiteral("sink_name=") + name}));
        EXPECT_TRUE(waitFor([&] {
            pactl({QStringLiteral("set-default-sink"), name});
            return pactl({QStringLiteral("get-default-sink")}) == name
                && pactl({QStringLiteral("get-sink-volume"), name});
        }));
    }

    /// The volumes of the channels in whole per cent.
    QList<int> percents(const QString& sink = QStringLiteral("@DEFAULT_SINK@"))
    {
        return numbers(sink, QStringLiteral("/ +(\\d+)%"));
    }
    /// The same in the server's own units.
    QList<int> volumes(const QString& sink = QStringLiteral("@DEFAULT_SINK@"))
    {
        return numbers(sink, QStringLiteral(" (\\d+) /"));
    }
    bool isMuted()
    {
        return pactl({QStringLiteral("get-sink-mute"), QStringLiteral("@DEFAULT_SINK@")})
            == QStringLiteral("Mute: yes");
    }

    /// Sets the channels in per cent.
    void setPercents(const QStringList& percents)
    {
        QStringList arguments{QStringLiteral("set-sink-volume"), QStringLiteral("@DEFAULT_SINK@")};
        for (const QString& percent : percents)
            arguments.append(percent + u'%');
        EXPECT_TRUE(pactl(arguments));
    }

    void send(int signal)
    {
        for (const auto& program : m_programs)
            EXPECT_EQ(kill(program->pid(), signal), 0);
    }
    /// Ends it at once.
    void crash()
    {
        send(SIGKILL);
        EXPECT_TRUE(waitFor([this] {
            return std::ranges::all_of(m_programs, [](const auto& program) { return program->hasEnded(); });
        }));
    }

private:
    void start(const QString& program, const QStringList& arguments)
    {
        m_programs.push_back(std::make_unique<Program>(program, arguments));
    }

    /// The developer's own sound cards, headsets and cameras are none of a test's business.
    static void keepFromDevices()
    {
        const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/wireplumber/");
        const std::pair<QString, QByteArray> monitors[]
            = {{QStringLiteral("main.lua.d"), "alsa"}, {QStringLiteral("main.lua.d"), "v4l2"},
                {QStringLiteral("main.lua.d"), "libcamera"}, {QStringLiteral("bluetooth.lua.d"), "bluez"}};
        for (const auto& [part, name] : monitors) {
            QDir().mkpath(folder + part);
            QFile file(folder + part + u"/60-no-" + QString::fromLatin1(name) + u".lua");
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(name + "_monitor.enabled = false\n");
        }
    }

    static QList<int> numbers(const QString& sink, const QString& pattern)
    {
        QList<int> result;
        const QString text = pactl({QStringLiteral("get-sink-volume"), sink}).value_or(QString());
        const QRegularExpression expression(pattern);
        for (const auto& match : expression.globalMatch(text))
            result.append(match.captured(1).toInt());
        return result;
    }

    std::vector<std::unique_ptr<Program>> m_programs;
};

/// Changes the volume with servers of its own, in a place of their own.
class VolumeTest : public testing::Test {
protected:
    VolumeTest() { qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8()); }
    ~VolumeTest() override
    {
        control.reset();
        EXPECT_TRUE(waitFor([this] { return !isHelperRunning() && children.runningCount() == 0; }));
        qputenv("XDG_RUNTIME_DIR", m_usualRuntime);
    }

    void useHelper(const QString& path) { control = std::make_unique<VolumeControl>(children, path, limits); }

    void press(VolumeChange change)
    {
        if (!control)
            useHelper(QStringLiteral(TAVRIN_SOUND));
        const qsizetype before = failures.size();
        control->change(change, [this](const QString& reason) { failures.append(reason); });
        EXPECT_EQ(failures.size(), before) << "never from within the call";
    }
    void press(VolumeChange change, int times)
    {
        for (int count = 0; count < times; ++count)
            press(change);
    }

    /// Waits until the channels of the default output are at so many per cent.
    testing::AssertionResult comesTo(const QList<int>& expected)
    {
        QList<int> percents;
        const bool did = waitFor([&] {
            percents = server->percents();
            return percents == expected;
        });
        return (did ? testing::AssertionSuccess() : testing::AssertionFailure())
            << testing::PrintToString(percents) << " " << failures.join(u' ').toStdString();
    }
    testing::AssertionResult comesTo(int percent) { return comesTo(QList<int>{percent, percent}); }

    static QList<pid_t> helpers()
    {
        QList<pid_t> result = ownChildren();
        result.removeIf([](pid_t pid) {
            QFile name(QStringLiteral("/proc/%1/comm").arg(pid));
            return !name.open(QIODevice::ReadOnly) || name.readAll() != "tavrin-sound\n";
        });
        return result;
    }
    static bool isHelperRunning() { return !helpers().isEmpty(); }

    TemporaryFolder folder;
    ChildWatcher children;
    VolumeControl::Limits limits{std::chrono::seconds(20), std::chrono::seconds(20)};
    QStringList failures;
    TemporaryFolder runtime;
    std::unique_ptr<SoundServers> server;
    std::unique_ptr<VolumeControl> control;

private:
    QByteArray m_usualRuntime = qgetenv("XDG_RUNTIME_DIR");
};

} // namespace Tavrin::Testing
