#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQmlIntegration>

namespace Tavrin {

/// The window's one tool tip: what it says, and of which control. Main thread.
class ToolTip : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Null while none is shown.
    Q_PROPERTY(QQuickItem* target READ target NOTIFY changed FINAL)
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)

public:
    ToolTip();

    QQuickItem* target() const { return m_isShown ? m_target : nullptr; }
    QString text() const { return m_text; }

    /// The pointer has come upon a control: its tip shows when the pointer has rested there.
    Q_INVOKABLE void enter(QQuickItem* target, const QString& text);
    /// The pointer has left a control, or pressed it.
    Q_INVOKABLE void leave(QQuickItem* target);

Q_SIGNALS:
    void changed();

private:
    QPointer<QQuickItem> m_target;
    QString m_text;
    bool m_isShown = false;
    QTimer m_timer;
};

} // namespace Tavrin
