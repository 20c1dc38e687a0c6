#include "UI/Author/AuthorModel.h"

#include "Core/Action/ActionExecutor.h"
#include "Core/Update/UpdateService.h"

#include <QClipboard>
#include <QGuiApplication>

#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// Long enough to be seen.
constexpr auto copiedMarkTime = 1500ms;

} // namespace

AuthorModel::AuthorModel(
    UpdateService& updates, ActionExecutor& executor, AuthorProfile profile, QObject* parent)
    : QObject(parent)
    , m_updates(updates)
    , m_executor(executor)
    , m_profile(std::move(profile))
{
    connect(&updates, &UpdateService::changed, this, &AuthorModel::updateChanged);
    m_copiedTimer.setSingleShot(true);
    m_copiedTimer.setInterval(copiedMarkTime);
    connect(&m_copiedTimer, &QTimer::timeout, this, [this] { setCopied(NothingCopied); });
}

QString AuthorModel::currentVersion() const
{
    return m_updates.currentVersion();
}

QString AuthorModel::guide() const
{
    return m_profile.website.isEmpty() ? QString() : m_profile.website + u"/guide.html";
}

bool AuthorModel::hasContacts() const
{
    return !(m_profile.phone.isEmpty() && m_profile.zalo.isEmpty() && m_profile.telegram.isEmpty()
        && m_profile.facebook.isEmpty() && m_profile.website.isEmpty());
}

bool AuthorModel::hasAccount() const
{
    return !(m_profile.bankName.isEmpty() && m_profile.accountHolder.isEmpty()
        && m_profile.accountNumber.isEmpty());
}

AuthorModel::UpdateState AuthorModel::updateState() const
{
    if (m_updates.isChecking())
        return Checking;
    if (m_updates.isUpdating())
        return Updating;
    return m_updates.isUpdateAvailable() ? UpdateAvailable : Idle;
}

double AuthorModel::updateProgress() const
{
    return m_updates.downloadProgress();
}

QString AuthorModel::updatePercentage() const
{
    return m_updates.downloadPercentage();
}

QString AuthorModel::updateStatus() const
{
    return m_updates.statusMessage();
}

QString AuthorModel::releaseTitle() const
{
    const auto& info = m_updates.updateInfo();
    return info ? QStringLiteral("Nội dung bản cập nhật v") + info->version : QString();
}

QString AuthorModel::releaseNotes() const
{
    const auto& info = m_updates.updateInfo();
    return info ? info->releaseNotes : QString();
}

QString AuthorModel::shownAddress(const QString& address)
{
    const auto scheme = address.indexOf(u"://");
    return scheme < 0 ? address : address.sliced(scheme + 3);
}

void AuthorModel::open(const QString& address)
{
    ShortcutItem item;
    item.actionType = ActionType::openURL;
    item.actionValue = address;
    m_executor.execute(item);
}

void AuthorModel::copy(Copyable value)
{
    QGuiApplication::clipboard()->setText(text(value));
    setCopied(value);
    m_copiedTimer.start();
}

void AuthorModel::checkForUpdates()
{
    m_updates.checkForUpdates(/*manual=*/true);
}

void AuthorModel::startUpdate()
{
    m_updates.startAutoUpdate();
}

QString AuthorModel::text(Copyable value) const
{
    switch (value) {
    case Phone:
        return m_profile.phone;
    case AccountHolder:
        return m_profile.accountHolder;
    case AccountNumber:
        return m_profile.accountNumber;
    case NothingCopied:
        break;
    }
    return {};
}

void AuthorModel::setCopied(Copyable value)
{
    if (std::exchange(m_copied, value) != value)
        Q_EMIT copiedChanged();
}

} // namespace Tavrin
