#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <functional>
#include <gtest/gtest.h>

namespace Tavrin::Testing {

/// Services of the test's own on a bus: owns names, and writes down every call to any object.
class MockBus : public QDBusVirtualObject {
public:
    /// Answers a call; an empty message means that nobody answers, ever.
    using Answer = std::function<QDBusMessage(const QDBusMessage& call)>;

    explicit MockBus(QDBusConnection bus)
        : m_bus(std::move(bus))
    {
        EXPECT_TRUE(m_bus.isConnected());
        EXPECT_TRUE(m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath));
    }
    ~MockBus() override
    {
        for (const QString& name : std::as_const(m_names))
            m_bus.unregisterService(name);
        m_bus.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    }
    MockBus(const MockBus&) = delete;
    MockBus& operator=(const MockBus&) = delete;

    void own(const QString& name)
    {
        EXPECT_TRUE(m_bus.registerService(name)) << qPrintable(name);
        m_names.append(name);
    }
    void release(const QString& name)
    {
        m_bus.unregisterService(name);
        m_names.removeAll(name);
    }

    QString introspect(const QString& path) const override { return introspections.value(path); }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        // Tools ask this of everybody.
        if (message.interface() == u"org.freedesktop.DBus.Introspectable")
            return false;
        QStringList words{message.path(), message.member()};
        for (const QVariant& argument : message.arguments())
            words.append(text(argument));
        record.append(words.join(u' '));
        const QDBusMessage reply = answer ? answer(message) : message.createReply();
        return reply.type() == QDBusMessage::InvalidMessage || connection.send(reply);
    }

    QStringList record;
    QMap<QString, QString> introspections;
    Answer answer;

private:
    static QString text(const QVariant& value)
    {
        return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant().toString()
                                                : value.toString();
    }

    QDBusConnection m_bus;
    QStringList m_names;
};

} // namespace Tavrin::Testing
