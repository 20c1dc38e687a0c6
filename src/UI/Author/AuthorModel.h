#pragma once

#include "UI/Author/AuthorProfile.h"

#include <QObject>
#include <QTimer>
#include <QtQmlIntegration>

namespace Tavrin {

class ActionExecutor;
class UpdateService;

/// What the author page shows and what its controls do. Main thread.
class AuthorModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built from the services")

    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(QString phone READ phone CONSTANT)
    Q_PROPERTY(QString zalo READ zalo CONSTANT)
    Q_PROPERTY(QString telegram READ telegram CONSTANT)
    Q_PROPERTY(QString facebook READ facebook CONSTANT)
    Q_PROPERTY(QString website READ website CONSTANT)
    Q_PROPERTY(QString guide READ guide CONSTANT)
    Q_PROPERTY(QString bankName READ bankName CONSTANT)
    Q_PROPERTY(QString accountHolder READ accountHolder CONSTANT)
    Q_PROPERTY(QString accountNumber READ accountNumber CONSTANT)
    Q_PROPERTY(bool hasContacts READ hasContacts CONSTANT)
    Q_PROPERTY(bool hasAccount READ hasAccount CONSTANT)
    Q_PROPERTY(Copyable copied READ copied NOTIFY copiedChanged)

    Q_PROPERTY(UpdateState updateState READ updateState NOTIFY updateChanged)
    Q_PROPERTY(double updateProgress READ updateProgress NOTIFY updateChanged)
    Q_PROPERTY(QString updatePercentage READ updatePercentage NOTIFY updateChanged)
    Q_PROPERTY(QString updateStatus READ updateStatus NOTIFY updateChanged)
    Q_PROPERTY(QString releaseTitle READ releaseTitle NOTIFY updateChanged)
    Q_PROPERTY(QString releaseNotes READ releaseNotes NOTIFY updateChanged)

public:
    /// The values that can be copied.
    enum Copyable { NothingCopied, Phone, AccountHolder, AccountNumber };
    Q_ENUM(Copyable)
    /// What the update block offers: the first that holds.
    enum UpdateState { Checking, Updating, UpdateAvailable, Idle };
    Q_ENUM(UpdateState)

    /// The services outlive the model.
    AuthorModel(UpdateService& updates, ActionExecutor& executor, AuthorProfile profile = {},
        QObject* parent = nullptr);

    QString name() const { return m_profile.name; }
    QString currentVersion() const;
    QString phone() const { return m_profile.phone; }
    QString zalo() const { return m_profile.zalo; }
    QString telegram() const { return m_profile.telegram; }
    QString facebook() const { return m_profile.facebook; }
    QString website() const { return m_profile.website; }
    /// A page of the web site; empty without one.
    QString guide() const;
    QString bankName() const { return m_profile.bankName; }
    QString accountHolder() const { return m_profile.accountHolder; }
    QString accountNumber() const { return m_profile.accountNumber; }
    /// Whether there is a row at all in the blocks of contacts and of the bank's account.
    bool hasContacts() const;
    bool hasAccount() const;
    /// What was copied last, for a moment.
    Copyable copied() const { return m_copied; }

    UpdateState updateState() const;
    /// 0 to 1.
    double updateProgress() const;
    QString updatePercentage() const;
    /// Empty while there is nothing to say.
    QString updateStatus() const;
    /// Of the build that was found; both empty without one.
    QString releaseTitle() const;
    QString releaseNotes() const;

    /// An address as it is shown: without what every address has.
    Q_INVOKABLE static QString shownAddress(const QString& address);
    /// In the browser.
    Q_INVOKABLE void open(const QString& address);
    /// Puts the value on the clipboard and marks it as copied.
    Q_INVOKABLE void copy(Tavrin::AuthorModel::Copyable value);
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void startUpdate();

Q_SIGNALS:
    void copiedChanged();
    void updateChanged();

private:
    QString text(Copyable value) const;
    void setCopied(Copyable value);

    UpdateService& m_updates;
    ActionExecutor& m_executor;
    AuthorProfile m_profile;
    Copyable m_copied = NothingCopied;
    QTimer m_copiedTimer;
};

} // namespace Tavrin
