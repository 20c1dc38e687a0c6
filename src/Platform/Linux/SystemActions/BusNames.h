#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace Tavrin {

/// The names on a bus at one moment, asked for when first wanted, on a connection of its own that ends with
/// this object. Blocks, for five seconds at most: not for the main thread.
class BusNames {
public:
    explicit BusNames(QByteArray address);
    ~BusNames();
    Q_DISABLE_COPY_MOVE(BusNames)

    /// Somebody owns the name; one that ends in '*' stands for all that begin like it.
    bool isOwned(const QString& name);
    /// The bus could start an owner.
    bool isStartable(const QString& name);

private:
    QStringList ask(const QString& method);

    QByteArray m_address;
    QString m_connection;
    std::optional<QStringList> m_owned;
    std::optional<QStringList> m_startable;
};

} // namespace Tavrin
