#include "Platform/Linux/SessionBus.h"

#include "Platform/Linux/InstanceGuard.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// Sets a variable of the environment for as long as it lives.
class Variable {
public:
    Variable(const char* name, const QByteArray& value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
        , m_old(qgetenv(name))
    {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }
    ~Variable()
    {
        if (m_wasSet)
            qputenv(m_name, m_old);
        else
            qunsetenv(m_name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    bool m_wasSet;
    QByteArray m_old;
};

/// A socket that accepts connections in the kernel and never says a word.
class SilentSocket {
public:
    explicit SilentSocket(const QString& path)
        : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, qPrintable(path), sizeof address.sun_path);
        EXPECT_EQ(bind(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_descriptor, 4), 0);
    }
    ~SilentSocket() { close(m_descriptor); }
    SilentSocket(const SilentSocket&) = delete;
    SilentSocket& operator=(const SilentSocket&) = delete;

    /// Answers the next connection's first bytes, as a bus would.
    void answerOne() const
    {
        const int peer = accept(m_descriptor, nullptr, nullptr);
        char request[64] = {};
        EXPECT_GT(read(peer, request, sizeof request), 0);
        EXPECT_EQ(QByteArray(request + 1).startsWith("AUTH EXTERNAL "), true);
        EXPECT_GT(write(peer, "OK 1234\r\n", 9), 0);
        close(peer);
    }

private:
    int m_descriptor;
};

QByteArray addressOf(const QString& path)
{
    return "unix:path=" + path.toLocal8Bit() + ",guid=00";
}

TEST(SessionBusAddress, ComesFromTheEnvironmentOrTheRuntimeFolder)
{
    const Testing::TemporaryFolder folder;
    {
        const Variable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/x");
        EXPECT_EQ(SessionBus::address(), "unix:path=/x");
    }
    const Variable address("DBUS_SESSION_BUS_ADDRESS", {});
    {
        const Variable runtime("XDG_RUNTIME_DIR", {});
        EXPECT_EQ(SessionBus::address(), "");
    }
    const Variable runtime("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    EXPECT_EQ(SessionBus::address(), "");
    folder.write(QStringLiteral("bus"), "");
    EXPECT_EQ(SessionBus::address(), "unix:path=" + folder.path(QStringLiteral("bus")).toLocal8Bit());
}

TEST(SessionBusProbe, KnowsABusThatAnswers)
{
    const Testing::TemporaryFolder folder;
    const QString path = folder.path(QStringLiteral("bus"));
    const SilentSocket bus(path);
    std::thread answer([&] { bus.answerOne(); });
    EXPECT_TRUE(SessionBus::answers(addressOf(path), 5s));
    answer.join();
}

TEST(SessionBusProbe, KnowsABusThatHangs)
{
    const Testing::TemporaryFolder folder;
    const QString path = folder.path(QStringLiteral("bus"));
    const SilentSocket bus(path);
    EXPECT_FALSE(SessionBus::answers(addressOf(path), 50ms));
}

TEST(SessionBusProbe, LeavesAllElseToTheToolkit)
{
    const Testing::TemporaryFolder folder;
    // Refused at once, of a kind that hangs elsewhere, or no address at all.
    EXPECT_TRUE(SessionBus::answers(addressOf(folder.path(QStringLiteral("absent"))), 50ms));
    EXPECT_TRUE(SessionBus::answers("tcp:host=localhost,port=1", 50ms));
    EXPECT_TRUE(SessionBus::answers("unix:abstract=/tavrin-test-absent", 50ms));
    EXPECT_TRUE(SessionBus::answers("unix:path=" + QByteArray(200, 'x'), 50ms));
    EXPECT_TRUE(SessionBus::answers("", 50ms));
}

TEST(StartupIds, CarryTheTimeAtTheirEnd)
{
    EXPECT_EQ(startupTime(QStringLiteral("panel-1-host-x_TIME123456")), 123456U);
    EXPECT_EQ(startupTime(QStringLiteral("a_TIME1_TIME2")), 2U);
    for (const char* text : {"", "abc", "x_TIME", "x_TIMEabc", "x_TIME99999999999", "x_TIME-1"})
        EXPECT_EQ(startupTime(QString::fromUtf8(text)), 0U) << text;
}

TEST(StartupIds, AreTakenFromTheEnvironment)
{
    const Variable startup("DESKTOP_STARTUP_ID", "p_TIME7");
    {
        const Variable token("XDG_ACTIVATION_TOKEN", "t_TIME9");
        EXPECT_EQ(takeActivationFromEnvironment().serverTime, 9U);
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "no child may take it for its own";
    }
    const ActivationContext context = takeActivationFromEnvironment();
    EXPECT_EQ(context.serverTime, 7U);
    EXPECT_EQ(context.token, QStringLiteral("p_TIME7"));
}

} // namespace
} // namespace Tavrin
