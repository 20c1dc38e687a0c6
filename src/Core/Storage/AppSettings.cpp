#include "Core/Storage/AppSettings.h"

#include "Core/Support/Diagnostics.h"

namespace Tavrin {
namespace {

AppSettings* sharedSettings = nullptr;

QString launchAtLoginKey()
{
    return QStringLiteral("launchAtLogin");
}

QString hideDockIconKey()
{
    return QStringLiteral("hideDockIcon");
}

QString hasCompletedOnboardingKey()
{
    return QStringLiteral("hasCompletedOnboarding");
}

QString windowFrameKey()
{
    return QStringLiteral("TavrinMainWindow");
}

} // namespace

AppSettings::AppSettings(const QString& settingsFile, LoginItem& loginItem, ApplicationShell& application)
    : m_defaults(settingsFile, QSettings::IniFormat)
    , m_loginItem(loginItem)
    , m_application(application)
    , m_hasCompletedOnboarding(m_defaults.value(hasCompletedOnboardingKey(), false).toBool())
    , m_hideDockIcon(m_defaults.value(hideDockIconKey(), true).toBool())
    , m_launchAtLogin(m_loginItem.isEnabled())
{
    if (!sharedSettings)
        sharedSettings = this;
}

AppSettings::~AppSettings()
{
    if (sharedSettings == this)
        sharedSettings = nullptr;
}

AppSettings& AppSettings::shared()
{
    Q_ASSERT_X(sharedSettings, "AppSettings::shared", "no settings have been built yet");
    return *sharedSettings;
}

void AppSettings::setLaunchAtLogin(bool value)
{
    m_launchAtLogin = value;
    write(launchAtLoginKey(), value);
    applyLaunchAtLogin();
    Q_EMIT launchAtLoginChanged();
}

void AppSettings::setHideDockIcon(bool value)
{
    m_hideDockIcon = value;
    write(hideDockIconKey(), value);
    applyDockPolicy();
    Q_EMIT hideDockIconChanged();
}

void AppSettings::setHasCompletedOnboarding(bool value)
{
    m_hasCompletedOnboarding = value;
    write(hasCompletedOnboardingKey(), value);
    Q_EMIT hasCompletedOnboardingChanged();
}

void AppSettings::setShowOnboarding(bool value)
{
    m_showOnboarding = value;
    Q_EMIT showOnboardingChanged();
}

ActivationPolicy AppSettings::activationPolicy() const
{
    return m_hideDockIcon ? ActivationPolicy::accessory : ActivationPolicy::regular;
}

void AppSettings::applyDockPolicy()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_application.activationPolicy() != activationPolicy())
                m_application.setActivationPolicy(activationPolicy());
        },
        Qt::QueuedConnection);
}

void AppSettings::applyLaunchAtLogin()
{
    if (m_loginItem.isEnabled() == m_launchAtLogin)
        return;
    const auto error = m_launchAtLogin ? m_loginItem.registerItem() : m_loginItem.unregisterItem();
    if (error)
        Diagnostics::printLine(u"Lỗi SMAppService: " + *error);
}

QString AppSettings::windowFrame() const
{
    return m_defaults.value(windowFrameKey()).toString();
}

void AppSettings::setWindowFrame(const QString& frame)
{
    write(windowFrameKey(), frame);
}

void AppSettings::write(const QString& key, const QVariant& value)
{
    m_defaults.setValue(key, value);
    // What the user set is on disk now, not when the event loop next has time.
    m_defaults.sync();
}

} // namespace Tavrin
