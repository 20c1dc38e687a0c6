#pragma once

#include "Core/Shell/ApplicationShell.h"
#include "Core/Storage/LoginItem.h"

#include <QObject>
#include <QSettings>

namespace Tavrin {

/// The user's preferences other than shortcuts. Changes are written at once and applied to the system.
/// Main thread only.
class AppSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool hideDockIcon READ hideDockIcon WRITE setHideDockIcon NOTIFY hideDockIconChanged)
    Q_PROPERTY(bool hasCompletedOnboarding READ hasCompletedOnboarding WRITE setHasCompletedOnboarding NOTIFY
            hasCompletedOnboardingChanged)
    Q_PROPERTY(bool showOnboarding READ showOnboarding WRITE setShowOnboarding NOTIFY showOnboardingChanged)

public:
    /// `settingsFile` is an INI file (made when first written); the services outlive the settings.
    AppSettings(const QString& settingsFile, LoginItem& loginItem, ApplicationShell& application);
    ~AppSettings() override;

    /// The settings of the running program; set by the composition root.
    static AppSettings& shared();

    /// Start at login. Read from the system at start-up, never from the file.
    bool launchAtLogin() const { return m_launchAtLogin; }
    void setLaunchAtLogin(bool value);

    /// No icon among the running applications; true unless the user turned it off.
    bool hideDockIcon() const { return m_hideDockIcon; }
    void setHideDockIcon(bool value);

    /// The first-run wizard has been finished.
    bool hasCompletedOnboarding() const { return m_hasCompletedOnboarding; }
    void setHasCompletedOnboarding(bool value);

    /// A wish to see the wizard; lives in memory only.
    bool showOnboarding() const { return m_showOnboarding; }
    void setShowOnboarding(bool value);

    /// The policy that `hideDockIcon` asks for.
    ActivationPolicy activationPolicy() const;

    /// Brings the application's policy in line with `hideDockIcon`, at the next turn of the event loop.
    void applyDockPolicy();
    /// Brings the system's login item in line with `launchAtLogin`; prints one line if it refuses.
    void applyLaunchAtLogin();

    /// Place of the main window as "x y width height" in points; empty if none was kept.
    QString windowFrame() const;
    void setWindowFrame(const QString& frame);

Q_SIGNALS:
    void launchAtLoginChanged();
    void hideDockIconChanged();
    void hasCompletedOnboardingChanged();
    void showOnboardingChanged();

private:
    void write(const QString& key, const QVariant& value);

    QSettings m_defaults;
    LoginItem& m_loginItem;
    ApplicationShell& m_application;
    bool m_hasCompletedOnboarding;
    bool m_hideDockIcon;
    bool m_launchAtLogin;
    bool m_showOnboarding = false;
};

} // namespace Tavrin
