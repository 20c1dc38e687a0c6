#pragma once

#include "support/Program.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <optional>

namespace Tavrin::Testing {

/// One entry of a menu as it arrives at a tray's host.
struct HostEntry {
    int id = 0;
    QVariantMap properties;

    /// The label as a host shows it: "__" is an underscore, any other underscore is not shown.
    QString label() const
    {
        const QString sent = properties.value(QStringLiteral("label")).toString();
        QString shown;
        for (qsizetype index = 0; index < sent.size(); ++index) {
            if (sent[index] == u'_' && ++index == sent.size())
                break;
            shown += sent[index];
        }
        return shown;
    }

    bool isSeparator() const
    {
        return properties.value(QStringLiteral("type")) == QStringLiteral("separator");
    }
    bool isEnabled() const { return properties.value(QStringLiteral("enabled"), true).toBool(); }

    /// Kind of mark and its state, "checkmark:1" for one that is on; empty for an entry without.
    QString check() const
    {
        const QString kind = properties.value(QStringLiteral("toggle-type")).toString();
        return kind.isEmpty() ? QString()
                              : kind + u':' + properties.value(QStringLiteral("toggle-state")).toString();
    }
};

/// A StatusNotifierWatcher in a process of its own, and what a tray's host asks of the item registered there.
class StatusNotifierHost {
public:
    explicit StatusNotifierHost(const QStringList& options = {})
        : m_watcher(QStringLiteral(TAVRIN_TEST_SUPPORT "/status_notifier_watcher.py"), options)
        , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("tray-host")))
    {
        EXPECT_TRUE(waitFor([this] { return m_watcher.lines().contains(QStringLiteral("READY")); }));
    }

    ~StatusNotifierHost() { QDBusConnection::disconnectFromBus(QStringLiteral("tray-host")); }

    /// Waits for an item; its bus name, or an empty one if there is none.
    QString item()
    {
        m_item.clear();
        EXPECT_TRUE(waitFor([this] {
            for (const QString& line : m_watcher.lines()) {
                if (line.startsWith(QStringLiteral("ITEM ")))
                    m_item = line.sliced(5);
                if (line == u"GONE " + m_item)
                    m_item.clear();
            }
            return !m_item.isEmpty();
        })) << "no item was registered";
        return m_item;
    }

    int registrations() { return int(m_watcher.lines().filter(QStringLiteral("ITEM ")).size()); }
    bool hasSeen(const QString& line) { return m_watcher.lines().contains(line); }

    void registerHost()
    {
        call(QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
            QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("RegisterStatusNotifierHost"),
            {QStringLiteral("test")});
    }

    QVariant itemProperty(const QString& name)
    {
        const QDBusMessage reply = call(m_item, QStringLiteral("/StatusNotifierItem"),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
            {QStringLiteral("org.kde.StatusNotifierItem"), name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    void activate()
    {
        call(m_item, QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"),
            QStringLiteral("Activate"), {0, 0});
    }

    /// The menu's entries as they are now.
    std::vector<HostEntry> layout()
    {
        const QDBusMessage reply
            = menuCall(QStringLiteral("GetLayout"), {0, -1, QVariant::fromValue(QStringList())});
        std::vector<HostEntry> entries;
        if (reply.arguments().size() != 2)
            return entries;
        QList<QVariant> children;
        readNode(reply.arguments()[1].value<QDBusArgument>(), &children);
        for (const QVariant& child : children)
            entries.push_back(readNode(child.value<QDBusArgument>(), nullptr));
        return entries;
    }

    std::optional<HostEntry> entry(const QString& label)
    {
        for (const HostEntry& candidate : layout()) {
            if (candidate.label() == label)
                return candidate;
        }
        return std::nullopt;
    }

    QStringList labels()
    {
        QStringList result;
        for (const HostEntry& candidate : layout())
            result.append(candidate.isSeparator() ? QStringLiteral("-") : candidate.label());
        return result;
    }

    void open() { menuCall(QStringLiteral("AboutToShow"), {0}); }
    void close() { event(0, QStringLiteral("closed")); }
    void click(int id) { event(id, QStringLiteral("clicked")); }

private:
    static HostEntry readNode(const QDBusArgument& argument, QList<QVariant>* children)
    {
        HostEntry node;
        QList<QVariant> nested;
        argument.beginStructure();
        argument >> node.id >> node.properties;
        argument.beginArray();
        while (!argument.atEnd()) {
            QDBusVariant child;
            argument >> child;
            nested.append(child.variant());
        }
        argument.endArray();
        argument.endStructure();
        if (children)
            *children = nested;
        return node;
    }

    void event(int id, const QString& name)
    {
        menuCall(QStringLiteral("Event"), {id, name, QVariant::fromValue(QDBusVariant(0)), 0U});
    }

    QDBusMessage menuCall(const QString& method, const QVariantList& arguments)
    {
        return call(
            m_item, QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"), method, arguments);
    }

    QDBusMessage call(const QString& service, const QString& path, const QString& interface,
        const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_bus.asyncCall(message);
        EXPECT_TRUE(waitFor([&] { return pending.isFinished(); })) << qPrintable(method);
        EXPECT_FALSE(pending.isError()) << qPrintable(method) << qPrintable(pending.error().message());
        return pending.reply();
    }

    Program m_watcher;
    QDBusConnection m_bus;
    QString m_item;
};

} // namespace Tavrin::Testing
