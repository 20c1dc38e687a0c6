#pragma once

#include <QObject>
#include <QString>

namespace Tavrin {

/// Names posted to steer the main window's tabs.
namespace Notification {
inline constexpr QStringView selectShortcutsTab = u"selectShortcutsTab";
inline constexpr QStringView selectGuideTab = u"selectGuideTab";
inline constexpr QStringView selectAuthorTab = u"selectAuthorTab";
} // namespace Notification

/// Carries named notifications between parts that do not know each other. Main thread.
class NotificationCenter : public QObject {
    Q_OBJECT

public:
    void post(QStringView name) { Q_EMIT posted(name.toString()); }

Q_SIGNALS:
    void posted(const QString& name);
};

} // namespace Tavrin
