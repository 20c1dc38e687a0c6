#include "Platform/Linux/X11/StartupSequence.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "support/Wait.h"

#include <QProcess>
#include <gtest/gtest.h>
#include <map>

namespace Tavrin {
namespace {

using Testing::waitFor;

/// Hears what a desktop hears of starts, each message put together from its pieces.
class Desktop : public X11EventListener {
public:
    Desktop()
        : m_connection(X11Connection::open())
    {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection->xcb(), m_connection->root(), XCB_CW_EVENT_MASK, &events);
        m_connection->addListener(this);
        m_connection->watch();
        m_connection->flush();
    }

    void handleEvent(const xcb_generic_event_t& event) override
    {
        if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE)
            return;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.format != 8)
            return;
        QByteArray& text = m_texts[message.window];
        text.append(reinterpret_cast<const char*>(message.data.data8), sizeof message.data.data8);
        if (const qsizetype end = text.indexOf('\0'); end >= 0) {
            messages.append(text.first(end));
            m_texts.erase(message.window);
        }
    }

    QByteArrayList messages;

private:
    std::unique_ptr<X11Connection> m_connection;
    std::map<xcb_window_t, QByteArray> m_texts;
};

TEST(StartupSequence, IsEndedInTheProtocolsWords)
{
    Desktop desktop;
    const auto connection = X11Connection::open();
    ASSERT_TRUE(connection);
    const auto expectEnd = [&](const QByteArray& id, const QByteArray& message) {
        desktop.messages.clear();
        endStartupSequence(*connection, id);
        EXPECT_TRUE(waitFor([&] { return desktop.messages == QByteArrayList{message}; }))
            << desktop.messages.join(" | ").constData();
    };
    expectEnd("menu-7_TIME42", R"(remove: ID="menu-7_TIME42")");
    // The text and its zero fill two pieces exactly.
    expectEnd("twenty-six-letters-in-it__", R"(remove: ID="twenty-six-letters-in-it__")");
    expectEnd(R"(a "quoted\id")", R"(remove: ID="a \"quoted\\id\"")");
    expectEnd(QByteArray(300, 'x'), "remove: ID=\"" + QByteArray(300, 'x') + '"');
}

TEST(StartupSequence, IsNoneWithoutAnId)
{
    Desktop desktop;
    const auto connection = X11Connection::open();
    endStartupSequence(*connection, {});
    endStartupSequence(*connection, "fence");
    EXPECT_TRUE(waitFor([&] { return !desktop.messages.isEmpty(); }));
    EXPECT_EQ(desktop.messages, QByteArrayList{R"(remove: ID="fence")"});
}

TEST(StartupSequence, EndsWithTheFirstStartsWindowAndWithASecondStart)
{
    Desktop desktop;
    const auto start = [](QProcess& process, const QString& id) {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), id);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TAVRIN_PROGRAM), QStringList());
    };
    const auto isEnded = [&](const QByteArray& id) {
        return std::any_of(desktop.messages.begin(), desktop.messages.end(), [&](const QByteArray& message) {
            return message.startsWith("remove: ID=") && message.contains(id);
        });
    };
    QProcess first;
    start(first, QStringLiteral("first_TIME1"));
    EXPECT_TRUE(waitFor([&] { return isEnded("first_TIME1"); }));
    QProcess second;
    start(second, QStringLiteral("second_TIME2"));
    EXPECT_TRUE(waitFor([&] { return isEnded("second_TIME2"); }));
    EXPECT_TRUE(waitFor([&] { return second.state() == QProcess::NotRunning; }));
    EXPECT_EQ(second.exitCode(), 0);
    first.terminate();
    EXPECT_TRUE(waitFor([&] { return first.state() == QProcess::NotRunning; }));
}

} // namespace
} // namespace Tavrin
